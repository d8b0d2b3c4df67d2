#pragma once

#include "outline/Outline.h"

namespace quillmere {

// The row of the innermost block that a caret between two units of the text stands in, -1 where that is none.
// Beside the blanks at the beginning or the end of a line the caret counts to what stands on the line.
int blockAtCaret(const Outline &outline, qsizetype caret);

} // namespace quillmere
