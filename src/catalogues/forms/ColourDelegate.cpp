#include "catalogues/forms/ColourDelegate.h"

#include "markup/ColourCode.h"

#include <QApplication>
#include <QPainter>

namespace quillmere {

namespace {

constexpr QSize kChip(22, 14); // pixels

} // namespace

void ColourDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // The style leaves room for a decoration, also where there is nothing to draw in it.
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = kChip;
}

void ColourDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const auto colour = channelsOf(index.data().toString());
    if (!colour)
        return;
    QStyleOptionViewItem laidOut = option;
    initStyleOption(&laidOut, index);
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const QRect place = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &laidOut, option.widget);
    painter->save();
    painter->setPen(option.palette.color(QPalette::Dark));
    painter->setBrush(QColor(colour->red, colour->green, colour->blue));
    painter->drawRect(place.adjusted(0, 0, -1, -1));
    painter->restore();
}

} // namespace quillmere
