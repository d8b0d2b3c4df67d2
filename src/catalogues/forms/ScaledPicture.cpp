#include "catalogues/forms/ScaledPicture.h"

#include "browser/PictureFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>
#include <QPainter>

namespace quillmere {

namespace {

const QColor kLightSquare(0xCC, 0xCC, 0xCC);
const QColor kDarkSquare(0x99, 0x99, 0x99);

} // namespace

ScaledPicture readScaled(QIODevice &file, QSize room)
{
    ScaledPicture picture;
    picture.bytes = file.size();
    const QByteArray format = pixelFormat(file);
    if (format.isEmpty())
        return picture;
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    picture.size = reader.size();
    // Large pictures are scaled while they are read, where the format can.
    if (picture.size.isValid() &&
        (picture.size.width() > room.width() || picture.size.height() > room.height()))
        reader.setScaledSize(picture.size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
    if (qint64(picture.size.width()) * picture.size.height() <= kMostPixels)
        picture.image = reader.read();
    if (!picture.size.isValid())
        picture.size = picture.image.size();
    return picture;
}

QString whyNoPicture(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const ScaledPicture read = readScaled(buffer, {1, 1});
    if (!read.image.isNull())
        return {};
    return read.size.isValid()
               ? QCoreApplication::translate("ScaledPicture", "the picture is damaged, or too large")
               : QCoreApplication::translate("ScaledPicture", "it is not a picture made of pixels");
}

void drawChequers(QPainter &painter, const QRect &place, int square)
{
    painter.save();
    painter.setClipRect(place, Qt::IntersectClip);
    for (int y = 0; y < place.height(); y += square) {
        for (int x = 0; x < place.width(); x += square)
            painter.fillRect(place.x() + x, place.y() + y, square, square,
                             (x + y) / square % 2 ? kDarkSquare : kLightSquare);
    }
    painter.restore();
}

} // namespace quillmere
