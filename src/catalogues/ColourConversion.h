#pragma once

#include <QString>

namespace quillmere {

class ListRows;

enum class ColourForm { Name, Code };

// The source text with the colours of its bracketed lists turned into the given form. A value counts as the
// first, a middle or the last of a list that stands directly between ">" and "<", letter case ignored; a list
// of one value has none of these. Row by row, first values, then middle ones, then last ones; of two equal
// middle values side by side only the first is taken, since they share a comma. What an earlier row has put
// in may be converted again by a later one. One blank behind each ">" and before each "<" is removed.
QString ConvertColours(QString text, const ListRows &lvColor, ColourForm to);

} // namespace quillmere
