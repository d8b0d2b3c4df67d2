#pragma once

#include <QHash>
#include <QMutex>
#include <QSize>
#include <QString>

namespace quillmere {

// The pixels of picture files below a folder, once links are followed. A file is looked into again only where
// its size or its time has changed. May be asked on any thread.
class PictureSizes
{
public:
    explicit PictureSizes(const QString &themeFolder);

    // Empty for what is no picture of pixels, or lies elsewhere.
    QSize of(const QString &path);

private:
    struct Known
    {
        qint64 bytes = -1;
        qint64 changed = 0;
        QSize size;
    };

    QString m_root; // with a "/" behind it
    QMutex m_mutex; // of what is known
    QHash<QString, Known> m_known;
};

} // namespace quillmere
