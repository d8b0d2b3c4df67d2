#pragma once

#include "stage/RectChanges.h"

#include <QLineF>
#include <QPointF>
#include <QSize>

#include <memory>

namespace quillmere {

// What a drag may snap to besides the siblings and the parent of what is dragged. Screen pixels.
struct SnapTargets
{
    QSize screen;          // and its title-safe area; empty for none
    int grid = 0;          // pixels, in the numbers of the rect; 0 for none
    QList<qint64> columns; // guides of the rulers: x of those that stand
    QList<qint64> rows;    // y of those that lie
    QList<int> hidden;     // blocks that are not seen, and so not snapped to
};

// A line to be drawn, in screen pixels as the rects count them: the sum of the rects of a block and of those
// around it.
struct Guide
{
    QLineF line;
    qint64 distance = -1; // what to write at `text`, pixels; -1 for nothing
    QPointF text;         // the middle of the distance

    bool operator==(const Guide &) const = default;
};

struct Snapped
{
    QList<BlockBox> boxes; // of all that is dragged, for rectChanges
    QList<Guide> guides;
};

// One way across or down, whichever is longer: what a drag becomes that keeps its direction.
QPointF constrained(QPointF distance);
// A box that was sized at these edges, with the proportions of the one before; an edge that was not taken
// hold of stays, or, of the other direction, the middle does.
Box constrained(const Box &before, const Box &sized, Qt::Edges edges);

// One drag, made when it begins: what is dragged, and all that it may snap to. A step costs a look at each
// sibling.
class Snapping
{
public:
    // Of blocks in one another the outer is dragged; those that cannot be moved stay. `blocks` begins with
    // the one that was pressed: its siblings and its parent are what the box around all of them snaps to, and
    // its numbers are those that the grid counts.
    Snapping(const Outline &outline, const QList<int> &blocks, const SnapTargets &targets = {});

    // Everything is asked for as from the beginning of the drag: `by` is the whole distance in screen pixels.
    // Within `tolerance` (screen pixels, so 6 / zoom of the glass) a line takes hold; 0: nothing does, nor
    // does the grid.
    Snapped moved(QPointF by, double tolerance, bool keepDirection = false) const;
    // The first block alone, at the edges that its handle holds. No size becomes negative.
    Snapped sized(Qt::Edges edges, QPointF by, double tolerance, bool keepProportions = false) const;

private:
    struct Ground;
    std::shared_ptr<const Ground> m_ground;
};

} // namespace quillmere
