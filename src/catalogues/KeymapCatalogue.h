#pragma once

#include "outline/Document.h"

namespace quillmere {

class ListRows;

// Group row: text = display name, sub-item 1 = name. Key row: text = name, sub-item 1 = code. A file that is
// missing leaves the rows empty.

// Clears the rows and reads the index of key groups: every "<item " with a group="...".
void LoadKeymapList(ListRows &lvKeyGroup, const Document &file);

// Clears the rows and reads the keys of the first "<group " with this name, letter case ignored, from the
// file as it is now.
void ShowKeyGroup(ListRows &lvKeyMap, Document &file, const QString &groupName);

} // namespace quillmere
