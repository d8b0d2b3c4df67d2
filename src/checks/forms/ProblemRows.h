#pragma once

#include "checks/Problem.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QThreadPool>

#include <array>
#include <atomic>
#include <memory>

namespace quillmere {

// Which problems a list shows.
struct ProblemFilter
{
    QString text; // that the message, the place or the rule holds, ignoring case; empty for all
    std::array<bool, 3> severities = {true, true, true};
};

// Problems as the rows of a list: Message with a mark for the severity, Place, Rule. Errors come first, each
// kind by file and place. They are chosen beside the window's own thread, and of very many only the first are
// shown, with a last row that says how many are not.
class ProblemRows : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ProblemRows(QObject *parent = nullptr);
    ~ProblemRows() override;

    void show(std::shared_ptr<const QList<Problem>> problems, const ProblemFilter &filter);
    // nullptr for the last row where that is none.
    const Problem *problem(int row) const;
    // The row of the same problem in the rows as they are now, or -1.
    int rowOf(const Problem &problem) const;
    // Window or file, and line.
    static QString placeOf(const Problem &problem);
    static QIcon iconOf(Severity severity);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    using Chosen = std::vector<qint32>; // numbers of problems
    static std::pair<Chosen, qsizetype> choose(const QList<Problem> &problems, const ProblemFilter &filter,
                                               const std::atomic_bool &givenUp);

    std::shared_ptr<const QList<Problem>> m_problems;
    Chosen m_chosen;
    qsizetype m_others = 0; // that are chosen and not shown
    std::array<QIcon, 3> m_icons;
    std::shared_ptr<std::atomic_bool> m_givenUp; // of the newest
    QThreadPool m_worker;
};

} // namespace quillmere
