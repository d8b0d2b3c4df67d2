#include "stage/SnapGround.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

QPointF pointAt(int direction, double at, double along)
{
    return direction == 0 ? QPointF(at, along) : QPointF(along, at);
}

// The distance of which most is known: the smallest that is one.
class Nearest
{
public:
    explicit Nearest(double tolerance) : m_most(tolerance) {}

    void consider(double distance)
    {
        if (std::abs(distance) <= m_most && (!m_best || std::abs(distance) < std::abs(*m_best)))
            m_best = distance;
    }
    std::optional<double> best() const { return m_best; }

private:
    double m_most;
    std::optional<double> m_best;
};

template <typename Lines>
void considerLines(Nearest &nearest, const Lines &lines, double at)
{
    const auto behind = std::lower_bound(lines.begin(), lines.end(), at,
                                         [](const auto &line, double place) { return line.at < place; });
    if (behind != lines.end())
        nearest.consider(behind->at - at);
    if (behind != lines.begin())
        nearest.consider((behind - 1)->at - at);
}

} // namespace

Spans spansOf(const Box &box)
{
    const auto span = [](qint64 at, qint64 size) {
        return Span{double(std::min(at, at + size)), double(std::max(at, at + size))};
    };
    return {span(box.x, box.w), span(box.y, box.h)};
}

void SnapGround::addSibling(const Box &place)
{
    m_siblings.push_back(spansOf(place));
    addFrame(m_siblings.back(), true);
}

void SnapGround::addFrame(const Spans &frame, bool withMiddles)
{
    for (size_t direction : {0, 1}) {
        const Span span = frame[direction], along = frame[1 - direction];
        m_sides[direction].push_back({span.from, along});
        m_sides[direction].push_back({span.to, along});
        if (withMiddles)
            m_middles[direction].push_back({span.middle(), along});
    }
}

void SnapGround::addRuler(int direction, double at)
{
    // It goes on for ever: there is no distance to its end.
    for (auto *lines : {&m_sides, &m_middles})
        (*lines)[size_t(direction)].push_back({at, {-HUGE_VAL, HUGE_VAL}});
}

void SnapGround::sort()
{
    for (auto *lines : {&m_sides, &m_middles}) {
        for (Lines &of : *lines)
            std::stable_sort(of.begin(), of.end(), [](const Line &a, const Line &b) { return a.at < b.at; });
    }
}

const Spans *SnapGround::nextTo(int direction, const Spans &box, Span from, bool behind, double slack) const
{
    const size_t along = size_t(direction), beside = size_t(1 - direction);
    const Spans *found = nullptr;
    for (const Spans &sibling : m_siblings) {
        if (!sibling[beside].meets(box[beside]))
            continue;
        const Span span = sibling[along];
        if (behind ? span.from >= from.to - slack && (!found || span.from < (*found)[along].from)
                   : span.to <= from.from + slack && (!found || span.to > (*found)[along].to))
            found = &sibling;
    }
    return found;
}

SnapGround::Neighbours SnapGround::neighbours(int direction, const Spans &box, double slack) const
{
    const size_t along = size_t(direction);
    Neighbours found;
    found.before = nextTo(direction, box, box[along], false, slack);
    if (found.before)
        found.before2 = nextTo(direction, box, (*found.before)[along], false, 0);
    found.behind = nextTo(direction, box, box[along], true, slack);
    if (found.behind)
        found.behind2 = nextTo(direction, box, (*found.behind)[along], true, 0);
    return found;
}

std::optional<double> SnapGround::correction(int direction, const Spans &box, Hold hold,
                                             double tolerance) const
{
    const size_t along = size_t(direction);
    const Span span = box[along];
    Nearest nearest(tolerance);
    if (hold.low)
        considerLines(nearest, m_sides[along], span.from);
    if (hold.high)
        considerLines(nearest, m_sides[along], span.to);
    if (hold.isBoth())
        considerLines(nearest, m_middles[along], span.middle());

    const Neighbours next = neighbours(direction, box, tolerance);
    const auto spanOf = [along](const Spans *sibling) { return (*sibling)[along]; };
    if (hold.low && next.before2) {
        const double gap = spanOf(next.before).from - spanOf(next.before2).to;
        if (gap > 0)
            nearest.consider(spanOf(next.before).to + gap - span.from);
    }
    if (hold.high && next.behind2) {
        const double gap = spanOf(next.behind2).from - spanOf(next.behind).to;
        if (gap > 0)
            nearest.consider(spanOf(next.behind).from - gap - span.to);
    }
    if (next.before && next.behind) {
        const double before = span.from - spanOf(next.before).to;
        const double behind = spanOf(next.behind).from - span.to;
        if (hold.isBoth() && before + behind > 0)
            nearest.consider((behind - before) / 2);
        else if (hold.low && behind > 0)
            nearest.consider(behind - before);
        else if (hold.high && before > 0)
            nearest.consider(behind - before);
    }
    return nearest.best();
}

