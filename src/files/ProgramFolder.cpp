#include "files/ProgramFolder.h"

#include "files/Paths.h"
#include "files/ShippedFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace quillmere {

namespace {

const QStringList kShipped = {QStringLiteral("replace.ini"), QStringLiteral("Indonesia.txt"),
                              QStringLiteral("trans")};

bool holdsAny(const QString &folder, const QStringList &names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const QString &name) { return QFileInfo::exists(joinPath(folder, name)); });
}

} // namespace

QString findProgramFolder()
{
    const QString besideProgram = QCoreApplication::applicationDirPath();
    const QString package = packageFolder();
    // Root can write everywhere, and yet nothing of a person's belongs beside the programs of the system.
    if ((package.isEmpty() || holdsAny(besideProgram, kShipped)) && QFileInfo(besideProgram).isWritable())
        return QDir::toNativeSeparators(besideProgram);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString folder = joinPath(data, u"Quillmere");
    copyMissing(package.isEmpty() ? besideProgram : package, folder, kShipped);
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
