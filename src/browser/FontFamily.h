#pragma once

#include <QString>

namespace quillmere {

// What pages call the font in this file: the same as long as the file is, since a document keeps the fonts it
// has.
QString fontFamilyOf(const QString &path);

} // namespace quillmere
