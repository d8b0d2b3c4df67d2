#pragma once

#include "outline/Outline.h"
#include "rows/ListRows.h"
#include "source/TextChanges.h"

namespace quillmere {

// Properties of several blocks at once. Blocks are rows of the block list; of each the first element with a
// name counts that stands in its <property> and holds no other.

// What all blocks have, in the order of the first one: text = element name, sub-item 1 = the content where
// all have the same, else empty; sub-item 2 is then a list in brackets with those entries that all have the
// same, where each has a list with as many.
QList<ListRows::Row> commonProperties(const Outline &outline, const QList<int> &blocks);

// Writes a property of all blocks and nothing else, in order. `keepsEmpty`: an empty entry of a list in
// brackets stands for the one that a block has.
QList<TextChange> propertyChanges(const Outline &outline, const QList<int> &blocks, QStringView name,
                                  const QString &content, bool keepsEmpty);

} // namespace quillmere
