#pragma once

#include "theme/ThemeEdit.h"

namespace quillmere {

// The edit that gives a source a translation in a language file, lines ending in LF: in its first string, or
// in a new one behind all others. `text` is what the file holds, read in `page`. RunTimeError says why the
// file cannot take it.
ThemeEdit translationInFile(const QString &path, const QString &text, CodePage page, const QString &source,
                            const QString &translation);

// The same for a language whose rows are open.
ThemeEdit translationInRows(const QString &path, const QList<ListRows::Row> &rows, const QString &source,
                            const QString &translation);

} // namespace quillmere
