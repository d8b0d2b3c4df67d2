#include "checks/forms/ReadPicture.h"

#include "browser/PictureFile.h"

#include <QBuffer>
#include <QImageReader>

namespace quillmere {

namespace {

// The library gives out no more memory for one picture than 128 MB. Of what is larger only the size is read.
constexpr qint64 kMostDecoded = 16 * 1024 * 1024; // pixels

} // namespace

PictureReading readPicture(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = pixelFormat(buffer);
    if (format.isEmpty())
        return {};
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (size.isEmpty())
        return {};
    const qint64 pixels = qint64(size.width()) * size.height();
    return {size, pixels <= kMostPixels && (pixels > kMostDecoded || !reader.read().isNull())};
}

} // namespace quillmere
