#include "naming/forms/PlaceRows.h"

#include "controls/ListView.h"
#include "files/Paths.h"
#include "naming/SamePlaces.h"

#include <QScrollBar>

#include <algorithm>

namespace quillmere {

namespace {
constexpr int kLineColumn = 2;
}

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

QString placesInFiles(const FoundPlaces &found, const QList<bool> &isTaken)
{
    const qsizetype taken = isTaken.count(true);
    if (taken == found.places.size())
        return placesInFiles(found);
    const QString places = QObject::tr("%1 of %2")
                               .arg(QString::number(taken), counted(found.places.size(), QObject::tr("place"),
                                                                    QObject::tr("places")));
    return taken == 0
               ? places
               : QObject::tr("%1, in %2")
                     .arg(places, counted(found.files(isTaken), QObject::tr("file"), QObject::tr("files")));
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
        const QString line = place.line.number > 0 ? QString::number(place.line.number)
                             : place.row >= 0      ? QObject::tr("row %1").arg(place.row + 1)
                                                   : QString();
        ListRows::Row row = {shown, {line, place.line.text}, place.isSure};
        if (after)
            row.subItems.append(place.line.with(*after));
        rows.append(row);
    }
    return rows;
}

void markPlaces(ListView &list, const FoundPlaces &found)
{
    list.setMarks(kLineColumn, [&found](int row) {
        if (row >= found.places.size()) // rows may go later than their places
            return TextMark();
        const LineAround &line = found.places[row].line;
        return TextMark{line.start, line.length};
    });
}

void renewRows(ListView &list, ListRows &rows, const FoundPlaces &before, const FoundPlaces &now,
               const QString &folder)
{
    if (before.marks == now.marks && before.places.size() == now.places.size())
        return; // other files have changed
    const SamePlaces same(before, now);
    QList<ListRows::Row> next = rowsOf(now, folder);
    for (int row = 0; row < rows.count(); ++row) {
        const qsizetype number = rows.isChecked(row) ? -1 : same.numberOf(row);
        if (number >= 0)
            next[number].checked = false;
    }
    const int scrolled = list.verticalScrollBar()->value(), selected = list.selectedRow();
    qsizetype current = same.numberOf(selected);
    rows.edit(std::move(next));
    if (current < 0)
        current = std::min(selected, rows.count() - 1);
    if (current >= 0 && current != list.selectedRow())
        list.setCurrentIndex(rows.index(int(current), 0));
    list.verticalScrollBar()->setValue(scrolled);
}

} // namespace quillmere