QList<Guide> SnapGround::guides(const Spans &box, const Holds &holds) const
{
    QList<Guide> guides;
    for (const int direction : {0, 1}) {
        const size_t along = size_t(direction);
        const Hold hold = holds[along];
        if (hold.low)
            addGuide(guides, direction, m_sides[along], box[along].from, 0, box);
        if (hold.high && box[along].size() > 0)
            addGuide(guides, direction, m_sides[along], box[along].to, 0, box);
        // Of an odd and an even size the middles cannot meet, they are half a pixel apart.
        if (hold.isBoth())
            addGuide(guides, direction, m_middles[along], box[along].middle(), 0.5, box);
        if (hold.isAny())
            addGaps(guides, direction, box, hold);
    }
    return guides;
}

// One for all that stands at the same place, with the distance to what is nearest of it.
void SnapGround::addGuide(QList<Guide> &guides, int direction, const Lines &lines, double at, double slack,
                          const Spans &box) const
{
    const Span own = box[size_t(1 - direction)];
    Span whole = own;
    double distance = -1, middle = 0;
    const auto consider = [&](double from, double to) {
        if (to > from && (distance < 0 || to - from < distance)) {
            distance = to - from;
            middle = (from + to) / 2;
        }
    };
    auto line = std::lower_bound(lines.begin(), lines.end(), at - slack,
                                 [](const Line &one, double place) { return one.at < place; });
    if (line == lines.end() || line->at > at + slack)
        return;
    const double drawnAt = line->at;
    for (; line != lines.end() && line->at <= at + slack; ++line) {
        const Span other = line->along;
        if (std::isinf(other.from))
            continue;
        whole = {std::min(whole.from, other.from), std::max(whole.to, other.to)};
        const bool isAround = other.from <= own.from && own.to <= other.to;
        consider(isAround ? other.from : other.to, own.from);
        consider(own.to, isAround ? other.to : other.from);
    }
    guides.append({QLineF(pointAt(direction, drawnAt, whole.from), pointAt(direction, drawnAt, whole.to)),
                   distance < 0 ? -1 : qint64(distance), pointAt(direction, drawnAt, middle)});
}

void SnapGround::addGaps(QList<Guide> &guides, int direction, const Spans &box, Hold hold) const
{
    const size_t along = size_t(direction), beside = size_t(1 - direction);
    const Neighbours next = neighbours(direction, box, 0);
    const auto gap = [along](const Spans *low, const Spans *high) {
        return low && high ? (*high)[along].from - (*low)[along].to : 0;
    };
    const auto draw = [&](const Spans &low, const Spans &high) {
        // In the middle of where the two and the box are beside each other.
        const double from = std::max({low[beside].from, high[beside].from, box[beside].from});
        const double to = std::min({low[beside].to, high[beside].to, box[beside].to});
        const double at = (from + to) / 2;
        const Span span = {low[along].to, high[along].from};
        guides.append({QLineF(pointAt(direction, span.from, at), pointAt(direction, span.to, at)),
                       qint64(span.size()), pointAt(direction, span.middle(), at)});
    };
    const double before = gap(next.before, &box), behind = gap(&box, next.behind);
    const bool isBetween = before > 0 && behind > 0 && std::abs(before - behind) <= (hold.isBoth() ? 1 : 0);
    const bool isBehindTwo = hold.low && before > 0 && before == gap(next.before2, next.before);
    const bool isBeforeTwo = hold.high && behind > 0 && behind == gap(next.behind, next.behind2);
    if (isBetween || isBehindTwo)
        draw(*next.before, box);
    if (isBetween || isBeforeTwo)
        draw(box, *next.behind);
    if (isBehindTwo)
        draw(*next.before2, *next.before);
    if (isBeforeTwo)
        draw(*next.behind, *next.behind2);
}

} // namespace quillmere
