#pragma once

#include <QList>
#include <QStringView>

#include <optional>

namespace quillmere {

// How well the letters of a pattern stand in a text, in their order but with others between them: better at
// the beginning of the text or of a word in it, better side by side. Nothing where one is missing. Both are
// folded (see Matching.h); `wordStarts` has a bit for each of the first 64 units where a word begins.
// The best of all ways to find them counts; time is the product of the two lengths.
std::optional<int> fuzzyScore(QStringView pattern, QStringView text, quint64 wordStarts);
// Whether they are there at all, which takes less time.
bool hasLettersInOrder(QStringView pattern, QStringView text);
// The places of the letters in the text in the best way, the first one where there are several; ascending.
// Empty where one is missing.
QList<int> fuzzyPlaces(QStringView pattern, QStringView text, quint64 wordStarts);

// Where words begin: behind anything but letters and digits, and at a capital behind a small letter.
quint64 wordStartsOf(QStringView text);

} // namespace quillmere
