#pragma once

#include <QString>

namespace quillmere {

// Removes the first complete comment and every copy of it (ignoring case), in place, and returns the text. A
// "-->" that stands before the first "<!--" counts as the end of an empty comment: then every "-->" goes.
QString GetRemoveComment(QString &html);

// Repeats GetRemoveComment while a "<!--" is left and something changes. An unterminated comment stays. The
// result is that of the repetition, the time is not: it is proportional to the text for comments in any
// order, alike or not, nested or unterminated. Two kinds of text that nobody writes take longer: comments of
// many different lengths that are repeated inside one another (up to the text's length to the power of 1.5),
// and stray "-->" whose removal joins new comments and new strays in turn (one pass over the text for each
// such turn).
QString RemoveComment(QString &html);

} // namespace quillmere
