#pragma once

#include "browser/PageTree.h"

#include <QJsonArray>

#include <optional>

namespace quillmere {

// What is to be changed in the document of one page to make it that of another, node by node; nothing where
// writing the page anew is surer or quicker. All places are those before the first change; a path names a
// child by its number from the root element on. Kinds of changes:
//   ["data", path, length now, offset, count, text]   in a text or comment
//   ["attributes", path, number kept, [[name, value]...]]   those behind the kept ones go, these are set
//   ["children", path, number now, first, count, [node...]]   of an element
// where a node is a text, {"comment": text} or [name, [[name, value]...], [node...]].
std::optional<QJsonArray> changesBetween(const PageTree &before, const PageTree &after);

} // namespace quillmere
