#pragma once

#include "outline/Outline.h"
#include "source/TextChanges.h"

namespace quillmere {

// Which rows of a text are the blocks that had these rows in the text before, whatever was changed: typed,
// undone, read again. Blocks that are gone are left out, the order stays. A block is known by its place: it
// is the same as long as its "<" has not been taken away. Where a block of another name, or none, stands in
// that place now, it is the block of its own name, if in either text there is exactly one.
QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after);
// The same where the changes are known, in order, with positions of the text before.
QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after,
                          const QList<TextChange> &changes);

} // namespace quillmere
