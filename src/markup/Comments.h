#pragma once

#include <QString>

namespace quillmere {

// Removes the first complete comment and every copy of it (ignoring case), in place, and returns the text. A
// "-->" that stands before the first "<!--" counts as the end of an empty comment: then every "-->" goes.
QString GetRemoveComment(QString &html);

// Repeats GetRemoveComment while a "<!--" is left and something changes. An unterminated comment stays. Looks
// through the whole text for each comment that has no copy before it.
QString RemoveComment(QString &html);

} // namespace quillmere
