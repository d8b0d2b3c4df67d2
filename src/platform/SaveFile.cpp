#include "platform/TextFile.h"

#include "platform/LoadedFiles.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

namespace quillmere {

namespace {

QString chosenBackupFolder;

// `step` fits behind "Cannot".
[[noreturn]] void throwFailed(const char *step, const QString &path, const QString &reason)
{
    throw RunTimeError(QStringLiteral("Cannot %1 \"%2\": %3.")
                           .arg(QLatin1String(step), QDir::toNativeSeparators(path), reason));
}

// The file that a text for `path` goes to: what LoadFile would read there, else a new file in that folder.
QString fileToWrite(const QString &path)
{
    const QString existing = findFile(path);
    if (!existing.isEmpty())
        return QFileInfo(existing).canonicalFilePath();
    // Left alone where it exists without being a regular file, or where it is a link to a file that is not
    // there yet.
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink())
        return path;
    const QString own = withOwnSeparators(path);
    const QString folder = findFolder(folderOf(own).toString());
    return folder.isEmpty() ? own : joinPath(folder, fileNameOf(own));
}

// A folder for every original folder: its whole path below the backup folder, without what cannot stand in a
// name.
QString backupFolderOf(const QFileInfo &file)
{
    QString path = file.absolutePath();
    path.remove(u':');
    while (path.startsWith(u'/'))
        path.remove(0, 1);
    return QDir(backupFolder()).filePath(path);
}

void backUp(const QString &path)
{
    const QFileInfo info(path);
    const QString folder = backupFolderOf(info);
    if (!QDir().mkpath(folder))
        throwFailed("back up", path, QStringLiteral("the folder \"%1\" cannot be made").arg(folder));
    // Two copies within one millisecond: the later one takes the next that is free.
    QDateTime time = QDateTime::currentDateTime();
    QString copy;
    do {
        copy = joinPath(folder, QString(info.fileName() + time.toString(u".yyyyMMdd-hhmmss-zzz")));
        time = time.addMSecs(1);
    } while (QFileInfo::exists(copy));
    QFile file(path);
    if (!file.copy(copy))
        throwFailed("back up", path, file.errorString());
}

CodePage pageOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throwFailed("back up", path, file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throwFailed("back up", path, file.errorString());
    return decodeText(bytes).page;
}

QByteArray encodeFor(const QString &path, const QString &text, CodePage page)
{
    try {
        return encodeText(text, page);
    } catch (const RunTimeError &error) {
        throwFailed("write", path, error.message().chopped(1));
    }
}

// Some disks, full ones behind a network for example, refuse what was written only when they are told to keep
// it. Committing does tell them so, and passes over the answer. Empty where the disk has it, or where it
// knows no such order.
QString whyNotKept(const QSaveFile &file)
{
#ifdef Q_OS_UNIX
    if (fsync(file.handle()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS)
        return qt_error_string(errno);
#else
    Q_UNUSED(file);
#endif
    return {};
}

} // namespace

void SaveFile(const QString &path, const QString &text, std::optional<CodePage> page)
{
    const QString target = fileToWrite(path);
    const QFileInfo old(target);
    // A pipe or a device would swallow the text, and reading it for the copy could wait for ever.
    if (fileNameOf(target).isEmpty() || (old.exists() && !old.isFile()))
        throwFailed("open", target, QStringLiteral("it is not a file"));
    if (!page)
        page = old.exists() ? pageOf(target) : CodePage::Ascii;
    const QByteArray bytes = encodeFor(target, text, *page);
    if (old.exists())
        backUp(target);

    // Goes to the target of a symbolic link and takes over the permissions of the old file.
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        throwFailed("open", target, file.errorString());
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    const QString reason = written ? whyNotKept(file) : file.errorString();
    if (!reason.isEmpty()) {
        file.cancelWriting();
        throwFailed("write", target, reason);
    }
    if (!file.commit())
        throwFailed("rename", target, file.errorString());
    noteWritten(target, bytes);
}

void DeleteFile(const QString &path)
{
    // Exactly this name: what is deleted for good is never guessed at.
    if (!QFileInfo(path).isFile())
        throwFailed("back up", path, QStringLiteral("there is no such file"));
    backUp(path);
    QFile file(path);
    if (!file.remove())
        throwFailed("delete", path, file.errorString());
    noteWritten(path, {});
}

QString backupFolder()
{
    if (!chosenBackupFolder.isEmpty())
        return chosenBackupFolder;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return joinPath(data, u"Quillmere/backup");
}

void setBackupFolder(const QString &folder)
{
    chosenBackupFolder = folder;
}

} // namespace quillmere
