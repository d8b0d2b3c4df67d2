#include "i18n/Dictionary.h"
#include "Fuzz.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/LiteralTranslation.h"

// Translations are filled in as line by line; what is copied and pasted stays. Strings are lines, those that
// begin with "*" are checked.
void fuzz(const Input &input)
{
    twins::Rows expected;
    for (const QString &line : input.text(0).split(u'\n'))
        expected.append(
            {QString(), {line.startsWith(u'*') ? line.mid(1) : line, line}, line.startsWith(u'*')});
    ListRows strings = makeStringRows();
    strings.assign(expected);
    QString dictionary = input.text(1);
    const int before = countStrings(strings).checked;
    const int filled = fillFromDictionary(strings, dictionary);
    if (!dictionary.contains(u"\r\n"))
        dictionary.replace(u'\n', u"\r\n"_s);
    twins::fill(expected, dictionary);
    same(rowsAsText(strings.rows()), rowsAsText(expected), "fills in");
    check(countStrings(strings).checked == before + filled, "tells how many");

    bool oneLineEach = true;
    for (const ListRows::Row &row : strings.rows())
        oneLineEach = oneLineEach && !row.sub(2).isEmpty() && !row.sub(2).contains(u'\n');
    if (oneLineEach) {
        pasteLines(strings, 0, linesToCopy(strings, 0, CopiedColumn::Trans));
        same(rowsAsText(strings.rows()), rowsAsText(expected), "pastes what it copies");
    }
    const QString pasted = input.text(2);
    const int start = input.choice(3, 4), count = strings.count();
    const int found = pasteLines(strings, start, pasted);
    check(found == std::max(0, std::min(count - start, int(pasted.isEmpty() ? 0 : pasted.count(u'\n') + 1))),
          "tells how many lines found a row", pasted);
    checkContaining(strings, pasted);
    check(!dictionaryNames({pasted}).value(0).contains(u".txt", Qt::CaseInsensitive) ||
              pasted.count(u'.') > 1,
          "names without their ending", pasted);
}
