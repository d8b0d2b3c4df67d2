#include "files/NewFile.h"

#include "files/WholeFile.h"

#include <QFile>

namespace quillmere {

QString writeNewFile(const QString &path, QByteArrayView bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return file.errorString();
    QString reason;
    while (reason.isEmpty() && !bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            reason = file.errorString();
        else
            bytes = bytes.sliced(written);
    }
    if (reason.isEmpty())
        reason = keptOnDisk(file);
    file.close();
    if (!reason.isEmpty())
        file.remove();
    return reason;
}

} // namespace quillmere
