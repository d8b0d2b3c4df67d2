#include "stage/Handles.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr double kReach = 5;         // pixels from the middle of a handle, outward and inward
constexpr double kInside = 0.25;     // of a small side are the most that it takes
constexpr double kRoom = 4 * kReach; // of a side that has a handle in its middle

// Whether `away` (to the middle of the handle, positive toward the inside) is near enough.
bool reaches(double away, double side)
{
    return away >= -kReach && away <= std::min(kReach, side * kInside);
}

bool reaches(double point, double at, double side, bool isLow, bool isHigh)
{
    if (isLow)
        return reaches(point - at, side);
    if (isHigh)
        return reaches(at - point, side);
    return std::abs(point - at) <= kReach;
}

} // namespace

QList<Handle> handlesOf(const QRectF &outline)
{
    const QPointF middle = outline.center();
    QList<Handle> handles = {{Qt::LeftEdge | Qt::TopEdge, outline.topLeft()},
                             {Qt::RightEdge | Qt::TopEdge, outline.topRight()},
                             {Qt::LeftEdge | Qt::BottomEdge, outline.bottomLeft()},
                             {Qt::RightEdge | Qt::BottomEdge, outline.bottomRight()}};
    if (outline.width() >= kRoom) {
        handles.append({Qt::TopEdge, {middle.x(), outline.top()}});
        handles.append({Qt::BottomEdge, {middle.x(), outline.bottom()}});
    }
    if (outline.height() >= kRoom) {
        handles.append({Qt::LeftEdge, {outline.left(), middle.y()}});
        handles.append({Qt::RightEdge, {outline.right(), middle.y()}});
    }
    return handles;
}

Qt::Edges handleAt(const QRectF &outline, QPointF point)
{
    // The last corner comes first: a block without a size can be made larger.
    const QList<Handle> handles = handlesOf(outline);
    for (auto handle = handles.crbegin(); handle != handles.crend(); ++handle) {
        const Qt::Edges edges = handle->edges;
        if (reaches(point.x(), handle->at.x(), outline.width(), edges & Qt::LeftEdge,
                    edges & Qt::RightEdge) &&
            reaches(point.y(), handle->at.y(), outline.height(), edges & Qt::TopEdge, edges & Qt::BottomEdge))
            return edges;
    }
    return {};
}

} // namespace quillmere
