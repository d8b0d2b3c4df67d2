#include "naming/forms/CompletionModel.h"

#include "files/Paths.h"
#include "naming/forms/NameFacts.h"
#include "naming/forms/Pictures.h"

#include <QColor>

namespace quillmere {

CompletionModel::CompletionModel(NameFacts &facts, Pictures &pictures, QObject *parent)
    : QAbstractListModel(parent), m_facts(facts), m_pictures(pictures)
{
}

void CompletionModel::show(const Completion &completion, std::shared_ptr<const Candidates> candidates,
                           std::vector<qint32> rows)
{
    beginResetModel();
    m_of = completion.of;
    m_kind = completion.kind;
    m_candidates = std::move(candidates);
    m_rows = std::move(rows);
    endResetModel();
}

QString CompletionModel::entry(int row) const
{
    return row >= 0 && row < rowCount() ? m_candidates->names().at(m_rows[size_t(row)]) : QString();
}

int CompletionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CompletionModel::data(const QModelIndex &index, int role) const
{
    const QString name = entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return name;
    case Qt::AccessibleTextRole: {
        const QString detail = detailOf(name);
        return detail.isEmpty() ? name : QString(name + u", " + detail);
    }
    case Detail:
        return detailOf(name);
    case Colour:
        if (const auto channels = m_of == Completion::Of::Name && m_kind == NameKind::Colour
                                      ? channelsOf(m_facts.codeOf(name))
                                      : std::nullopt)
            return QColor(channels->red, channels->green, channels->blue);
        return {};
    case Picture:
        return showsPictures() ? m_pictures.find(m_facts.pathOf(name)).image : QImage();
    case HasPicture:
        return showsPictures();
    default:
        return {};
    }
}

QString CompletionModel::detailOf(const QString &name) const
{
    if (m_of != Completion::Of::Name)
        return {};
    switch (m_kind) {
    case NameKind::Image: {
        const ShownPicture picture = m_pictures.find(m_facts.pathOf(name));
        return picture.size.isValid() ? tr("%1 × %2").arg(picture.size.width()).arg(picture.size.height())
                                      : picture.why;
    }
    case NameKind::Colour:
        return m_facts.codeOf(name);
    case NameKind::Font:
        if (const std::optional<NameFacts::Font> font = m_facts.font(name))
            return tr("%1, %2 pixels").arg(fileNameOf(font->path), font->size);
        return {};
    case NameKind::String:
        return m_facts.translations().shortly(name);
    case NameKind::Window:
        return m_facts.isListed(name) ? QString() : tr("not in the catalogue");
    default:
        return {};
    }
}

} // namespace quillmere
