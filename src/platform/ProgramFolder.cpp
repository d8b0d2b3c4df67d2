#include "platform/ProgramFolder.h"

#include "platform/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillmere {

namespace {

QString chosenFolder;

constexpr QStringView kDictionary = u"Indonesia.txt";
constexpr QStringView kDictionaries = u"trans";

bool isFilled(const QString &folder)
{
    return QFileInfo::exists(joinPath(folder, kDictionary)) ||
           QFileInfo::exists(joinPath(folder, kDictionaries));
}

// The folder with what was shipped: that of the program, or the one beside "bin" where packages put data.
QString shippedFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    return isFilled(program) ? program : QDir::cleanPath(joinPath(program, u"../share/quillmere"));
}

// Copies may be edited, whatever the permissions of what was shipped.
void copyFile(const QString &from, const QString &to)
{
    if (QFile::copy(from, to))
        QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
}

void fill(const QString &folder)
{
    const QString shipped = shippedFolder();
    const QString dictionaries = joinPath(folder, kDictionaries);
    if (folder == shipped || isFilled(folder) || !isFilled(shipped) || !QDir().mkpath(dictionaries))
        return;
    copyFile(joinPath(shipped, kDictionary), joinPath(folder, kDictionary));
    const QDir from(joinPath(shipped, kDictionaries));
    for (const QString &name : from.entryList(QDir::Files))
        copyFile(from.filePath(name), joinPath(dictionaries, name));
}

QString defaultFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString folder = QFileInfo(program).isWritable() ? program : joinPath(data, u"Quillmere");
    fill(folder);
    return withOwnSeparators(folder);
}

} // namespace

QString programFolder()
{
    return chosenFolder.isEmpty() ? defaultFolder() : chosenFolder;
}

void setProgramFolder(const QString &folder)
{
    chosenFolder = folder;
}

} // namespace quillmere
