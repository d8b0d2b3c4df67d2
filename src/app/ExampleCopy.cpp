#include "app/ExampleCopy.h"

#include "files/FailedStep.h"
#include "files/NewFile.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "files/RunTimeError.h"
#include "files/ShippedFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillmere {

namespace {

constexpr auto kName = u"Quillmere Example";

QString targetFolder()
{
    return joinPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), kName);
}

// README.md, and all below `theme`. Links, as a package may have for its fonts, become files.
QList<NewFile> filesOfExample(const QString &example)
{
    QStringList names = {QStringLiteral("README.md")};
    const QDir folder(example);
    QDirIterator all(joinPath(example, u"theme"), QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext())
        names.append(folder.relativeFilePath(all.next()));
    QList<NewFile> files;
    for (const QString &name : std::as_const(names)) {
        QString reason;
        const QByteArray bytes = readRegular(folder.filePath(name), kLargestFile, reason);
        if (!reason.isEmpty())
            throw RunTimeError(QObject::tr("Cannot read %1: %2").arg(name, reason));
        files.append({name, bytes});
    }
    return files;
}

} // namespace

QString placeOfExample()
{
    return exampleFolder().isEmpty() ? QString() : joinPath(targetFolder(), u"theme");
}

QString copyOfExample(bool &isNew)
{
    const QString theme = joinPath(targetFolder(), u"theme");
    isNew = findFile(joinPath(theme, u"theme.xml")).isEmpty();
    if (isNew && QFileInfo(targetFolder()).isSymLink()) // to where nobody would look for it
        throwFailed("make", targetFolder(), QObject::tr("it is a link"));
    if (isNew)
        writeNewFolder(targetFolder(), filesOfExample(exampleFolder()));
    return theme;
}

} // namespace quillmere
