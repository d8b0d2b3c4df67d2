#pragma once

#include <QString>
#include <QStringList>

namespace quillmere {

// What a translation has to have in common with its source, whatever the language.

// Whether both begin and end with the same blanks; and the translation with those of the source.
bool hasSameBlanks(QStringView source, QStringView translation);
QString withBlanksOf(QStringView source, QStringView translation);

// What the receiver puts something in place of, in alphabetical order: %d, %-5.1f, %1, %2$s, {name}.
QStringList placeholdersIn(QStringView text);

// Broken lines, and "\n" as it is written.
int lineBreaksIn(QStringView text);

// Whether both end alike: the marks of other scripts count as those that they stand for. Abbreviations may
// end in a full stop, and scripts that have none need not.
bool endsAlike(QStringView source, QStringView translation);
// The translation with the mark of the source at its end, in its own script; empty where that is not certain.
QString withEndOf(QStringView source, QStringView translation);

} // namespace quillmere
