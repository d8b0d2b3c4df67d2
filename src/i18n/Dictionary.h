#pragma once

#include "rows/ListRows.h"

#include <QString>
#include <QStringList>

namespace quillmere {

// The routines of the translation list; its rows are described in LanguageCatalogue.h, and counted from 0
// here.

// A dictionary is a text of lines SOURCE[*]TRANSLATION; what follows a second "[*]" does not count, nor do
// lines without one. Lines end in CR LF; a text without any CR LF may have them end in LF.

// Fills and checks every unchecked row whose source is a key, ignoring letter case; the first line with that
// key wins. Gives the number of rows filled.
int fillFromDictionary(ListRows &LvBhs, const QString &dictionary);

// Lines for other programs, from row `start` to the last, each ending in CR LF; empty ones are left out.
enum class CopiedColumn {
    Source = 1,
    Trans = 2,
    NotTranslated = 3, // sources of more than two characters of unchecked rows, as dictionary lines
};
QString linesToCopy(const ListRows &LvBhs, int start, CopiedColumn column);

// Puts the lines (ending in CR LF or LF) into the translations from row `start` on, check marks as they were.
// Stops at the last row and gives the number of lines that found a row.
int pasteLines(ListRows &LvBhs, int start, const QString &lines);

// Checks the rows whose translation contains the text, ignoring letter case, and clears the others. An empty
// text is contained in every translation but an empty one.
void checkContaining(ListRows &LvBhs, const QString &text);

// What the menu calls the dictionaries among these files: the names that hold ".txt", without it, in order.
QStringList dictionaryNames(const QStringList &files);

struct StringCounts
{
    int all = 0, checked = 0, untranslated = 0; // untranslated: nothing but white space
};
StringCounts countStrings(const ListRows &LvBhs);
// How many of a hundred have a translation; 100 only where all have. 0 without strings.
int percentTranslated(const StringCounts &counts);

} // namespace quillmere
