#include "checks/MendMaker.h"
#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "theme/NearestNames.h"
#include "theme/ThemeConfig.h"

#include <QDir>

#include <algorithm>

namespace quillmere {

namespace {

const QString kDocumentSuffix = QStringLiteral(".xml");

// What names a file in a text, and the row that it is of.
struct NamingPlace
{
    Range range;
    qsizetype row = 0;
    QString folder; // that the name counts from
    QString suffix; // that is not written
};

// An entry of theme.xml.
std::optional<NamingPlace> placeInConfig(const MendMaker &maker)
{
    const QList<ConfigEntry> entries = configEntries(maker.text);
    for (qsizetype row = 0; row < entries.size(); ++row) {
        const ConfigEntry &each = entries.at(row);
        if (each.range != maker.problem.range || each.name != maker.problem.name)
            continue;
        const qsizetype start = maker.text.indexOf(u'>', each.range.start) + 1;
        const Range range = {qint32(start), qint32(start + each.value.size())};
        if (start <= 0 || range.end > each.range.end || range.in(maker.text) != each.value)
            return std::nullopt;
        return NamingPlace{range, row, joinPath(maker.theme.sources.folder, u""), {}};
    }
    return std::nullopt;
}

std::optional<NamingPlace> placeIn(const MendMaker &maker)
{
    if (maker.isOfConfig())
        return placeInConfig(maker);
    const auto entry = maker.entry();
    if (!entry)
        return std::nullopt;
    const QString folder = folderOf(maker.file.path).toString();
    if (maker.file.role == FileRole::WindowCatalogue)
        return NamingPlace{entry->name, maker.problem.row, folder, kDocumentSuffix};
    return NamingPlace{entry->value, maker.problem.row, folder, {}};
}

// The files that may be meant by a path: the one in other letters, or those with the nearest names.
QStringList meantFiles(const QString &path)
{
    const QString found = findFile(path);
    if (!found.isEmpty())
        return found == path ? QStringList() : QStringList{found};
    const QString folder = findFolder(folderOf(path).toString());
    if (folder.isEmpty() || fileNameOf(path).isEmpty())
        return {};
    QStringList files;
    for (const QString &name : nearestOf(QDir(folder).entryList(QDir::Files), fileNameOf(path)))
        files.append(joinPath(folder, name));
    return files;
}

// How a theme writes the path of a file: the folder as it stands there, in the letters and with the
// separators that it has, and the file's name. Empty where that would not lead to it.
QString written(const QString &path, const QString &old, const NamingPlace &place)
{
    const QString name = fileNameOf(path).toString();
    const QString nameBefore = fileNameOf(withOwnSeparators(old)).toString();
    const QString folderBefore = old.chopped(nameBefore.size());
    QString folder = path.chopped(name.size()).right(folderBefore.size());
    if (!name.endsWith(place.suffix) ||
        folder.compare(withOwnSeparators(folderBefore), Qt::CaseInsensitive) != 0)
        return {};
    for (qsizetype i = 0; i < folder.size(); ++i) {
        if (folder[i] == separator())
            folder[i] = folderBefore[i];
    }
    const QString value = folder + name.chopped(place.suffix.size());
    return findFile(place.folder + withOwnSeparators(value) + place.suffix) == path ? value : QString();
}

// Images are open as rows, with the whole path.
void mendOpenRow(MendMaker &maker, const QList<ListRows::Row> &rows)
{
    if (!maker.isMeant(rows) || maker.file.role != FileRole::ImageCatalogue)
        return;
    const ListRows::Row &before = rows.at(maker.problem.row);
    for (const QString &path : meantFiles(before.text)) {
        ListRows::Row row = before;
        row.text = path;
        row.subItems = {row.sub(1), QStringLiteral("Y")};
        const QString folder = folderOf(maker.file.path).toString();
        maker.changeRows(maker.wordsToChange(path.startsWith(folder) ? path.sliced(folder.size()) : path),
                         maker.file.path, {{maker.problem.row, before, row}});
    }
}

} // namespace

void mendNamedFile(MendMaker &maker)
{
    if (const auto rows = maker.theme.openRows(maker.file.path)) {
        mendOpenRow(maker, *rows);
        return;
    }
    const std::optional<NamingPlace> place = placeIn(maker);
    if (!place)
        return;
    const QString old = place->range.in(maker.text).toString();
    const MendMaker::Rows before = maker.rowsIn(maker.file, maker.text);
    for (const QString &path : meantFiles(place->folder + withOwnSeparators(old) + place->suffix)) {
        const QString value = written(path, old, *place);
        if (value.isEmpty() || place->row >= before.size())
            continue;
        MendMaker::Rows rows = before;
        const bool isWindow = maker.file.role == FileRole::WindowCatalogue && !maker.isOfConfig();
        // A document that has a row needs no second one.
        if (isWindow &&
            std::any_of(rows.begin(), rows.end(), [&](const auto &row) { return row.first == value; }))
            continue;
        (isWindow ? rows[place->row].first : rows[place->row].second) = value;
        maker.changeCatalogue(maker.wordsToChange(value), maker.file, maker.text, place->range, value, rows);
    }
}

} // namespace quillmere
