#pragma once

#include <QString>

namespace quillmere {

// The full path of the file of a language in a theme that is not open, by the ID that its catalogue gives it,
// letter case aside; empty where the theme has none. Reads two small files and changes nothing; any thread.
QString languageFileIn(const QString &themeFolder, const QString &id);

} // namespace quillmere
