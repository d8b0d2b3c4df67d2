#include "checks/Catalogues.h"

#include "checks/Parallel.h"
#include "files/Paths.h"
#include "markup/mndIni.h"
#include "outline/LineStarts.h"

namespace quillmere {

namespace {

// What the rows of a catalogue define; of windows, what they name.
NameKind kindOf(FileRole role)
{
    switch (role) {
    case FileRole::ColourCatalogue:
        return NameKind::Colour;
    case FileRole::FontCatalogue:
        return NameKind::Font;
    case FileRole::Language:
        return NameKind::String;
    case FileRole::LanguageCatalogue:
        return NameKind::Language;
    case FileRole::WindowCatalogue:
        return NameKind::Window;
    default:
        return NameKind::Image;
    }
}

} // namespace

Catalogues::Catalogues(const ThemeSources &sources, const ThemeIndex &index, const std::stop_token &stop)
    : m_sources(sources), m_index(index)
{
    QList<IndexedFile> files;
    for (const IndexedFile &file : index.files()) {
        if (file.role < FileRole::Language)
            files.append(file);
        else if (file.role == FileRole::Language && file.isReadable)
            m_languages.append(file);
    }
    std::vector<Catalogue> catalogues(size_t(files.size()));
    inParallel(files.size(), stop, [&](qsizetype i) { catalogues[size_t(i)] = read(files.at(i)); });
    for (Catalogue &catalogue : catalogues) {
        CatalogueRow *const rows = catalogue.rows.data();
        inParallel(catalogue.rows.size(), stop, [&](qsizetype i) {
            if (!rows[i].path.isEmpty())
                rows[i].found = m_listings.find(rows[i].path);
        });
        m_catalogues[size_t(catalogue.file.role)] = std::move(catalogue);
    }
}

QString Catalogues::nameOfLanguage(const IndexedFile &file) const
{
    for (const CatalogueRow &row : of(FileRole::LanguageCatalogue).rows) {
        if (row.path == file.path || (!row.found.isEmpty() && row.found == file.found))
            return row.name;
    }
    return fileNameOf(file.path).toString();
}

Catalogue Catalogues::read(const IndexedFile &file) const
{
    Catalogue catalogue = {file, {}};
    const auto rows = m_sources.rows.constFind(file.path);
    const bool isLanguage = file.role == FileRole::Language;
    if (rows != m_sources.rows.constEnd())
        catalogue.rows = fromRows(file, *rows);
    if (rows == m_sources.rows.constEnd() || isLanguage) {
        const QString text = quillmere::textOf(m_sources, file).value_or(QString());
        if (rows == m_sources.rows.constEnd())
            catalogue.rows = fromText(file, text);
        if (isLanguage)
            catalogue.font = SplitField(text, u"<font>", u"</font>", 1, 0).trimmed();
    }
    QSet<QString> names;
    names.reserve(catalogue.rows.size());
    for (CatalogueRow &row : catalogue.rows) {
        const qsizetype before = names.size();
        names.insert(row.name);
        row.isFirst = names.size() > before;
    }
    return catalogue;
}

// Values are what their loaders make of them; a window's is its name.
QString Catalogues::pathIn(const IndexedFile &file, const QString &value) const
{
    const QString folder = folderOf(file.path).toString();
    switch (file.role) {
    case FileRole::WindowCatalogue:
        return folder + withOwnSeparators(value) + QStringLiteral(".xml");
    case FileRole::ImageCatalogue:
    case FileRole::FontCatalogue:
    case FileRole::LanguageCatalogue:
        return value.isEmpty() ? QString() : QString(folder + withOwnSeparators(value));
    default:
        return {};
    }
}

QList<CatalogueRow> Catalogues::fromText(const IndexedFile &file, const QString &text) const
{
    // Their loaders take the blanks around every "=" away.
    const bool closesUp = file.role != FileRole::WindowCatalogue && file.role != FileRole::FontCatalogue &&
                          file.role != FileRole::Language;
    const auto read = [&](Range range) {
        QString part = range.in(text).toString();
        return closesUp ? CloseUpEquals(part) : part;
    };
    const NameKind kind = kindOf(file.role);
    const LineStarts lines(text);
    const QList<CatalogueEntry> entries = catalogueEntries(file.role, text);
    QList<CatalogueRow> rows;
    rows.reserve(entries.size());
    for (const CatalogueEntry &entry : entries) {
        CatalogueRow row;
        row.name = m_index.nameOf(kind, closesUp ? read(entry.name) : entry.name.in(text));
        row.value = entry.value.in(text) == row.name && !closesUp ? row.name : read(entry.value);
        row.path = pathIn(file, file.role == FileRole::WindowCatalogue ? row.name : row.value);
        row.range = entry.name;
        row.element = entry.element;
        const LineColumn place = lines.placeOf(entry.name.isEmpty() ? entry.element.start : entry.name.start);
        row.line = place.line;
        row.column = place.column;
        row.elementPlace = lines.placeOf(entry.element.start);
        row.elementEnd = lines.placeOf(entry.element.end);
        row.end = entry.name.isEmpty() ? row.elementEnd : lines.placeOf(entry.name.end);
        rows.append(row);
    }
    return rows;
}

QList<CatalogueRow> Catalogues::fromRows(const IndexedFile &file, const QList<ListRows::Row> &rows) const
{
    const QString folder = folderOf(file.path).toString();
    QList<CatalogueRow> result;
    for (const ListRows::Row &given : rows) {
        CatalogueRow row;
        const FoundNames names = findNames(file.role, QList<ListRows::Row>{given});
        if (!names.names.empty())
            row.name = names.names.front().name.toString();
        row.value = given.sub(2);
        if (file.role == FileRole::ImageCatalogue)
            row.value = given.text.startsWith(folder) ? given.text.sliced(folder.size()) : given.text;
        row.path = file.role == FileRole::FontCatalogue ? pathIn(file, row.value)
                   : file.role == FileRole::ColourCatalogue || file.role == FileRole::Language ? QString()
                                                                                               : given.text;
        row.elementPlace = row.elementEnd = row.end = {0, 0};
        result.append(row);
    }
    return result;
}

} // namespace quillmere
