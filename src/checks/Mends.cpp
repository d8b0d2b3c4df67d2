#include "checks/Mends.h"

#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "theme/NearestNames.h"

#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

class MendMaker
{
public:
    MendMaker(const Problem &problem, const MendedTheme &theme) : m_problem(problem), m_theme(theme)
    {
        const QList<qint32> numbers = theme.index.numbersOf(problem.file);
        m_file = numbers.isEmpty() ? IndexedFile{problem.file, problem.file}
                                   : theme.index.files().at(numbers.first());
        // A file may have several roles; a row is one of a catalogue.
        for (const qint32 number : numbers) {
            if (problem.row >= 0 && theme.index.files().at(number).role <= FileRole::Language)
                m_file = theme.index.files().at(number);
        }
        m_text = textOf(theme.sources, m_file).value_or(QString());
    }

    QList<Mend> mends()
    {
        switch (m_problem.rule) {
        case Rule::UnknownImage:
            changeName(NameKind::Image);
            addRow(FileRole::ImageCatalogue);
            break;
        case Rule::UnknownColour:
            changeName(NameKind::Colour);
            addRow(FileRole::ColourCatalogue);
            break;
        case Rule::UnknownFont:
            changeName(NameKind::Font);
            break;
        case Rule::LetterCase:
            if (!m_problem.meant.isEmpty())
                changeNameTo(m_problem.meant);
            else if (m_problem.row >= 0)
                changeFileOfRow();
            break;
        case Rule::UnusedImage:
        case Rule::UnusedColour:
        case Rule::UnusedFont:
        case Rule::UnusedString:
        case Rule::MissingImageFile:
        case Rule::MissingFontFile:
        case Rule::MissingDocument:
        case Rule::DuplicateId:
        case Rule::ThemeConfig:
            if (m_problem.row >= 0)
                takeOut();
            break;
        case Rule::UnlistedDocument:
            addDocument();
            break;
        default:
            break;
        }
        return m_mends;
    }

private:
    static QString fileName(const QString &path) { return quoted(fileNameOf(path)); }

    // The whole lines that the range stands in.
    static Range linesAround(const QString &text, Range range)
    {
        const qsizetype start = range.start > 0 ? text.lastIndexOf(u'\n', range.start - 1) + 1 : 0;
        const qsizetype end = text.indexOf(u'\n', range.end);
        return {qint32(start), qint32(end < 0 ? text.size() : end)};
    }

    void changeText(const QString &title, const IndexedFile &file, const QString &text, Range range,
                    const QString &after)
    {
        Mend mend{title, {}, file.found.isEmpty() ? file.path : file.found, {}, {}};
        if (!mend.edit.replace(mend.file, text, range, after))
            return;
        const Range lines = linesAround(text, range);
        mend.before = lines.in(text).trimmed().toString();
        mend.after = QString(text.sliced(lines.start, range.start - lines.start) + after +
                             text.sliced(range.end, lines.end - range.end))
                         .trimmed();
        m_mends.append(mend);
    }

    void changeNameTo(const QString &name)
    {
        if (m_problem.range.end <= m_text.size() && m_problem.range.in(m_text) == m_problem.name)
            changeText(u"Change to " + quoted(name), m_file, m_text, m_problem.range, name);
    }

    void changeName(NameKind kind)
    {
        for (const QString &name : nearestNames(m_theme.index, kind, m_problem.name))
            changeNameTo(name);
    }

    void changeRow(const QString &title, const QString &catalogue, const RowChange &change)
    {
        Mend mend{title, {}, catalogue, {}, {}};
        mend.edit.changeRow(catalogue, change);
        m_mends.append(mend);
    }

    const IndexedFile *catalogueOf(FileRole role) const
    {
        const auto found = std::find_if(m_theme.index.files().begin(), m_theme.index.files().end(),
                                        [&](const IndexedFile &file) { return file.role == role; });
        return found == m_theme.index.files().end() ? nullptr : &*found;
    }

    void addRow(FileRole role)
    {
        const IndexedFile *catalogue = catalogueOf(role);
        const auto rows = catalogue ? m_theme.openRows(catalogue->path) : std::nullopt;
        if (!rows)
            return;
        ListRows::Row row{{}, {m_problem.name, QStringLiteral("#000000")}};
        if (role == FileRole::ImageCatalogue) {
            const QString picture = folderOf(catalogue->path) + m_problem.name + QStringLiteral(".png");
            row = {picture, {m_problem.name, QFileInfo::exists(picture) ? QStringLiteral("Y") : QString()}};
        }
        changeRow(u"Add " + quoted(m_problem.name) + u" to " + fileName(catalogue->path), catalogue->path,
                  {int(rows->size()), std::nullopt, row});
    }

