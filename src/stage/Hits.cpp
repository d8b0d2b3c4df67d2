#include "stage/Hits.h"

#include <algorithm>
#include <functional>

namespace quillmere {

namespace {

// The last pixels of a box are those before its right and its bottom edge.
bool covers(const QRectF &box, QPointF point)
{
    return point.x() >= box.left() && point.x() < box.right() && point.y() >= box.top() &&
           point.y() < box.bottom();
}

bool isInside(const QRectF &inner, const QRectF &outer)
{
    return inner.left() >= outer.left() && inner.right() <= outer.right() && inner.top() >= outer.top() &&
           inner.bottom() <= outer.bottom();
}

} // namespace

QList<int> blocksAt(const QList<Place> &places, QPointF point)
{
    QList<int> found;
    for (const Place &place : places) {
        if (covers(place.visible, point))
            found.append(place.block);
    }
    std::sort(found.begin(), found.end(), std::greater());
    return found;
}

QList<int> blocksInside(const QList<Place> &places, QRectF band)
{
    band = band.normalized();
    QList<int> found;
    for (const Place &place : places) {
        if (!place.visible.isEmpty() && isInside(place.box, band))
            found.append(place.block);
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace quillmere
