#pragma once

#include <QImage>

class QIODevice;
class QPainter;

namespace quillmere {

struct ScaledPicture
{
    QImage image; // null where there is nothing to see
    QSize size;   // of the picture itself, pixels; invalid where that is unknown
    qint64 bytes = 0;
};
// Reads a picture made of pixels, no larger than `room`; nothing else, whatever its name says. Qt gives out
// no more memory for one picture than its limit. May be called on any thread.
ScaledPicture readScaled(QIODevice &file, QSize room);

// Why bytes are no such picture, or one that the preview does not show: a sentence without its full stop;
// empty where they are.
QString whyNoPicture(const QByteArray &bytes);

// The ground on which transparent parts of a picture show.
void drawChequers(QPainter &painter, const QRect &place, int square);

} // namespace quillmere
