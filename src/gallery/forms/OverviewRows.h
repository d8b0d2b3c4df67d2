#pragma once

#include "outline/Values.h"
#include "rows/ListRows.h"

#include <QAbstractListModel>
#include <QPixmap>

#include <optional>

namespace quillmere {

// What is wrong with a window.
struct WindowProblems
{
    int errors = 0, warnings = 0, notes = 0;
    QString first; // what the first of the worst says

    bool operator==(const WindowProblems &) const = default;
};

// The windows of a theme, each with its picture, as far as it has been drawn. Numbers count the windows of
// the catalogue from 0; a row is a window that the filter lets through.
class OverviewRows : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Look {
        Waiting, // for its picture
        Drawn,
        NoDocument,
        NotDrawn,
    };
    struct Window
    {
        QString name, path; // path as the window catalogue has it
        QPixmap picture;
        Look look = Look::Waiting;
        QByteArray mark; // of the page that the picture was drawn from
        QString reason;  // why it is not drawn
        std::optional<Box> place;
        bool isHidden = false; // until the receiver shows it
        WindowProblems problems;
    };

    explicit OverviewRows(QObject *parent = nullptr) : QAbstractListModel(parent) {}

    // The windows of a catalogue. Those that were there before keep what is known of them; gives their
    // numbers before, -1 for the others.
    QList<int> setWindows(const ListRows &catalogue);
    // Windows whose name contains this, ignoring letter case.
    void setFilter(const QString &part);
    const QString &filter() const { return m_filter; }

    int windows() const { return int(m_windows.size()); }
    const Window &window(int number) const { return m_windows.at(number); }
    int numberAt(const QModelIndex &index) const { return m_shown.value(index.row(), -1); }
    // Invalid where the filter hides it.
    QModelIndex indexOf(int number) const;

    void setWindow(int number, const Window &window);
    // Of all windows, by number; views are told once.
    void setProblems(const QList<WindowProblems> &problems);
    void dropPicture(int number);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    void choose();
    void tell(int number);

    QList<Window> m_windows;
    QList<int> m_shown; // numbers, ascending
    QString m_filter;
};

// "2 errors, 1 warning"; empty where nothing is wrong.
QString textOf(const WindowProblems &problems);
// The name of a window, how large it is and where, and what is wrong with it; one line.
QString describe(const OverviewRows::Window &window);

} // namespace quillmere
