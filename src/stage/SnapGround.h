#pragma once

#include "stage/Snapping.h"

#include <array>
#include <vector>

namespace quillmere {

// What a drag snaps to, in screen pixels. Both directions are gone through by the same code: 0 is across, 1
// is down.

struct Span
{
    double from = 0, to = 0;

    double size() const { return to - from; }
    double middle() const { return (from + to) / 2; }
    bool meets(Span other) const { return from < other.to && other.from < to; }
};
using Spans = std::array<Span, 2>;
Spans spansOf(const Box &box);

// Which sides of the box a drag takes along in one direction; both where it is moved.
struct Hold
{
    bool low = false, high = false;

    bool isAny() const { return low || high; }
    bool isBoth() const { return low && high; }
};
using Holds = std::array<Hold, 2>;

class SnapGround
{
public:
    void addSibling(const Box &place);
    // Sides and middles that things may stand at.
    void addFrame(const Spans &frame, bool withMiddles);
    // A guide of a ruler: x of one that stands (direction 0), y of one that lies.
    void addRuler(int direction, double at);
    // Before the first question.
    void sort();

    // How far the box is to be moved, or the sides that are held, to meet the nearest line; nothing within
    // the tolerance, nothing.
    std::optional<double> correction(int direction, const Spans &box, Hold hold, double tolerance) const;
    // What the box meets where it is.
    QList<Guide> guides(const Spans &box, const Holds &holds) const;

private:
    struct Line
    {
        double at;
        Span along; // where that stands whose line it is
    };
    using Lines = std::vector<Line>; // sorted

    // The siblings next to the box in one direction and the next but one.
    struct Neighbours
    {
        const Spans *before = nullptr, *before2 = nullptr, *behind = nullptr, *behind2 = nullptr;
    };
    Neighbours neighbours(int direction, const Spans &box, double slack) const;
    const Spans *nextTo(int direction, const Spans &box, Span from, bool behind, double slack) const;

    void addGuide(QList<Guide> &guides, int direction, const Lines &lines, double at, double slack,
                  const Spans &box) const;
    void addGaps(QList<Guide> &guides, int direction, const Spans &box, Hold hold) const;

    std::array<Lines, 2> m_sides, m_middles; // by direction
    std::vector<Spans> m_siblings;
};

} // namespace quillmere
