#pragma once

#include "theme/ThemeIndex.h"

namespace quillmere {

// How many letters have to be put in, taken out, made others or swapped with their neighbour to make one text
// the other, ignoring letter case; more than `most` counts as `most` + 1.
int lettersApart(QStringView a, QStringView b, int most);

// Those names that somebody may have meant by this one, the nearest first: those that differ in letter case
// alone, then those that a few letters make it, the fewer the shorter the name is.
QStringList nearestOf(const QStringList &names, QStringView name, qsizetype most = 3);
// The same of the defined names of a kind. Takes a few milliseconds for 20,000 names.
QStringList nearestNames(const ThemeIndex &index, NameKind kind, QStringView name, qsizetype most = 3);

} // namespace quillmere
