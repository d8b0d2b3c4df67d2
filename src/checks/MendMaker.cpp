#include "checks/MendMaker.h"

#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "theme/CatalogueLines.h"
#include "theme/ThemeConfig.h"

#include <algorithm>

namespace quillmere {

namespace {

bool beginsLine(QStringView text, qsizetype at)
{
    return at == 0 || text[at - 1] == u'\n';
}

} // namespace

Range linesAround(QStringView text, Range range)
{
    const qsizetype start = text.first(range.start).lastIndexOf(u'\n') + 1;
    const qsizetype end = text.indexOf(u'\n', range.end);
    return {qint32(start), qint32(end < 0 ? text.size() : end)};
}

QString quotedFile(const QString &path)
{
    return quoted(fileNameOf(path));
}

MendMaker::MendMaker(const Problem &given, const MendedTheme &held) : problem(given), theme(held)
{
    const QList<qint32> numbers = theme.index.numbersOf(problem.file);
    file =
        numbers.isEmpty() ? IndexedFile{problem.file, problem.file} : theme.index.files().at(numbers.first());
    // A file may have several roles; a row is one of a catalogue.
    for (const qint32 number : numbers) {
        if (problem.row >= 0 && theme.index.files().at(number).role <= FileRole::Language)
            file = theme.index.files().at(number);
    }
    text = textOf(theme.sources, file).value_or(QString());
}

MendMaker::Words MendMaker::wordsToChange(const QString &to)
{
    return {u"Change to " + quoted(to), u"Changed to " + quoted(to) + u'.'};
}

void MendMaker::changeText(const Words &words, const IndexedFile &changed, const QString &old, Range range,
                           const QString &after)
{
    Mend mend{words.title, words.done, {}, changed.found.isEmpty() ? changed.path : changed.found,
              {},          {},         -1};
    if (!mend.edit.replace(mend.file, old, range, after))
        return;
    const bool isLine = beginsLine(old, range.start);
    const Range lines = linesAround(old, range);
    if (range.isEmpty() && isLine && after.endsWith(u'\n')) {
        mend.after = after.trimmed();
    } else if (after.isEmpty() && isLine && (beginsLine(old, range.end) || range.end == old.size())) {
        mend.before = range.in(old).trimmed().toString();
    } else {
        mend.before = lines.in(old).trimmed().toString();
        mend.after = QString(old.sliced(lines.start, range.start - lines.start) + after +
                             old.sliced(range.end, lines.end - range.end))
                         .trimmed();
    }
    mends.append(mend);
}

bool MendMaker::changeCatalogue(const Words &words, const IndexedFile &changed, const QString &old,
                                Range range, const QString &after, const Rows &expected)
{
    QString read = old;
    read.replace(range.start, range.size(), after);
    if (rowsIn(changed, read) != expected)
        return false;
    const qsizetype before = mends.size();
    changeText(words, changed, old, range, after);
    return mends.size() > before;
}

bool MendMaker::addToCatalogue(const Words &words, const IndexedFile &changed, QStringView closing,
                               QStringView like, const QStringList &lines, const Rows &added)
{
    const QString old = textOf(theme.sources, changed).value_or(QString());
    const auto put = linesBefore(closing, like, old, lines);
    return put && changeCatalogue(words, changed, old, put->range, put->after, rowsIn(changed, old) + added);
}

void MendMaker::changeRows(const Words &words, const QString &catalogue, const QList<RowChange> &changes)
{
    Mend mend{words.title, words.done, {}, catalogue, {}, {}, -1};
    for (const RowChange &change : changes)
        mend.edit.changeRow(catalogue, change);
    mends.append(mend);
}

MendMaker::Rows MendMaker::rowsIn(const IndexedFile &of, const QString &content) const
{
    Rows rows;
    if (isOfConfig() && of.path == file.path) {
        for (const ConfigEntry &each : configEntries(content))
            rows.append({each.name, each.value});
        // What stands behind the last closing tag is none.
        return rows.isEmpty() ? rows : rows.first(rows.size() - 1);
    }
    for (const CatalogueEntry &each : catalogueEntries(of.role, content))
        rows.append({each.name.in(content).toString(), each.value.in(content).toString()});
    return rows;
}

const IndexedFile *MendMaker::catalogueOf(FileRole role) const
{
    const auto found = std::find_if(theme.index.files().begin(), theme.index.files().end(),
                                    [&](const IndexedFile &each) { return each.role == role; });
    return found == theme.index.files().end() ? nullptr : &*found;
}

std::optional<CatalogueEntry> MendMaker::entry() const
{
    const QList<CatalogueEntry> entries = catalogueEntries(file.role, text);
    if (problem.row < 0 || problem.row >= entries.size() ||
        entries.at(problem.row).name.in(text) != problem.name)
        return std::nullopt;
    return entries.at(problem.row);
}

bool MendMaker::isMeant(const QList<ListRows::Row> &rows) const
{
    return problem.row >= 0 && problem.row < rows.size() &&
           rows.at(problem.row).sub(1).trimmed() == problem.name.trimmed();
}

bool MendMaker::isOfConfig() const
{
    return problem.row < 0 && (problem.rule == Rule::ThemeConfig || problem.rule == Rule::LetterCase) &&
           problem.meant().isEmpty();
}

} // namespace quillmere
