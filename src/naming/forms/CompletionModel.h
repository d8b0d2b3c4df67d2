#pragma once

#include "naming/Candidates.h"
#include "naming/Completion.h"

#include <QAbstractListModel>

#include <memory>

namespace quillmere {

class NameFacts;
class Pictures;

// The entries of an open list of completions. It holds no copies of names, and what an entry stands for is
// looked up when it is shown.
class CompletionModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        Detail = Qt::UserRole, // what stands at the right, as text
        Colour,                // a QColor, of a colour
        Picture,               // a QImage, of an image; null as long as it is not read
        HasPicture,            // whether room is left for one
    };

    CompletionModel(NameFacts &facts, Pictures &pictures, QObject *parent = nullptr);

    void show(const Completion &completion, std::shared_ptr<const Candidates> candidates,
              std::vector<qint32> rows);
    QString entry(int row) const;
    bool showsPictures() const { return m_of == Completion::Of::Name && m_kind == NameKind::Image; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString detailOf(const QString &name) const;

    NameFacts &m_facts;
    Pictures &m_pictures;
    Completion::Of m_of = Completion::Of::Nothing;
    NameKind m_kind = NameKind::Image;
    std::shared_ptr<const Candidates> m_candidates;
    std::vector<qint32> m_rows;
};

} // namespace quillmere
