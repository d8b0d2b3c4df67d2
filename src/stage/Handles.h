#pragma once

#include <QList>
#include <QRectF>

namespace quillmere {

// Where an outline is taken hold of to size a block, in pixels of the glass.
struct Handle
{
    Qt::Edges edges; // that it moves
    QPointF at;      // its middle
};

// On the corners, and on the middles of the edges where there is room for them.
QList<Handle> handlesOf(const QRectF &outline);
// The edges of the handle at a point, none where there is no handle. Inside a small block most of the room is
// left for moving it.
Qt::Edges handleAt(const QRectF &outline, QPointF point);

} // namespace quillmere
