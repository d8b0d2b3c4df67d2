#include "commands/ExchangeCommand.h"

#include "commands/PictureNames.h"
#include "commands/ThemeFolder.h"
#include "files/ChosenFile.h"
#include "files/FailedStep.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/LanguageImport.h"
#include "i18n/LanguageNames.h"
#include "i18n/LanguageStrings.h"
#include "theme/StringPlaces.h"
#include "theme/ThemeConfig.h"
#include "theme/ThemeEdit.h"

#include <QTextStream>

#include <optional>

namespace quillmere {

namespace {

// The file of the language that the line names.
QString languageFileOf(Files &files, const CommandLine &line)
{
    if (const QString reason = reasonAgainst(line.theme); !reason.isEmpty())
        throw RunTimeError(reason);
    QString catalogue;
    for (const ConfigEntry &entry : configEntries(LoadFile(joinPath(line.theme, u"theme.xml")))) {
        if (entry.name == u"file_i18n") // the last one counts
            catalogue = joinPath(line.theme, u"") + withOwnSeparators(entry.value);
    }
    if (catalogue.isEmpty())
        throw RunTimeError(QStringLiteral("the theme has no languages"));
    ListRows lvLang = makeLanguageRows();
    LoadLanguageList(lvLang, Document::open(files, catalogue, line.theme), folderOf(catalogue).toString());
    QStringList names;
    for (const ListRows::Row &row : lvLang.rows()) {
        if (row.sub(1) != line.language) {
            names.append(row.sub(1));
            continue;
        }
        const QString found = findFile(row.text);
        if (found.isEmpty())
            throwFailed("read", row.text, QStringLiteral("there is no such file"));
        return found;
    }
    throw RunTimeError(QStringLiteral("the theme has no language \"%1\"; it has: %2")
                           .arg(line.language, names.join(QStringLiteral(", "))));
}

// A language file as it is, and what stands where in it.
struct OpenLanguage
{
    OpenLanguage(const QString &file) : path(file), bytes(LoadBytes(file).value_or(QByteArray()))
    {
        const DecodedText decoded = decodeText(bytes);
        text = decoded.text;
        page = decoded.page;
        places = languageStrings(text);
        if (places.isEmpty())
            throwFailed("read", path, QStringLiteral("it holds no strings"));
        for (const LanguageString &string : std::as_const(places))
            strings.append({QString(), {string.source.toString(), string.translation.toString()}});
    }

