#pragma once

#include "browser/PageTree.h"

#include <QJsonArray>

#include <optional>
#include <vector>

namespace quillmere {

// What is to be changed in the document of one page to make it that of another, node by node; nothing where
// writing the page anew is surer or quicker. All places are those before the first change; a path names a
// child by its number from the root element on. Kinds of changes:
//   ["data", path, length now, offset, count, text]   in a text or comment
//   ["attributes", path, number kept, [[name, value]...]]   those behind the kept ones go, these are set
//   ["children", path, number now, first, count, [node...]]   of an element
// where a node is a text, {"comment": text} or [name, [[name, value]...], [node...]].
std::optional<QJsonArray> changesBetween(const PageTree &before, const PageTree &after);

// A text or comment of a document: where it stands, and what it is.
struct PageText
{
    QJsonArray path;
    QString text;
};
// Those in the body that hold this unit, in order. Nothing where it stands in a tag, or where it is not
// certain what the browser makes of one of them.
std::optional<std::vector<PageText>> textsWith(const PageTree &tree, QChar unit);

// The change of a text or comment, letter by letter.
QJsonArray dataChange(const QJsonArray &path, QStringView before, QStringView after);

} // namespace quillmere
