#pragma once

#include "outline/Outline.h"

namespace quillmere {

// The two steps in which an outline is made. The first reads the text and says where tags are and which
// closing tag belongs to which opening one; the second, knowing that, says what stands in what.
OutlineParts readTags(QStringView text);
void placeElements(std::vector<Element> &elements, QStringView text);

} // namespace quillmere
