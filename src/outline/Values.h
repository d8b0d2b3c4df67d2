#pragma once

#include "outline/Outline.h"

#include <array>
#include <optional>
#include <vector>

namespace quillmere {

// What the values of an outline are made of.

// The parts of an element's value, each without the blanks around it: what "," divides in the lists of
// colours and rects, without the brackets around the list; what "|" divides in an alignment; the whole value
// of any other element. Parts may be empty, an empty value has none.
QList<Range> entriesOf(const Outline &outline, qint32 element);

// Pixels. Sums of many parents do not overflow.
struct Box
{
    qint64 x = 0, y = 0, w = 0, h = 0;

    bool operator==(const Box &) const = default;
};

struct RectValue
{
    qint32 element = -1;
    std::array<Range, 4> ranges; // of the numbers alone
    Box box;
};
// The rect of a `<rect>` element: "[", four whole numbers that "," divides, each with blanks and a sign if it
// likes, "]". Nothing for any other value, and for numbers beyond 2^31.
std::optional<RectValue> rectOf(const Outline &outline, qint32 element);
// The first rect of a block.
std::optional<RectValue> rectOfBlock(const Outline &outline, qint32 block);

// Where each block is on the screen, by its row: its rect, moved by those of the blocks around it. Nothing
// for a block in a comment or a signal, and where its own rect or one around it cannot be read. Time is
// linear in the outline.
std::vector<std::optional<Box>> placesOnScreen(const Outline &outline);

} // namespace quillmere
