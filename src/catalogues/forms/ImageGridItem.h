#pragma once

#include <QModelIndex>
#include <QStyleOptionViewItem>

class QPainter;

namespace quillmere {

struct Thumbnail;

// An item of the image grid: a picture, its ID below it, and a box where the row can be ticked.

constexpr int kGridName = 1; // the column of the IDs

// The least that an item needs, pixels.
QSize leastGridItem(const QFontMetrics &metrics);

// The ID, as far as it could be seen.
QString gridName(const QModelIndex &index);

// The option's widget is the grid. The thumbnail is null where it is still to be made.
void drawGridItem(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                  const Thumbnail *thumbnail);

// Where the box is in an item.
QRect gridTick(const QRect &item, const QWidget &grid);

} // namespace quillmere
