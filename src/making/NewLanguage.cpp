#include "making/NewLanguage.h"

#include "checks/NameRules.h"
#include "files/FailedStep.h"
#include "files/FileList.h"
#include "files/Paths.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/LanguageStrings.h"
#include "markup/Matching.h"
#include "naming/Rename.h"
#include "theme/CatalogueLines.h"
#include "theme/ThemeProject.h"

#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

// Before the last tag, which closes the root; in a catalogue without one, behind the last language.
std::optional<RangeChange> entryIn(const QString &catalogue, const QString &entry)
{
    const QList<QStringView> pieces = splitExact(catalogue, u"</");
    const qsizetype end = pieces.size() > 1 ? pieces.last().indexOf(u'>') : -1;
    if (end < 0)
        return std::nullopt;
    const QStringView name = pieces.last().first(end);
    if (name.trimmed().compare(u"language", Qt::CaseInsensitive) != 0)
        return linesBefore(QString(u"</" + name + u'>'), u"<language ", catalogue, {entry});
    const qint32 behind = qint32(name.data() + name.size() + 1 - catalogue.constData());
    return RangeChange{{behind, behind}, {}, entry};
}

bool hasFont(const ThemeProject &theme, QStringView name)
{
    const QList<ListRows::Row> fonts = theme.lvFont.rows();
    return std::any_of(fonts.begin(), fonts.end(),
                       [name](const ListRows::Row &font) { return font.sub(1) == name; });
}

} // namespace

LanguageNames::LanguageNames(const ThemeProject &theme) : m_encoding(theme.languageList.encoding())
{
    const QString folder = folderOf(theme.languageList.path()).toString();
    for (const ListRows::Row &language : theme.lvLang.rows()) {
        m_ids.insert(foldedText(language.sub(1)));
        m_files.insert(foldedText(language.sub(2)));
    }
    for (const QString &file : unsortedFilesOf(findFolder(folder)))
        m_files.insert(foldedText(file));
}

QString LanguageNames::whyNot(const NewLanguage &language) const
{
    if (language.id.trimmed().isEmpty())
        return QObject::tr("Type the ID by which the catalogue knows the language.");
    for (const QString &name : {language.id, language.name}) {
        if (const QString why = whyNotName(NameKind::Language, name); !why.isEmpty())
            return why;
    }
    if (const QString why = whyNotFile(language.file); !why.isEmpty())
        return why;
    if (m_ids.contains(foldedText(language.id)))
        return QObject::tr("Another language has this ID already.");
    if (m_files.contains(foldedText(language.file)))
        return QObject::tr("A file of this name exists already.");
    if (const QString why = whyNotName(NameKind::Language, language.file); !why.isEmpty())
        return why;
    return whyNotIn(m_encoding, language.id + language.file);
}

QStringList textsOfWindows(const ThemeIndex &index)
{
    QStringList texts;
    QSet<QString> known;
    for (qint32 number = 0; number < index.files().size(); ++number) {
        const IndexedFile &file = index.files().at(number);
        if (file.role != FileRole::Window || !file.isListed)
            continue;
        for (const NamePlace &place : index.placesIn(number)) {
            if (place.kind != NameKind::String || place.isDefinition || known.contains(place.name) ||
                !needsTranslation(place.name))
                continue;
            known.insert(place.name);
            texts.append(place.name);
        }
    }
    return texts;
}

QStringList sourcesOf(const ThemeSources &sources, const QString &languageFile)
{
    QStringList texts;
    if (const auto rows = sources.rows.constFind(languageFile); rows != sources.rows.constEnd()) {
        for (const ListRows::Row &row : *rows)
            texts.append(row.sub(1));
    } else {
        const QString text = textOf(sources, {languageFile, findFile(languageFile)}).value_or(QString());
        for (const LanguageString &string : languageStrings(text))
            texts.append(string.source.toString());
    }
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

ThemeEdit newLanguage(const ThemeProject &theme, const ThemeSources &sources, const NewLanguage &language,
                      const QStringList &texts, int &leftOut)
{
    const QString catalogue = theme.languageList.path();
    const std::optional<QString> entries = textOf(sources, {catalogue, findFile(catalogue)});
    if (!entries)
        throwFailed("read", catalogue, QStringLiteral("there is no such file, or it cannot be read"));
    const QString line = u"<language id=\"" + language.id + u"\">" + language.file + u"</language>";
    const auto entry = entryIn(*entries, line);
    if (!entry)
        throwFailed("change", catalogue, QStringLiteral("it has no closing tag to put a language before"));
    QList<ListRows::Row> rows;
    leftOut = 0;
    for (const QString &text : texts) {
        // The one would end it, and the loader takes the other for the end of its tag.
        if (text.contains(u'"') || text.contains(u'>'))
            ++leftOut;
        else
            rows.append({QString(), {text, QString()}});
    }
    ListRows strings = makeStringRows();
    strings.assign(std::move(rows));
    const Encoding encoding = {CodePage::Utf8, sources.rule};
    QString content = languageFileText(language.name, strings, encoding);
    const QString font = QStringLiteral("font_prog");
    if (!hasFont(theme, font))
        content.remove(QString(u"<font>" + font + u"</font>\r\n"));
    ThemeEdit edit;
    edit.create(joinPath(findFolder(folderOf(catalogue).toString()), language.file),
                encodeText(content, encoding.page, encoding.rule));
    edit.replace(catalogue, *entries, entry->range, entry->after);
    return edit;
}

} // namespace quillmere
