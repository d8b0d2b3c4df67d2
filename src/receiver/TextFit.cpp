#include "receiver/TextFit.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

// A single pixel is the soft edge of a letter, and as exact as browsers are about it.
int standingOut(double start, double end, double room)
{
    if (start >= end)
        return 0; // no ink
    const auto pixels = [](double length) {
        constexpr double least = 2, most = 1 << 30;
        return length < least ? 0 : int(std::min(length, most));
    };
    return pixels(-start) + pixels(end - room);
}

} // namespace

std::vector<TextInRoom> textsInRooms(const Outline &outline, const ReceiverTheme &theme)
{
    std::vector<TextInRoom> texts;
    for (const qint32 block : outline.blocks()) {
        const Element &element = outline.element(block);
        if (element.inComment || element.inSignal || element.kind == Kind::Style)
            continue;
        const BlockLook look(outline, block);
        const std::optional<Box> rect = look.rect();
        if (!rect || rect->w <= 0 || rect->h <= 0)
            continue;
        TextInRoom text{block, textOf(look, theme), *rect};
        if (!text.set.source.isEmpty())
            texts.push_back(std::move(text));
    }
    return texts;
}

// A line that is wider than its room begins at its beginning, whatever the alignment; one that is higher
// stands out at the side where it is not aligned to, or at both.
CutOff cutOff(const TextInRoom &text, const TextExtent &extent, Qt::LayoutDirection direction)
{
    using L = BlockLook;
    const auto [across, down] = text.set.alignment;
    const double spare = double(text.room.w) - double(extent.width),
                 below = double(text.room.h) - double(extent.height);
    const double x = spare < 0                     ? (direction == Qt::RightToLeft ? spare : 0)
                     : across == L::Across::Right  ? spare
                     : across == L::Across::Centre ? spare / 2
                                                   : 0;
    const double y = down == L::Down::Bottom ? below : down == L::Down::Centre ? below / 2 : 0;
    return {standingOut(x + double(extent.left), x + double(extent.right), double(text.room.w)),
            standingOut(y + double(extent.top), y + double(extent.bottom), double(text.room.h))};
}

} // namespace quillmere
