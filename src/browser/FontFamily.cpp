#include "browser/FontFamily.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>

namespace quillmere {

QString fontFamilyOf(const QString &path)
{
    const QFileInfo file(path);
    const QByteArray name = path.toUtf8() + QByteArray::number(file.lastModified().toMSecsSinceEpoch()) +
                            QByteArray::number(file.size());
    return u"font-" + QLatin1String(QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex());
}

} // namespace quillmere
