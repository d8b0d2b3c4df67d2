#include "Fuzz.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/LiteralTranslation.h"

// The strings are those of the slow form; what is written is read again as the same strings, but for the
// ellipsis, and sources that hold a ">".
void fuzz(const Input &input)
{
    static const TestFiles files;
    Files disk;
    const DecodedText file = decodeText(input.bytes(0));
    ListRows strings = makeStringRows();
    OpenLgXml(strings, file.text);
    same(rowsAsText(strings.rows()), rowsAsText(twins::openLgXml(file.text)), "the strings of a file");

    const QByteArray written = encodeText(languageFileText(u"N"_s, strings, {file.page}), file.page);
    bool plain = !holdsAny(file.text, u"\u2026\u00A6");
    for (const ListRows::Row &row : strings.rows())
        plain = plain && !row.sub(1).contains(u'>');
    ListRows again = makeStringRows();
    const DecodedText reread = decodeText(written);
    OpenLgXml(again, reread.text);
    if (plain) {
        same(rowsAsText(again.rows()), rowsAsText(strings.rows()), "what is written is read");
        check(encodeText(languageFileText(u"N"_s, again, {reread.page}), reread.page) == written,
              "written again the same", reread.text);
    }

    ListRows languages = makeLanguageRows();
    LoadLanguageList(languages, Document::open(disk, files.write(u"i18n.xml"_s, input.bytes(1))), u"dir/"_s);
    for (const ListRows::Row &row : languages.rows())
        same(row.text, u"dir/" + row.sub(2).replace(u'\\', u'/'), "path of a language");
}
