#pragma once

#include "outline/Outline.h"

namespace quillmere {

// What blocks are called. Blocks are rows of the block list.

struct BlockName
{
    QString name, className;
};
// Empty texts for a row that there is not.
BlockName nameOfBlock(const Outline &outline, int block);
// Whether no block before it has its name; letter case does not matter.
bool isFirstOfName(const Outline &outline, int block);
// Whether its own attribute is the first place in the text that holds its name in quotes.
bool isFirstQuoted(const Outline &outline, int block);

} // namespace quillmere
