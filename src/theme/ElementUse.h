#pragma once

#include "outline/Outline.h"

#include <QString>

#include <vector>

namespace quillmere {

// How often the blocks of a class hold an element of the vocabulary. Under Kind::Widget stands how many
// blocks of the class there are.
struct ElementUse
{
    QString className;
    Kind kind = Kind::Other;
    qint32 count = 0;
};
// Of the blocks and elements of a window that are in no comment or signal. What a block's children hold is
// theirs. Blocks without a class, or with one that is too long to be meant, do not count.
std::vector<ElementUse> elementUses(const Outline &outline);

} // namespace quillmere
