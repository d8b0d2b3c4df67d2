#pragma once

#include "stage/ElementChanges.h"
#include "stage/TextLayout.h"

namespace quillmere {

// What the edits of elements share.

// The outermost blocks among those that are whole, in their order.
QList<int> wholeBlocks(const Outline &outline, const QList<int> &blocks);
// The changes, with the blocks whose tags stand at these positions afterwards.
Edited edited(const Outline &outline, const ChangeList &changes, const QList<qsizetype> &selected);

} // namespace quillmere
