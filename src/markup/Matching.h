#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace quillmere {

// Theme text is matched in two ways, and they differ on purpose: "does it contain" is exact, "split" and
// "replace" ignore letter case. Ignoring case compares one UTF-16 unit with one UTF-16 unit (Unicode simple
// case folding), so a match is always as long as the marker. Positions are 0-based counts of UTF-16 units.

// The folded form of one unit; two units match when their folded forms are equal.
char16_t foldCaseBeyondAscii(char16_t unit);
inline char16_t foldCase(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? char16_t(unit | 0x20) : unit;
    return foldCaseBeyondAscii(unit);
}
// Each unit folded; the second form writes over `folded`, whose memory is used again.
QString foldedText(QStringView text);
void foldInto(QString &folded, QStringView text);

// Nothing is found in an empty text; an empty marker is found in any other text.
bool containsExact(QStringView text, QStringView marker);
bool containsIgnoringCase(QStringView text, QStringView marker);

// Position of the first match at or behind `from`, or -1. An empty marker is found at `from` in a text that
// is not empty.
qsizetype indexOfExact(QStringView text, QStringView marker, qsizetype from = 0);
qsizetype indexOfIgnoringCase(QStringView text, QStringView marker, qsizetype from = 0);

// True when the text at `position` begins with the marker, ignoring case.
bool matchesIgnoringCase(QStringView text, qsizetype position, QStringView marker);

// The pieces between the separators, in order; views into `text`. An empty text has no pieces, a text without
// the separator (or with an empty separator) has one.
QList<QStringView> splitExact(QStringView text, QStringView separator);
QList<QStringView> splitIgnoringCase(QStringView text, QStringView separator);

// Replaces every occurrence, left to right, without overlap and without looking at what it put in. Returns
// `text`. An empty `from` changes nothing.
QString &replaceIgnoringCase(QString &text, QStringView from, QStringView to);

struct Replacement
{
    QString from, to;

    bool operator==(const Replacement &) const = default;
};
// One replacement after the other, each in the result of the one before: the same as a call of the above for
// each, and quicker where there are many.
QString &replaceAllIgnoringCase(QString &text, const QList<Replacement> &replacements);

} // namespace quillmere
