#include "catalogues/forms/ImageGridItem.h"

#include "catalogues/forms/ThumbnailDelegate.h"
#include "catalogues/forms/Thumbnails.h"

#include <QPainter>

namespace quillmere {

namespace {

constexpr int kAround = 5;     // pixels at each side of a picture, and above it
constexpr int kBeforeName = 4; // and between it and its name
constexpr int kBelow = 5;
constexpr int kTickInset = 3;  // pixels of a tick in its item
constexpr int kMostName = 200; // letters; more than fit anywhere
constexpr float kHovered = 0.18F;
constexpr float kOutline = 0.4F; // of a tick

// On a ground of its own, since pictures have every colour.
void drawTick(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QVariant ticked = index.siblingAtColumn(0).data(Qt::CheckStateRole);
    if (!ticked.isValid())
        return;
    QStyleOptionViewItem tick = option;
    tick.rect = gridTick(option.rect, *option.widget);
    tick.state &= ~QStyle::State_HasFocus;
    tick.state |= ticked.toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    painter.fillRect(tick.rect, option.palette.base());
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &tick, &painter,
                                          option.widget);
    QColor outline = option.palette.color(QPalette::Text); // that of the style hardly shows in the dark
    outline.setAlphaF(kOutline);
    painter.setPen(outline);
    painter.drawRect(tick.rect.adjusted(0, 0, -1, -1));
}

} // namespace

QSize leastGridItem(const QFontMetrics &metrics)
{
    return {Thumbnails::kLarge.width() + 2 * kAround,
            kAround + Thumbnails::kLarge.height() + kBeforeName + metrics.height() + kBelow};
}

QString gridName(const QModelIndex &index)
{
    return index.siblingAtColumn(kGridName).data().toString().left(kMostName);
}

void drawGridItem(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                  const Thumbnail *thumbnail)
{
    const QPalette &palette = option.palette;
    const bool isSelected = option.state & QStyle::State_Selected;
    const auto group = option.widget->hasFocus() ? QPalette::Active : QPalette::Inactive;
    const QRect item = option.rect.adjusted(1, 1, -1, -1);
    QColor ground = palette.color(group, QPalette::Highlight);
    if (!isSelected)
        ground.setAlphaF(kHovered);
    if (isSelected || option.state & QStyle::State_MouseOver)
        painter.fillRect(item, ground);

    const QRect picture(option.rect.left() + (option.rect.width() - Thumbnails::kLarge.width()) / 2,
                        option.rect.top() + kAround, Thumbnails::kLarge.width(), Thumbnails::kLarge.height());
    drawThumbnail(painter, picture, thumbnail, &Thumbnail::large, palette);
    drawTick(painter, option, index);

    const QRect line(option.rect.left() + kAround, picture.bottom() + 1 + kBeforeName,
                     option.rect.width() - 2 * kAround, option.fontMetrics.height());
    painter.setPen(palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(line, Qt::AlignCenter | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(gridName(index), Qt::ElideMiddle, line.width()));
    if (option.state & QStyle::State_HasFocus) {
        painter.setPen(palette.color(QPalette::Text));
        painter.drawRect(item.adjusted(0, 0, -1, -1));
    }
}

QRect gridTick(const QRect &item, const QWidget &grid)
{
    const QStyle *style = grid.style();
    return {item.topLeft() + QPoint(kTickInset, kTickInset),
            QSize(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &grid),
                  style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &grid))};
}

} // namespace quillmere
