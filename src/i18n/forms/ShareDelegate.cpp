#include "i18n/forms/ShareDelegate.h"

#include "controls/ListView.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillmere {

namespace {
constexpr int kAround = 6; // pixels, on both sides of the share
}

ShareDelegate::ShareDelegate(ListView &list, std::function<std::optional<StringCounts>(int row)> counts)
    : QStyledItemDelegate(&list), m_list(list), m_counts(std::move(counts))
{
}

QSize ShareDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return m_list.itemDelegate()->sizeHint(option, index);
}

void ShareDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QAbstractItemDelegate *usual = m_list.itemDelegate();
    const std::optional<StringCounts> counts = m_counts(index.row());
    if (!counts || counts->all == 0) {
        usual->paint(painter, option, index);
        return;
    }
    const QString share = tr("%1 %").arg(percentTranslated(*counts));
    const int width = option.fontMetrics.horizontalAdvance(share) + 2 * kAround;
    // The whole cell is selected, and not only where its text stands.
    QStyleOptionViewItem cell = option;
    m_list.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, &m_list);
    const QRect place = QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter,
                                            QSize(width, option.rect.height()), option.rect);
    cell.rect.setWidth(option.rect.width() - width);
    if (option.direction == Qt::RightToLeft)
        cell.rect.moveRight(option.rect.right());
    usual->paint(painter, cell, index);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QPalette::ColorGroup group =
        option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    painter->save();
    painter->setPen(option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->setFont(option.font);
    painter->drawText(place, Qt::AlignCenter, share);
    painter->restore();
}

bool ShareDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                              const QModelIndex &index)
{
    const std::optional<StringCounts> counts = index.isValid() ? m_counts(index.row()) : std::nullopt;
    if (event->type() != QEvent::ToolTip || !counts)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(
        event->globalPos(),
        tr("%1 of %2 strings have a translation.").arg(counts->all - counts->untranslated).arg(counts->all),
        view);
    return true;
}

} // namespace quillmere
