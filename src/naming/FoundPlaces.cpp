#include "naming/FoundPlaces.h"

#include "files/Paths.h"
#include "outline/Outline.h"

#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

class Finder
{
public:
    Finder(const NamedThing &thing, const ThemeSources &sources, const OpenRowsAt &openRows)
        : m_thing(thing), m_sources(sources), m_openRows(openRows)
    {
    }

    // `isDefined` for the file of a window that has the name.
    void findIn(const IndexedFile &file, bool isDefined)
    {
        const std::optional<QList<ListRows::Row>> rows = m_openRows ? m_openRows(file.path) : std::nullopt;
        const std::optional<QString> text = textOf(m_sources, file);
        const FoundNames names = text ? findNames(file.role, *text) : FoundNames();
        if (rows)
            findInRows(file, *rows, names);
        if (!text)
            return;
        for (const FoundName &name : names.names) {
            // What is a row has been found in the rows.
            if (!isMeant(name) || (rows && name.row >= 0))
                continue;
            found.addText(file.path, *text, name.range, name.place.line);
            found.places.last().row = name.row;
            found.places.last().isDefinition = name.isDefinition;
        }
        if (isDefined && file.role == FileRole::Window)
            findDocument(file, *text);
    }

    void findBlocks()
    {
        const QString &file = m_thing.file;
        const std::optional<QString> text = textOf(m_sources, {file, findFile(file)});
        if (!text)
            return;
        const Outline outline(*text);
        const LineStarts lines(*text);
        for (qint32 row = 0; row < qint32(outline.blocks().size()); ++row) {
            const auto name = outline.nameAttribute(outline.blocks()[size_t(row)]);
            if (!name)
                continue;
            if (outline.at(name->value) != m_thing.name) {
                found.taken.insert(outline.at(name->value).toString());
                continue;
            }
            found.addText(file, *text, name->value, lines.placeOf(name->value.start).line);
            found.places.last().isDefinition = true;
            found.places.last().isSure = row == m_thing.blockRow;
        }
    }

    FoundPlaces found;

private:
    // A window's document is named like it, and so is its outermost block.
    void findDocument(const IndexedFile &file, const QString &text)
    {
        const QString name = fileNameOf(file.path).toString();
        const Range base = {0, qint32(name.lastIndexOf(u'.'))};
        if (base.isEmpty())
            return;
        found.places.append({FoundPlace::Of::FileName, file.path, base, base.in(name).toString(), -1,
                             lineAround(name, base, 0), true, true});
        const Outline outline(text);
        if (outline.blocks().empty())
            return;
        const auto block = outline.nameAttribute(outline.blocks().front());
        if (!block || outline.at(block->value) != base.in(name))
            return;
        found.addText(file.path, text, block->value, LineStarts(text).placeOf(block->value.start).line);
        found.places.last().isDefinition = true;
    }

    bool isMeant(const FoundName &name) const
    {
        return name.kind == m_thing.kind && name.name == m_thing.name;
    }

    // The lines are those of the file, where it has the name as often.
    void findInRows(const IndexedFile &file, const QList<ListRows::Row> &rows, const FoundNames &inFile)
    {
        QList<qint32> lines;
        for (const FoundName &name : inFile.names) {
            if (isMeant(name) && name.row >= 0)
                lines.append(name.place.line);
        }
        const QList<ListRows::Row> &all = found.rows.insert(file.path, rows).value();
        const qsizetype first = found.places.size();
        for (const FoundName &name : findNames(file.role, all).names) {
            if (!isMeant(name))
                continue;
            const QString whole = all.at(name.row).sub(1);
            const qint32 start = qint32(whole.indexOf(name.name)); // blanks may stand around it
            const Range range = {start, start + qint32(name.name.size())};
            found.places.append({FoundPlace::Of::Row, file.path, range, m_thing.name, name.row,
                                 lineAround(whole, range, 0), name.isDefinition, true});
        }
        for (qsizetype i = 0; i < lines.size() && lines.size() == found.places.size() - first; ++i)
            found.places[first + i].line.number = lines[i];
    }

    const NamedThing &m_thing;
    const ThemeSources &m_sources;
    const OpenRowsAt &m_openRows;
};

