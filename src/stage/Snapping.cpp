#include "stage/Snapping.h"

#include "stage/SnapGround.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr double kSafe = 0.05; // of the screen, on each side, that a set may cut off

Box moved(Box box, qint64 x, qint64 y)
{
    box.x += x;
    box.y += y;
    return box;
}

// From the number to the nearest one of the grid.
qint64 toGrid(qint64 number, int grid)
{
    return qint64(std::floor(double(number) / grid + 0.5)) * grid - number;
}

// One direction of a box.
struct Side
{
    qint64 &at, &size;

    static Side of(Box &box, size_t direction)
    {
        return direction == 0 ? Side{box.x, box.w} : Side{box.y, box.h};
    }
    void resize(Hold hold, qint64 by)
    {
        if (by == 0)
            return; // a size that is negative stays as it is
        const qint64 wanted = std::max<qint64>(0, size + (hold.high ? by : -by));
        if (hold.low)
            at += size - wanted;
        size = wanted;
    }
};

Holds holdsOf(Qt::Edges edges)
{
    return {Hold{edges.testFlag(Qt::LeftEdge), edges.testFlag(Qt::RightEdge)},
            Hold{edges.testFlag(Qt::TopEdge), edges.testFlag(Qt::BottomEdge)}};
}

// The size in one direction leads, the other follows.
Box inProportion(const Box &before, Box sized, const Holds &holds, size_t lead)
{
    Box whole = before;
    const Side led = Side::of(sized, lead), from = Side::of(whole, lead);
    Side follows = Side::of(whole, 1 - lead);
    if (from.size <= 0 || follows.size <= 0)
        return sized;
    const qint64 size = qint64(std::round(double(follows.size) * double(led.size) / double(from.size)));
    const Hold hold = holds[1 - lead];
    if (!hold.isAny())
        follows.at += (follows.size - size) / 2;
    else if (hold.low)
        follows.at += follows.size - size;
    follows.size = size;
    Side::of(sized, 1 - lead).at = follows.at;
    Side::of(sized, 1 - lead).size = size;
    return sized;
}

// The direction in which a box has changed more, for its size.
size_t leadOf(const Box &before, const Box &sized, const Holds &holds)
{
    if (!holds[0].isAny() || !holds[1].isAny())
        return holds[0].isAny() ? 0 : 1;
    const auto change = [](qint64 from, qint64 to) {
        return std::abs(double(to - from)) / double(std::max<qint64>(1, from));
    };
    return change(before.w, sized.w) >= change(before.h, sized.h) ? 0 : 1;
}

} // namespace

struct Snapping::Ground
{
    QList<BlockBox> dragged;
    std::vector<Box> places; // of each on the screen
    SnapGround lines;
    int grid = 0;
};

QPointF constrained(QPointF distance)
{
    return std::abs(distance.x()) >= std::abs(distance.y()) ? QPointF(distance.x(), 0)
                                                            : QPointF(0, distance.y());
}

Box constrained(const Box &before, const Box &sized, Qt::Edges edges)
{
    const Holds holds = holdsOf(edges);
    return inProportion(before, sized, holds, leadOf(before, sized, holds));
}

Snapping::Snapping(const Outline &outline, const QList<int> &blocks, const SnapTargets &targets)
{
    const auto made = std::make_shared<Ground>();
    m_ground = made;
    Ground &ground = *made;
    ground.grid = targets.grid;
    const std::vector<std::optional<Box>> places = placesOnScreen(outline);
    std::vector<bool> isOut(places.size()); // not snapped to
    for (const int block : targets.hidden) {
        if (block >= 0 && size_t(block) < places.size())
            isOut[size_t(block)] = true;
    }
    for (const int block : outermost(outline, blocks)) {
        isOut[size_t(block)] = true;
        if (const std::optional<RectValue> rect = rectOfRow(outline, block)) {
            ground.dragged.append({block, rect->box});
            ground.places.push_back(places[size_t(block)].value_or(rect->box));
        }
    }
    if (ground.dragged.isEmpty())
        return;
    const int parent = parentOf(outline, ground.dragged.first().block);
    for (size_t row = 0; row < places.size(); ++row) {
        if (!isOut[row] && places[row] && parentOf(outline, int(row)) == parent)
            ground.lines.addSibling(*places[row]);
    }
    if (parent >= 0 && places[size_t(parent)])
        ground.lines.addFrame(spansOf(*places[size_t(parent)]), true);
    if (!targets.screen.isEmpty()) {
        const double w = targets.screen.width(), h = targets.screen.height();
        ground.lines.addFrame({Span{0, w}, Span{0, h}}, true);
        const double across = std::round(w * kSafe), down = std::round(h * kSafe);
        ground.lines.addFrame({Span{across, w - across}, Span{down, h - down}}, false);
    }
    for (const qint64 column : targets.columns)
        ground.lines.addRuler(0, double(column));
    for (const qint64 row : targets.rows)
        ground.lines.addRuler(1, double(row));
    ground.lines.sort();
}

