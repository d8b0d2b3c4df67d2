#pragma once

#include "outline/Outline.h"

#include <QSet>
#include <QString>

namespace quillmere {

// What keeps blocks out of the picture beside the text itself.
struct Unseen
{
    QSet<QString> ticked;     // names that are ticked in the list of blocks
    bool byState = false;     // `<state>hide</state>` hides, as on the receiver
    bool withoutRect = false; // a block without a rect is not drawn
};

// Why a row of the block list is not in the picture, a sentence for the status line; empty where it is.
QString whyUnseen(const Outline &outline, int block, const Unseen &unseen);

} // namespace quillmere
