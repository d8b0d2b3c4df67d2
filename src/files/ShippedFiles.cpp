#include "files/ShippedFiles.h"

#include "files/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace quillmere {

namespace {

// The checkout that the program was built from; empty for one that has left the folder it was built in.
QString checkoutFolder()
{
    QFile cache(joinPath(QCoreApplication::applicationDirPath(), u"CMakeCache.txt"));
    if (!cache.open(QIODevice::ReadOnly))
        return {};
    const QByteArray entry = "CMAKE_HOME_DIRECTORY:INTERNAL=";
    while (!cache.atEnd()) {
        const QByteArray line = cache.readLine().trimmed();
        if (line.startsWith(entry))
            return QString::fromUtf8(line.mid(entry.size()));
    }
    return {};
}

// The first of the places that holds this file gives the folder.
QString folderWith(const QString &file, const QString &shipped, const QString &inCheckout)
{
    const QString package = packageFolder(), checkout = checkoutFolder();
    const QString places[] = {package.isEmpty() ? QString() : joinPath(package, shipped),
                              joinPath(QCoreApplication::applicationDirPath(), shipped),
                              checkout.isEmpty() ? QString() : joinPath(checkout, inCheckout)};
    for (const QString &place : places) {
        if (!place.isEmpty() && QFile::exists(joinPath(place, file)))
            return place;
    }
    return {};
}

} // namespace

QString packageFolder()
{
    const QString folder =
        QDir::cleanPath(joinPath(QCoreApplication::applicationDirPath(), u"../share/quillmere"));
    return QDir(folder).exists() ? QDir::toNativeSeparators(folder) : QString();
}

QString exampleFolder()
{
    const QString example = QStringLiteral("examples/aurora");
    return folderWith(QStringLiteral("theme/theme.xml"), example, example);
}

QString guideFolder()
{
    return folderWith(QStringLiteral("guide.md"), QStringLiteral("guide"), QStringLiteral("docs"));
}

} // namespace quillmere
