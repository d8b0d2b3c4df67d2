#pragma once

#include "outline/Outline.h"
#include "source/TextChanges.h"

namespace quillmere {

// Which rows of a text are the blocks that had these rows in the text before, whatever was changed: typed,
// undone, read again. Blocks that are gone are left out, the order stays. A block is known by its place: it
// is the same as long as its "<" has not been taken away. One that has moved elsewhere is known by its name,
// where it has one that no other block has in either text.
QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after);
// The same where the changes are known, in order, with positions of the text before.
QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after,
                          const QList<TextChange> &changes);

} // namespace quillmere
