#pragma once

#include <QByteArray>
#include <QString>

namespace quillmere {

// The page of a sheet, piece by piece, as UTF-8. It asks for nothing beside itself.
QByteArray sheetBegin(const QString &title, int columns);
// `png` holds the picture; where it is empty, `reason` stands in its place.
QByteArray sheetCell(const QString &name, const QByteArray &png, const QString &reason);
QByteArray sheetEnd();

// What a comparison says of one window.
struct DifferingWindow
{
    QString name;
    QString reason;    // why it could not be compared; empty where it was
    qint64 pixels = 0; // that differ
    // Files beside the report; empty where there is none.
    QString before, after, difference;
};

// The report of a comparison of two themes, as UTF-8. `compared` counts all windows.
QByteArray comparisonReport(const QString &before, const QString &after,
                            const QList<DifferingWindow> &differing, qsizetype compared);

} // namespace quillmere
