#pragma once

#include "browser/MeasuredText.h"
#include "outline/Values.h"
#include "receiver/BlockText.h"

#include <vector>

namespace quillmere {

// A text in the room that its block gives it.
struct TextInRoom
{
    qint32 block = -1; // an element
    BlockText set;
    Box room;
};
// The texts of a window that may be shown in any state, hidden ones too: those of blocks that have a rect
// with room in it, and are in no comment or signal and no style.
std::vector<TextInRoom> textsInRooms(const Outline &outline, const ReceiverTheme &theme);

// Pixels of a text that its block cuts off, at both sides together.
struct CutOff
{
    int across = 0, down = 0;

    bool isNothing() const { return across <= 0 && down <= 0; }
};
CutOff cutOff(const TextInRoom &text, const TextExtent &extent, Qt::LayoutDirection direction);

} // namespace quillmere
