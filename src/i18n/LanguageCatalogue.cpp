#include "i18n/LanguageCatalogue.h"

#include "files/Paths.h"
#include "i18n/LanguageStrings.h"
#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

namespace {

constexpr QStringView kDots = u"...";

// True when the text goes into its file one byte a character.
bool staysOneByte(const QString &text, const Encoding &encoding)
{
    if (encoding.rule == CodePageRule::Windows1252)
        return true;
    return encoding.page == CodePage::Windows1252 &&
           pageOf(encodeText(text, encoding.page)) == CodePage::Windows1252;
}

QList<ListRows::Row> stringsOf(const QString &text)
{
    QList<ListRows::Row> strings;
    const QList<LanguageString> found = languageStrings(text);
    strings.reserve(found.size());
    for (const LanguageString &string : found) {
        const QString source = string.source.toString();
        const bool isCopy = string.translation == source; // so they share it
        strings.append({QString(), {source, isCopy ? source : string.translation.toString()}});
    }
    return strings;
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

void LoadLanguageList(ListRows &lvLang, const Document &file, const QString &languageFolder)
{
    lvLang.clear();
    QString text = file.text();
    if (text.isEmpty())
        return;
    CloseUpEquals(text);
    QList<ListRows::Row> languages;
    // What stands before the first element is no entry.
    for (QStringView piece : splitIgnoringCase(text, u"<language ").sliced(1)) {
        if (!containsIgnoringCase(piece, u"id=\""))
            continue;
        const QString name = SplitField(piece, u">", u"</", 1, 0);
        languages.append(
            {languageFolder + withOwnSeparators(name), {SplitField(piece, u"id=\"", u"\"", 1, 0), name}});
    }
    lvLang.assign(std::move(languages));
}

QString languageOf(const ListRows &lvLang, const QString &path)
{
    for (const ListRows::Row &language : lvLang.rows()) {
        if (language.text == path)
            return language.sub(1);
    }
    return {};
}

void OpenLgXml(ListRows &LvBhs, const QString &text)
{
    if (!text.isEmpty())
        LvBhs.assign(stringsOf(text));
}

void putTranslation(ListRows &LvBhs, const QString &source, const QString &translation)
{
    const auto rowOf = [&LvBhs](const QString &wanted) {
        int row = 0;
        while (row < LvBhs.count() && LvBhs.sub(row, 1) != wanted)
            ++row;
        return row;
    };
    int row = rowOf(source);
    if (row == LvBhs.count())
        row = rowOf(source.trimmed());
    if (row == LvBhs.count())
        LvBhs.add({}, {source, translation});
    else
        LvBhs.setSub(row, 2, translation);
    LvBhs.setChecked(row, true);
}

QString languageFileText(const QString &name, const ListRows &LvBhs, const Encoding &encoding)
{
    QString text = u"<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<language name=\"" +
                   name + u"\">\r\n<font>font_prog</font>\r\n";
    for (const ListRows::Row &string : LvBhs.rows())
        text += QString(u"<tran id=\"" + string.sub(1) + u"\">" + string.sub(2) + u"</tran>\r\n");
    text += u"</language>\r\n";

    // Receivers' fonts lack the ellipsis. Its three bytes are one character in a text read as UTF-8, and
    // three in a text read one byte a character. There, one character is the single byte that has to stay,
    // unless a letter from elsewhere makes the whole text UTF-8.
    if (encoding.page == CodePage::Windows1252 || encoding.rule == CodePageRule::Windows1252)
        text.replace(QStringLiteral(u"\u00E2\u20AC\u00A6"), kDots.toString());
    if (!staysOneByte(text, encoding))
        text.replace(QChar(0x2026), kDots.toString());
    text.squeeze(); // it stays in hand as long as the file is open
    return text;
}

bool LanguageFile::open(Files &files, const QString &path, const QString &theme, CodePageRule rule)
{
    document.keep(); // before the file is known as it is now
    Document file = Document::open(files, path, theme, rule);
    if (file.text().isEmpty()) {
        document.setPath(path, theme);
        return false;
    }
    // ASCII alone tells no page; the file calls itself UTF-8.
    if (file.encoding().page == CodePage::Ascii)
        file.setEncoding({CodePage::Utf8, rule});
    document.replace(file, stringsOf(file.text()));
    return true;
}

void LanguageFile::save(Files &files, const QString &name)
{
    document.save(files, asText(name));
}

QString LanguageFile::asText(const QString &name) const
{
    return languageFileText(name, document.rows(), document.encoding());
}

} // namespace quillmere
