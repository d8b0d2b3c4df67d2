#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

// A path as lists show it: below the theme's folder, with "/", fit for one line.
QString shownPath(const QString &path, const QString &folder);

// "1 file", "12 files".
QString counted(qsizetype count, const QString &one, const QString &many);
// "12 places in 3 files".
QString placesInFiles(const FoundPlaces &found);

// The rows that show places: text = file, sub-item 1 = line number, 2 = the line, and, where `after` is
// given, 3 = the line with that in the place; ticked where it is sure.
QList<ListRows::Row> rowsOf(const FoundPlaces &found, const QString &folder, const QString *after = nullptr);

} // namespace quillmere
