#pragma once

#include "outline/Range.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

namespace quillmere {

// The words of a text that a dictionary may be asked about, in the order of the text. Placeholders and what
// is joined to them, words with digits, words of capitals alone, single letters, and scripts that put no
// blank between two words are left out.
QList<Range> wordsToSpell(QStringView text);

// What a spelling dictionary is made of.
struct SpellFiles
{
    QString rules, words; // full paths, .aff and .dic

    bool operator==(const SpellFiles &) const = default;
};
// The dictionary for a language: that of the person's own country, else of the country that comes first to
// mind, else any. Of two folders the first counts. Empty paths where there is none.
SpellFiles spellFilesFor(QLocale::Language language, const QStringList &folders);

} // namespace quillmere
