#pragma once

#include <QList>
#include <QRectF>

namespace quillmere {

// Where a block is in the page, in its pixels. `visible` is the box cut by all that clips it.
struct Place
{
    int block = -1; // row of the block list
    QRectF box, visible;
};

// The blocks that are drawn at a point, what is seen first: what comes later in the document is drawn on top.
QList<int> blocksAt(const QList<Place> &places, QPointF point);
// The blocks that lie wholly inside the band and show something of themselves, in the order of the document.
// The band may have been drawn in any direction.
QList<int> blocksInside(const QList<Place> &places, QRectF band);

} // namespace quillmere
