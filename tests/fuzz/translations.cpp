#include "Fuzz.h"
#include "checks/TranslationText.h"
#include "i18n/SpellWords.h"

// What is mended has no fault any more, and every text is a good translation of itself. The parts are a
// source and its translation.
void fuzz(const Input &input)
{
    const QString source = input.text(0), translation = input.text(1);
    check(endsAlike(source, source) && hasSameBlanks(source, source), "ends like itself", source);
    const QString blanks = withBlanksOf(source, translation);
    check(translation.trimmed().isEmpty() || hasSameBlanks(source, blanks), "has the blanks", blanks);
    same(blanks.trimmed(), translation.trimmed(), "and the words of the translation");
    if (const QString ends = withEndOf(source, translation); !ends.isEmpty())
        check(endsAlike(source, ends), "ends like its source", ends);
    qsizetype length = 0;
    for (const QString &placeholder : placeholdersIn(source)) {
        check(source.contains(placeholder), "stands in the text", placeholder);
        length += placeholder.size();
    }
    check(length <= source.size(), "each stands in a place of its own", source);
    qint32 behind = 0;
    for (const Range &word : wordsToSpell(source)) {
        check(word.start >= behind && word.size() > 1 && word.end <= source.size(), "a word", source);
        behind = word.end;
    }
    check(lineBreaksIn(QString(source + u'\n')) == lineBreaksIn(source) + (source.endsWith(u'\r') ? 0 : 1),
          "one more", source);
}
