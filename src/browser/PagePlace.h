#pragma once

#include <QList>
#include <QRectF>
#include <QString>

namespace quillmere {

// Where a div of the page is. In pixels of the page as it is laid out, however it is scaled or scrolled.
struct PagePlace
{
    QString id;
    QRectF box;     // with its border; null where nothing is drawn
    QRectF visible; // what the divs around it let be seen of it
};

// Reads what placesScript() answers, in the order of the document.
QList<PagePlace> placesOf(const QString &answer);

} // namespace quillmere