    std::optional<CatalogueEntry> entry() const
    {
        const QList<CatalogueEntry> entries = catalogueEntries(m_file.role, m_text);
        return m_problem.row < entries.size() ? std::optional(entries.at(m_problem.row)) : std::nullopt;
    }

    // Rows may have come and gone since the theme was checked.
    bool isMeant(const QList<ListRows::Row> &rows) const
    {
        return m_problem.row < rows.size() &&
               rows.at(m_problem.row).sub(1).trimmed() == m_problem.name.trimmed();
    }

    // Of a row that stands alone in its line, the line goes with it.
    void takeOut()
    {
        const QString title = u"Take " + quoted(m_problem.name) + u" out of " + fileName(m_file.path);
        if (const auto rows = m_theme.openRows(m_file.path)) {
            if (isMeant(*rows))
                changeRow(title, m_file.path, {m_problem.row, rows->at(m_problem.row), std::nullopt});
            return;
        }
        const auto found = entry();
        if (!found || found->name.in(m_text) != m_problem.name)
            return;
        const Range lines = linesAround(m_text, found->element);
        Range out = found->element;
        if (lines.in(m_text).trimmed() == found->element.in(m_text))
            out = {lines.start, std::min(lines.end + 1, qint32(m_text.size()))};
        changeText(title, m_file, m_text, out, {});
    }

    // As the disk has it, with the separators of what stands there.
    static QString inLettersOf(QStringView value, const QString &found)
    {
        QString written = found.right(value.size());
        for (qsizetype i = 0; i < written.size(); ++i) {
            if (value[i] == u'/' || value[i] == u'\\')
                written[i] = value[i];
        }
        return written;
    }

    void changeFileOfRow()
    {
        const QString title = u"Write the file of " + quoted(m_problem.name) + u" as it is on disk";
        if (const auto rows = m_theme.openRows(m_file.path)) {
            if (!isMeant(*rows) || m_file.role != FileRole::ImageCatalogue)
                return;
            ListRows::Row row = rows->at(m_problem.row);
            row.text = findFile(row.text);
            row.subItems = {row.sub(1), QStringLiteral("Y")};
            if (!row.text.isEmpty())
                changeRow(title, m_file.path, {m_problem.row, rows->at(m_problem.row), row});
            return;
        }
        const auto found = entry();
        if (!found)
            return;
        const bool isWindow = m_file.role == FileRole::WindowCatalogue;
        const QString suffix = isWindow ? QStringLiteral(".xml") : QString();
        const Range range = isWindow ? found->name : found->value;
        const QString value = range.in(m_text).toString();
        QString path = findFile(folderOf(m_file.path) + withOwnSeparators(value) + suffix);
        path.chop(suffix.size());
        const QString written = inLettersOf(value, path);
        if (written.size() == value.size() && written.compare(value, Qt::CaseInsensitive) == 0)
            changeText(title, m_file, m_text, range, written);
    }

    static qsizetype startOfBlanks(QStringView text, qsizetype end)
    {
        while (end > 0 && (text[end - 1] == u' ' || text[end - 1] == u'\t'))
            --end;
        return end;
    }

    void addDocument()
    {
        const IndexedFile *catalogue = catalogueOf(FileRole::WindowCatalogue);
        if (!catalogue)
            return;
        const QString folder = joinPath(findFolder(folderOf(catalogue->path).toString()), u"");
        const QString text = textOf(m_theme.sources, *catalogue).value_or(QString());
        const qsizetype end = text.lastIndexOf(u"</interface>", -1, Qt::CaseInsensitive);
        if (end < 0 || !m_problem.file.startsWith(folder))
            return;
        QString name = m_problem.file.sliced(folder.size()).chopped(4);
        name.replace(separator(), u'/');
        const QString ends = text.contains(u"\r\n") ? QStringLiteral("\r\n") : QStringLiteral("\n");
        const qsizetype line = startOfBlanks(text, end);
        const bool beginsLine = line == 0 || text[line - 1] == u'\n';
        const qint32 at = qint32(beginsLine ? line : end);
        const qsizetype before = text.lastIndexOf(u"<widget ", end, Qt::CaseInsensitive);
        const qsizetype blanks = before < 0 ? before : startOfBlanks(text, before);
        const QString indent = before < 0 ? QString() : text.sliced(blanks, before - blanks);
        changeText(u"Add " + quoted(name) + u" to " + fileName(catalogue->path), *catalogue, text, {at, at},
                   QString((beginsLine ? QString() : ends) + indent +
                           u"<widget class=\"window\" style=\"default\" name=\"" + name + u"\"/>" + ends));
    }

    const Problem &m_problem;
    const MendedTheme &m_theme;
    IndexedFile m_file;
    QString m_text;
    QList<Mend> m_mends;
};

} // namespace

QList<Mend> mendsFor(const Problem &problem, const MendedTheme &theme)
{
    return MendMaker(problem, theme).mends();
}

} // namespace quillmere