    QString path;
    QByteArray bytes;
    QString text;
    CodePage page = CodePage::Ascii;
    QList<LanguageString> places; // in the text
    QList<ListRows::Row> strings;
};

// An element that has no content but closes itself is read as if what follows it were the content.
bool closesItself(const OpenLanguage &language, qsizetype start)
{
    return QStringView(language.text).first(start).endsWith(u"/>");
}

QString reasonAgainst(const OpenLanguage &language, int row, const QString &after)
{
    const LanguageString &place = language.places[row];
    if (place.translation.isNull() || place.source.contains(u'>'))
        return QStringLiteral("the language file has no place for a translation of \"%1\"").arg(place.source);
    // Another code page would change other letters of the file, too.
    if (language.page == CodePage::Windows1252) {
        try {
            encodeText(after, language.page, CodePageRule::Windows1252);
        } catch (const RunTimeError &) {
            return QStringLiteral("the language file is in Windows-1252, which lacks letters of \"%1\"")
                .arg(after);
        }
    }
    return {};
}

// The bytes of the language with the changes, all others as they were.
QByteArray changedBytes(const OpenLanguage &language, const QList<ImportChange> &changes)
{
    const bool hasReturns = language.text.contains(QStringLiteral("\r\n"));
    QList<RangeChange> ranges;
    for (const ImportChange &change : changes) {
        const QStringView old = language.places[change.row].translation;
        Range range = {qint32(old.data() - language.text.constData()), 0};
        range.end = range.start + qint32(old.size());
        QString after = change.after;
        if (hasReturns)
            after.replace(u'\n', QStringLiteral("\r\n"));
        if (closesItself(language, range.start)) {
            range = {range.start - 2, range.start};
            after = u'>' + after + u"</tran>";
        }
        ranges.append({range, range.in(language.text).toString(), after});
    }
    const QString text = changedText(language.text, ranges);
    // ASCII alone tells no page; the file calls itself UTF-8.
    const CodePage page = language.page == CodePage::Ascii ? CodePage::Utf8 : language.page;
    const QByteArray bytes = encodeText(text, page);
    if (page == CodePage::Windows1252 && pageOf(bytes) == CodePage::Utf8)
        throwFailed("write", language.path, QStringLiteral("its letters would be read as others"));
    return bytes;
}

QString inQuotes(const QString &text)
{
    return u'"' + printable(QString(text).replace(u'\n', QStringLiteral("\\n"))) + u'"';
}

void list(QTextStream &stream, const QString &file, const QList<LineNote> &notes, QStringView kind = {})
{
    for (const LineNote &note : notes)
        stream << file << ':' << note.line << ": " << kind << printable(note.text) << '\n';
}

void listChanges(QTextStream &out, const QString &file, const QList<ImportChange> &changes)
{
    for (const ImportChange &change : changes) {
        out << file << ':' << change.line << ": ";
        switch (change.kind()) {
        case ImportChange::Kind::New:
            out << "new: " << inQuotes(change.source) << " -> " << inQuotes(change.after);
            break;
        case ImportChange::Kind::Changed:
            out << "changed: " << inQuotes(change.source) << ": " << inQuotes(change.before) << " -> "
                << inQuotes(change.after);
            break;
        case ImportChange::Kind::Gone:
            out << "gone: " << inQuotes(change.source) << ": " << inQuotes(change.before);
            break;
        }
        out << '\n';
    }
}

void sumUp(QTextStream &out, const ImportPlan &plan)
{
    int counts[3] = {};
    for (const ImportChange &change : plan.changes)
        ++counts[int(change.kind())];
    out << counts[0] << " new, " << counts[1] << " changed, " << counts[2] << " gone, "
        << plan.conflicting.size() << " conflicting, " << plan.refused.size() << " refused, "
        << plan.unknown.size() << " not in the language, " << plan.absent << " not in the file" << Qt::endl;
}

// What cannot run says why, and 2.
template <typename Command>
int ran(QTextStream &err, const QString &file, Command command)
{
    try {
        return command();
    } catch (const LineError &error) {
        err << file << ':' << error.line() << ": " << printable(error.message()) << Qt::endl;
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
    }
    return 2;
}

} // namespace

int runExport(Files &files, const CommandLine &line, QTextStream &err)
{
    return ran(err, line.out, [&] {
        const OpenLanguage language(languageFileOf(files, line));
        ThemeSources sources;
        sources.folder = line.theme;
        const std::optional<ThemeIndex> index = ThemeIndex::build(sources);
        const StringPlaces places(*index);
        ExchangeTable table;
        table.language = line.language;
        table.units =
            unitsOf(language.strings, [&places](const QString &source) { return places.of(source); });
        writeChosen(files, line.out, exchangeBytes(line.exchange, table));
        return 0;
    });
}

int runImport(Files &files, const CommandLine &line, QTextStream &out, QTextStream &err)
{
    const QString shown = printable(line.file);
    return ran(err, shown, [&] {
        const OpenLanguage language(languageFileOf(files, line));
        QString reason;
        const QByteArray bytes = readRegular(line.file, kLargestFile, reason);
        if (!reason.isEmpty())
            throwFailed("read", line.file, reason);
        const ExchangeTable table = readExchange(line.exchange, bytes);
        // There is nobody to be asked.
        if (const QString other = otherThan(line.language, table.language); !other.isEmpty())
            throwFailed("import", line.file,
                        QStringLiteral("it says it is %1, not %2").arg(other, line.language));
        const ImportPlan plan =
            planImport(language.strings, table, language.page,
                       [&](int row, const QString &after) { return reasonAgainst(language, row, after); });
        if (!line.dryRun && !plan.changes.isEmpty())
            files.saveAll({{language.path, language.bytes, changedBytes(language, plan.changes)}},
                          line.theme);
        if (line.dryRun)
            listChanges(out, shown, plan.changes);
        list(line.dryRun ? out : err, shown, plan.conflicting, u"conflicting: ");
        list(err, shown, plan.refused);
        list(err, shown, plan.unknown);
        err.flush();
        sumUp(out, plan);
        return line.dryRun && !plan.changes.isEmpty() ? 1 : 0;
    });
}

} // namespace quillmere
