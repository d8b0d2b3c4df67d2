#include "checks/MendMaker.h"
#include "checks/NameRules.h"
#include "checks/TranslationText.h"
#include "files/Paths.h"

#include <QHash>

#include <algorithm>

namespace quillmere {

namespace {

// The file of the language that the problem names.
const IndexedFile *languageFile(const MendMaker &maker)
{
    const IndexedFile *catalogue = maker.catalogueOf(FileRole::LanguageCatalogue);
    if (!catalogue)
        return nullptr;
    QString path;
    const QString text = textOf(maker.theme.sources, *catalogue).value_or(QString());
    for (const auto &[name, value] : maker.rowsIn(*catalogue, text)) {
        if (path.isEmpty() && name == maker.problem.name)
            path = folderOf(catalogue->path) + withOwnSeparators(value);
    }
    const QList<IndexedFile> &files = maker.theme.index.files();
    const auto found = std::find_if(files.begin(), files.end(), [&](const IndexedFile &file) {
        return file.role == FileRole::Language && file.isReadable && file.path == path;
    });
    return found == files.end() ? nullptr : &*found;
}

MendMaker::Rows rowsOf(const MendMaker &maker, const IndexedFile &language)
{
    if (const auto open = maker.theme.openRows(language.path)) {
        MendMaker::Rows rows;
        for (const ListRows::Row &row : *open)
            rows.append({row.sub(1), row.sub(2)});
        return rows;
    }
    return maker.rowsIn(language, textOf(maker.theme.sources, language).value_or(QString()));
}

QString counted(qsizetype rows)
{
    return rows == 1 ? QStringLiteral("a row") : QStringLiteral("%1 rows").arg(rows);
}

// What the language lacks of the window: the strings without a row, and the row to begin with.
struct Lacking
{
    QStringList strings;
    qint32 firstRow = -1;
};

Lacking lackingIn(const MendMaker &maker, const MendMaker::Rows &rows)
{
    QHash<QString, qsizetype> first;
    QSet<QString> translated;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        if (!first.contains(rows.at(row).first))
            first.insert(rows.at(row).first, row);
        if (!rows.at(row).second.trimmed().isEmpty())
            translated.insert(rows.at(row).first);
    }
    Lacking lacking;
    const Outline outline(maker.text);
    for (const FoundName &name : stringsToTranslate(namesIn(outline))) {
        const QString string = name.name.toString();
        if (translated.contains(string))
            continue;
        const bool isNew = !first.contains(string);
        if (lacking.firstRow < 0)
            lacking.firstRow = qint32(isNew ? rows.size() + lacking.strings.size() : first.value(string));
        if (isNew)
            lacking.strings.append(string);
    }
    return lacking;
}

} // namespace

// Nobody but a translator mends this for good: it gets the rows, empty, and leads to the first of them.
void addTranslations(MendMaker &maker)
{
    const IndexedFile *language = languageFile(maker);
    if (!language)
        return;
    const MendMaker::Rows rows = rowsOf(maker, *language);
    const Lacking lacking = lackingIn(maker, rows);
    if (lacking.firstRow < 0)
        return;
    const QString to = quotedFile(language->path);
    const QString count = counted(lacking.strings.size());
    const MendMaker::Words words = {u"Add " + count + u" to " + to + u" and go there",
                                    u"Added " + count + u" to " + to + u". Type the translation."};
    if (lacking.strings.isEmpty()) {
        maker.changeRows({u"Translate in " + to, QStringLiteral("Type the translation.")}, language->path,
                         {});
    } else if (maker.theme.openRows(language->path)) {
        QList<RowChange> changes;
        for (const QString &string : lacking.strings)
            changes.append(
                {int(rows.size() + changes.size()), std::nullopt, ListRows::Row{{}, {string, QString()}}});
        maker.changeRows(words, language->path, changes);
    } else {
        QStringList lines;
        MendMaker::Rows added;
        for (const QString &string : lacking.strings) {
            lines.append(u"<tran id=\"" + string + u"\"></tran>");
            added.append({string, QString()});
        }
        if (!maker.addToCatalogue(words, *language, u"</language>", u"<tran ", lines, added))
            return;
    }
    maker.mends.last().file = language->path;
    maker.mends.last().row = lacking.firstRow;
}

void mendTranslation(MendMaker &maker)
{
    const qint32 row = maker.problem.row;
    MendMaker::Rows rows = rowsOf(maker, maker.file);
    if (row < 0 || row >= rows.size() || rows.at(row).first.trimmed() != maker.problem.name.trimmed())
        return;
    auto &[source, translation] = rows[row];
    const QString after = maker.problem.rule == Rule::BlankEnds ? withBlanksOf(source, translation)
                                                                : withEndOf(source, translation);
    if (after.isEmpty() || after == translation)
        return;
    translation = after;
    if (const auto open = maker.theme.openRows(maker.file.path)) {
        ListRows::Row changed = open->at(row);
        changed.subItems[1] = after;
        maker.changeRows(MendMaker::wordsToChange(after), maker.file.path, {{row, open->at(row), changed}});
    } else if (const auto entry = maker.entry()) {
        maker.changeCatalogue(MendMaker::wordsToChange(after), maker.file, maker.text, entry->value, after,
                              rows);
    }
}

} // namespace quillmere
