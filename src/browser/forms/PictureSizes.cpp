#include "browser/forms/PictureSizes.h"

#include "browser/PictureFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>

namespace quillmere {

PictureSizes::PictureSizes(const QString &themeFolder)
    : m_root(QFileInfo(themeFolder).canonicalFilePath() + u'/')
{
}

QSize PictureSizes::of(const QString &path)
{
    const QFileInfo info(path);
    const qint64 bytes = info.size(), changed = info.lastModified().toMSecsSinceEpoch();
    {
        const QMutexLocker lock(&m_mutex);
        const auto known = m_known.constFind(path);
        if (known != m_known.cend() && known->bytes == bytes && known->changed == changed)
            return known->size;
    }
    const QString real = info.canonicalFilePath();
    QSize size;
    if (m_root.size() > 1 && real.startsWith(m_root)) {
        const std::unique_ptr<QFile> file = openPicture(real);
        const QByteArray format = file ? pixelFormat(*file) : QByteArray();
        if (!format.isEmpty())
            size = QImageReader(file.get(), format).size();
    }
    const QMutexLocker lock(&m_mutex);
    m_known.insert(path, {bytes, changed, size});
    return size;
}

} // namespace quillmere