Snapped Snapping::moved(QPointF by, double tolerance, bool keepDirection) const
{
    const Ground &ground = *m_ground;
    if (ground.dragged.isEmpty())
        return {};
    if (keepDirection)
        by = constrained(by);
    qint64 way[2] = {qRound64(by.x()), qRound64(by.y())};
    Spans whole = spansOf(ground.places[0]); // of all that is dragged
    for (const Box &place : ground.places) {
        const Spans spans = spansOf(place);
        for (const size_t direction : {0, 1})
            whole[direction] = {std::min(whole[direction].from, spans[direction].from),
                                std::max(whole[direction].to, spans[direction].to)};
    }
    const auto placed = [&] {
        return Spans{Span{whole[0].from + double(way[0]), whole[0].to + double(way[0])},
                     Span{whole[1].from + double(way[1]), whole[1].to + double(way[1])}};
    };
    const Holds both = {Hold{true, true}, Hold{true, true}};
    Snapped snapped;
    if (tolerance > 0) {
        const Box &rect = ground.dragged.first().box;
        const Spans asked = placed();
        for (const size_t direction : {0, 1}) {
            if (keepDirection && (direction == 0 ? by.x() : by.y()) == 0)
                continue;
            const std::optional<double> line =
                ground.lines.correction(int(direction), asked, both[direction], tolerance);
            qint64 correction = qint64(std::round(line.value_or(0)));
            if (ground.grid > 0) {
                const qint64 grid = toGrid((direction == 0 ? rect.x : rect.y) + way[direction], ground.grid);
                if (!line || std::abs(grid) < std::abs(correction))
                    correction = grid;
            }
            way[direction] += correction;
        }
        snapped.guides = ground.lines.guides(placed(), both);
    }
    for (const BlockBox &dragged : ground.dragged)
        snapped.boxes.append({dragged.block, quillmere::moved(dragged.box, way[0], way[1])});
    return snapped;
}

Snapped Snapping::sized(Qt::Edges edges, QPointF by, double tolerance, bool keepProportions) const
{
    const Ground &ground = *m_ground;
    if (ground.dragged.isEmpty())
        return {};
    const Holds holds = holdsOf(edges);
    const Box &before = ground.dragged.first().box;
    const qint64 toScreen[2] = {ground.places[0].x - before.x, ground.places[0].y - before.y};
    const auto onScreen = [&](const Box &box) {
        return spansOf(quillmere::moved(box, toScreen[0], toScreen[1]));
    };
    Box box = before;
    const qint64 way[2] = {qRound64(by.x()), qRound64(by.y())};
    for (const size_t direction : {0, 1}) {
        if (holds[direction].isAny())
            Side::of(box, direction).resize(holds[direction], way[direction]);
    }
    if (keepProportions)
        box = constrained(before, box, edges);
    Snapped snapped;
    if (tolerance > 0) {
        std::optional<qint64> corrections[2];
        for (const size_t direction : {0, 1}) {
            const Hold hold = holds[direction];
            if (!hold.isAny())
                continue;
            if (const auto line = ground.lines.correction(int(direction), onScreen(box), hold, tolerance))
                corrections[direction] = qint64(std::round(*line));
            if (ground.grid > 0) {
                Side side = Side::of(box, direction);
                const qint64 grid = toGrid(hold.low ? side.at : side.size, ground.grid);
                if (!corrections[direction] || std::abs(grid) < std::abs(*corrections[direction]))
                    corrections[direction] = grid;
            }
        }
        // In proportion there is one that leads: what is nearer.
        if (keepProportions && corrections[0] && corrections[1])
            corrections[std::abs(*corrections[0]) <= std::abs(*corrections[1]) ? 1 : 0].reset();
        for (const size_t direction : {0, 1}) {
            if (!corrections[direction])
                continue;
            Side::of(box, direction).resize(holds[direction], *corrections[direction]);
            if (keepProportions)
                box = inProportion(before, box, holds, direction);
        }
        snapped.guides = ground.lines.guides(onScreen(box), holds);
    }
    snapped.boxes.append({ground.dragged.first().block, box});
    return snapped;
}

} // namespace quillmere
