#pragma once

#include "outline/Document.h"
#include "rows/ListRows.h"

namespace quillmere {

// Row: text empty, sub-items 1 to 4 = name, file, size (pixels, as written), style.

// Clears the rows and reads every "<font>" entry of the file; an entry without a style is "normal". A missing
// file leaves the rows empty.
void LoadFontList(ListRows &lvFont, const Document &file);

} // namespace quillmere
