#include "naming/forms/PlaceRows.h"

#include "files/Paths.h"

namespace quillmere {

QString shownPath(const QString &path, const QString &folder)
{
    const QString above = joinPath(folder, u"");
    QString shown = path.startsWith(above) ? path.mid(above.size()) : path;
    return shownName(shown.replace(separator(), u'/'));
}

QString counted(qsizetype count, const QString &one, const QString &many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString placesInFiles(const FoundPlaces &found)
{
    return QObject::tr("%1 in %2")
        .arg(counted(found.places.size(), QObject::tr("place"), QObject::tr("places")),
             counted(found.files(), QObject::tr("file"), QObject::tr("files")));
}

QList<ListRows::Row> rowsOf(const FoundPlaces &found, const QString &folder, const QString *after)
{
    QList<ListRows::Row> rows;
    rows.reserve(found.places.size());
    QString file, shown;
    for (const FoundPlace &place : found.places) {
        if (place.file != file) {
            file = place.file;
            shown = shownPath(file, folder);
        }
        ListRows::Row row = {
            shown,
            {place.line.number > 0 ? QString::number(place.line.number) : QString(), place.line.text},
            place.isSure};
        if (after)
            row.subItems.append(place.line.with(*after));
        rows.append(row);
    }
    return rows;
}

} // namespace quillmere
