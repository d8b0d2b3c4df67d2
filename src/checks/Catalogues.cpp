#include "checks/Catalogues.h"

#include "files/Paths.h"
#include "markup/mndIni.h"
#include "outline/LineStarts.h"

namespace quillmere {

Catalogues::Catalogues(const ThemeSources &sources, const ThemeIndex &index) : m_sources(sources)
{
    for (const IndexedFile &file : index.files()) {
        if (file.role == FileRole::Language && file.isReadable)
            m_languages.append(read(file));
        else if (file.role < FileRole::Language)
            m_catalogues[size_t(file.role)] = read(file);
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

Catalogue Catalogues::read(const IndexedFile &file)
{
    Catalogue catalogue = {file, {}};
    const auto rows = m_sources.rows.constFind(file.path);
    if (rows != m_sources.rows.constEnd())
        catalogue.rows = fromRows(file, *rows);
    else
        catalogue.rows = fromText(file, quillmere::textOf(m_sources, file).value_or(QString()));
    QSet<QString> names;
    for (CatalogueRow &row : catalogue.rows) {
        row.isFirst = !names.contains(row.name);
        names.insert(row.name);
        if (!row.path.isEmpty())
            row.found = m_listings.find(row.path);
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
    const LineStarts lines(text);
    const QList<CatalogueEntry> entries = catalogueEntries(file.role, text);
    QList<CatalogueRow> rows;
    rows.reserve(entries.size());
    for (const CatalogueEntry &entry : entries) {
        CatalogueRow row;
        row.name = read(entry.name);
        row.value = read(entry.value);
        row.path = pathIn(file, file.role == FileRole::WindowCatalogue ? row.name : row.value);
        row.range = entry.name;
        row.element = entry.element;
        const LineColumn place = lines.placeOf(entry.name.isEmpty() ? entry.element.start : entry.name.start);
        row.line = place.line;
        row.column = place.column;
        row.elementPlace = lines.placeOf(entry.element.start);
        rows.append(row);
    }
    return rows;
}

QList<CatalogueRow> Catalogues::fromRows(const IndexedFile &file, const QList<ListRows::Row> &rows) const
{
    QList<CatalogueRow> result;
    for (const ListRows::Row &given : rows) {
        CatalogueRow row;
        const FoundNames names = findNames(file.role, QList<ListRows::Row>{given});
        if (!names.names.empty())
            row.name = names.names.front().name.toString();
        row.value = given.sub(2);
        row.path = file.role == FileRole::FontCatalogue ? pathIn(file, row.value)
                   : file.role == FileRole::ColourCatalogue || file.role == FileRole::Language ? QString()
                                                                                               : given.text;
        row.elementPlace = {0, 0};
        result.append(row);
    }
    return result;
}

} // namespace quillmere
