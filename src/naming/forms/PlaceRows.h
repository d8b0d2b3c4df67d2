#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

class ListView;

// A path as lists show it: below the theme's folder, with "/", fit for one line.
QString shownPath(const QString &path, const QString &folder);

// "1 file", "12 files".
QString counted(qsizetype count, const QString &one, const QString &many);
// "12 places in 3 files".
QString placesInFiles(const FoundPlaces &found);
// "11 of 12 places, in 2 files" where not all are taken.
QString placesInFiles(const FoundPlaces &found, const QList<bool> &isTaken);

// The rows that show places: text = file, sub-item 1 = line number, or what row of a list it is, 2 = the
// line, and, where `after` is given, 3 = the line with that in the place; ticked where it is sure.
QList<ListRows::Row> rowsOf(const FoundPlaces &found, const QString &folder, const QString *after = nullptr);

// Marks the places in the lines that a list shows; they must outlive it.
void markPlaces(ListView &list, const FoundPlaces &found);

// Shows places of texts that were found anew in the list of those before: what was unticked or selected still
// is, as far as it is there.
void renewRows(ListView &list, ListRows &rows, const FoundPlaces &before, const FoundPlaces &now,
               const QString &folder);

} // namespace quillmere
