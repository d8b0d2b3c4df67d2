#pragma once

#include <QImage>

namespace quillmere {

struct DrawnDifference
{
    qint64 pixels = 0; // how many differ
    QImage picture;    // them in red, over the first picture as a pale ground
};

// Pictures of two sizes may be compared: what only one of them has differs, whatever its colour.
DrawnDifference differenceOf(const QImage &before, const QImage &after);

} // namespace quillmere
