#include "files/ProgramFolder.h"

#include "files/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillmere {

namespace {

const QStringList kShipped = {QStringLiteral("replace.ini"), QStringLiteral("Indonesia.txt"),
                              QStringLiteral("trans")};

} // namespace

QString findProgramFolder()
{
    const QString besideProgram = QCoreApplication::applicationDirPath();
    if (QFileInfo(besideProgram).isWritable())
        return QDir::toNativeSeparators(besideProgram);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString folder = joinPath(data, u"Quillmere");
    copyMissing(besideProgram, folder, kShipped);
    return folder;
}

void copyMissing(const QString &from, const QString &to, const QStringList &names)
{
    QDir().mkpath(to);
    for (const QString &name : names) {
        const QFileInfo source(joinPath(from, name));
        const QString target = joinPath(to, name);
        if (source.isDir()) {
            const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
            copyMissing(source.filePath(), target, QDir(source.filePath()).entryList(all));
        } else if (!QFileInfo::exists(target) && QFile::copy(source.filePath(), target)) {
            // What a package manager installs may be read-only, and this copy is there to be edited.
            QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
        }
    }
}

} // namespace quillmere
