#include "i18n/LanguageCatalogue.h"

#include "files/LoadedFiles.h"
#include "files/Paths.h"
#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

namespace {

constexpr QStringView kDots = u"...";

// True when the text goes into its file one byte a character.
bool staysOneByte(const QString &text, CodePage page)
{
    if (codePageRule() == CodePageRule::Windows1252)
        return true;
    return page == CodePage::Windows1252 && decodeText(encodeText(text, page)).page == CodePage::Windows1252;
}

} // namespace

ListRows makeLanguageRows()
{
    return ListRows({QString(), QStringLiteral("Nama"), QStringLiteral("Code")});
}

ListRows makeStringRows()
{
    return ListRows({QStringLiteral("No"), QStringLiteral("Source"), QStringLiteral("Translate")},
                    ListRows::Checks::Yes);
}

void LoadLanguageList(ListRows &lvLang, const QString &catalogPath, const QString &languageFolder)
{
    lvLang.clear();
    QString text = LoadForEditing(catalogPath).text;
    if (text.isEmpty())
        return;
    CloseUpEquals(text);
    QList<ListRows::Row> languages;
    // What stands before the first element is no entry.
    for (QStringView piece : splitIgnoringCase(text, u"<language ").sliced(1)) {
        if (!containsIgnoringCase(piece, u"id=\""))
            continue;
        const QString file = SplitField(piece, u">", u"</", 1, 0);
        languages.append(
            {languageFolder + withOwnSeparators(file), {SplitField(piece, u"id=\"", u"\"", 1, 0), file}});
    }
    lvLang.assign(std::move(languages));
}

void OpenLgXml(ListRows &LvBhs, const QString &text)
{
    if (text.isEmpty())
        return;
    QList<ListRows::Row> strings;
    if (containsIgnoringCase(text, u"<language name=\"")) {
        for (QStringView piece : splitIgnoringCase(text, u"<tran id=\"").sliced(1)) {
            const QString translation = SplitField(piece, u">", u"<", 1, 0);
            strings.append({QString(), {SplitField(piece, u"\"", {}, 0, 0), translation}});
        }
    }
    LvBhs.assign(std::move(strings));
}

QString languageFileText(const QString &name, const ListRows &LvBhs, CodePage page)
{
    QString text = u"<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<language name=\"" +
                   name + u"\">\r\n<font>font_prog</font>\r\n";
    for (const ListRows::Row &string : LvBhs.rows())
        text += QString(u"<tran id=\"" + string.sub(1) + u"\">" + string.sub(2) + u"</tran>\r\n");
    text += u"</language>\r\n";

    // Receivers' fonts lack the ellipsis. Its three bytes are one character in a text read as UTF-8, and
    // three in a text read one byte a character. There, one character is the single byte that has to stay,
    // unless a letter from elsewhere makes the whole text UTF-8.
    if (page == CodePage::Windows1252 || codePageRule() == CodePageRule::Windows1252)
        text.replace(QStringLiteral(u"\u00E2\u20AC\u00A6"), kDots.toString());
    if (!staysOneByte(text, page))
        text.replace(QChar(0x2026), kDots.toString());
    return text;
}

} // namespace quillmere
