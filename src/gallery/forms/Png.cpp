#include "gallery/forms/Png.h"

#include <QBuffer>

namespace quillmere {

bool writePng(const QImage &picture, QIODevice &out)
{
    constexpr int kQuick = 75;
    return picture.save(&out, "PNG", kQuick);
}

QByteArray pngOf(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return writePng(picture, buffer) ? bytes : QByteArray();
}

} // namespace quillmere