void changeRow(ThemeEdit &edit, const FoundPlaces &found, const FoundPlace &place, const QString &after)
{
    const ListRows::Row before = found.rows.value(place.file).value(place.row);
    ListRows::Row changed = before;
    if (changed.subItems.isEmpty())
        return;
    changed.subItems[0].replace(place.range.start, place.range.size(), after);
    edit.changeRow(place.file, {place.row, before, changed});
}

} // namespace

void FoundPlaces::addText(const QString &file, const QString &text, Range range, qint32 line)
{
    if (!marks.contains(file))
        marks.insert(file, ThemeEdit::markOf(text));
    FoundPlace place;
    place.file = file;
    place.range = range;
    place.text = range.in(text).toString();
    place.line = lineAround(text, range, line);
    places.append(place);
}

bool FoundPlaces::renew(const QString &file, const FoundPlaces &now)
{
    QList<qsizetype> old;
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (places[i].file == file && places[i].of == FoundPlace::Of::Text)
            old.append(i);
    }
    if (old.size() != now.places.size())
        return false;
    for (qsizetype i = 0; i < old.size(); ++i) {
        if (places[old[i]].text != now.places[i].text)
            return false;
    }
    for (qsizetype i = 0; i < old.size(); ++i)
        places[old[i]] = now.places[i];
    marks.insert(file, now.marks.value(file));
    return true;
}

qsizetype FoundPlaces::files(const QList<bool> &isTaken) const
{
    QSet<QString> seen;
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (isTaken.isEmpty() || isTaken.value(i))
            seen.insert(places[i].file);
    }
    return seen.size();
}

ThemeEdit editOf(const FoundPlaces &found, const QList<bool> &isTaken, const QString &after)
{
    ThemeEdit edit;
    QHash<QString, QList<RangeChange>> changes;
    for (qsizetype i = 0; i < found.places.size(); ++i) {
        const FoundPlace &place = found.places[i];
        if (!isTaken.value(i))
            continue;
        if (place.of == FoundPlace::Of::Row) {
            changeRow(edit, found, place, after);
        } else if (place.of == FoundPlace::Of::FileName) {
            QString name = fileNameOf(place.file).toString();
            name.replace(place.range.start, place.range.size(), after);
            edit.move(place.file, folderOf(place.file) + name);
        } else {
            changes[place.file].append({place.range, place.text, after});
        }
    }
    for (auto file = changes.begin(); file != changes.end(); ++file) {
        std::sort(file->begin(), file->end(),
                  [](const RangeChange &a, const RangeChange &b) { return a.range.start < b.range.start; });
        edit.replace(file.key(), found.marks.value(file.key()), *file);
    }
    return edit;
}

QString wordFor(std::optional<NameKind> kind)
{
    if (!kind)
        return QObject::tr("block");
    switch (*kind) {
    case NameKind::Image:
        return QObject::tr("image");
    case NameKind::Colour:
        return QObject::tr("colour");
    case NameKind::Font:
        return QObject::tr("font");
    case NameKind::String:
        return QObject::tr("string");
    case NameKind::Window:
        return QObject::tr("window");
    case NameKind::Language:
        break;
    }
    return QObject::tr("language");
}

FoundPlaces placesOf(const NamedThing &thing, const ThemeIndex &index, const ThemeSources &sources,
                     const OpenRowsAt &openRows, const Progress &progress)
{
    Finder finder(thing, sources, openRows);
    if (!thing.kind) {
        finder.findBlocks();
        return finder.found;
    }
    QSet<qint32> documents;
    QList<qint32> files;
    for (const NamePlace &place : index.definitions(*thing.kind, thing.name)) {
        files.append(place.file);
        if (place.kind == NameKind::Window)
            documents.insert(place.file);
    }
    for (const NamePlace &place : index.uses(*thing.kind, thing.name))
        files.append(place.file);
    // The index is a pause of typing behind what is open.
    for (const QString &path : sources.texts.keys() + sources.rows.keys())
        files += index.numbersOf(path);
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    for (qsizetype done = 0; done < files.size(); ++done) {
        tell(progress, done, files.size());
        finder.findIn(index.files().at(files[done]), documents.contains(files[done]));
    }
    return finder.found;
}

} // namespace quillmere
