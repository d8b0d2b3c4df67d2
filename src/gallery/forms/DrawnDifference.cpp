#include "gallery/forms/DrawnDifference.h"

#include "gallery/PictureDifference.h"

#include <QPainter>

namespace quillmere {

namespace {

// On one ground, so that they can be compared.
QImage onGround(const QImage &picture, QSize size)
{
    QImage ground(size, QImage::Format_ARGB32);
    ground.fill(Qt::transparent);
    QPainter(&ground).drawImage(0, 0, picture);
    return ground;
}

} // namespace

DrawnDifference differenceOf(const QImage &before, const QImage &after)
{
    const QSize size = before.size().expandedTo(after.size());
    const QImage one = onGround(before, size), other = onGround(after, size);
    DrawnDifference difference{0, QImage(size, QImage::Format_RGB32)};
    const auto wide = size_t(size.width());
    for (int row = 0; row < size.height(); ++row)
        difference.pixels +=
            pictureDifference({reinterpret_cast<const quint32 *>(one.constScanLine(row)), wide},
                              {reinterpret_cast<const quint32 *>(other.constScanLine(row)), wide},
                              {reinterpret_cast<quint32 *>(difference.picture.scanLine(row)), wide});
    return difference;
}

} // namespace quillmere
