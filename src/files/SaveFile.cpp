#include "files/TextFile.h"

#include "files/Backups.h"
#include "files/FailedStep.h"
#include "files/LoadedFiles.h"
#include "files/Paths.h"
#include "files/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillmere {

namespace {

CodePage pageOfFile(const QString &path)
{
    QString reason;
    const QByteArray bytes = readRegular(path, kLargestFile, reason);
    if (!reason.isEmpty())
        throwFailed("back up", path, reason);
    return pageOf(bytes);
}

QByteArray encodeFor(const QString &path, const QString &text, const Encoding &encoding)
{
    try {
        return encodeText(text, encoding.page, encoding.rule);
    } catch (const RunTimeError &error) {
        throwFailed("write", path, error.message().chopped(1));
    }
}

// A pipe or a device would swallow the bytes, and reading it for the copy could wait for ever.
void requireFile(const QString &target)
{
    const QFileInfo old(target);
    if (fileNameOf(target).isEmpty() || (old.exists() && !old.isFile()))
        throwFailed("open", target, QStringLiteral("it is not a file"));
}

// Goes to the target of a symbolic link and takes over the permissions of the old file.
void replaceFile(const QString &target, const QByteArray &bytes)
{
    const QString copy = QFileInfo::exists(target) ? backUp(target) : QString();
    const auto require = [&](const char *step, const QString &reason) {
        if (!reason.isEmpty())
            throwFailed(step, target, reason);
    };
    WholeFile file(target);
    require("open", file.open());
    require("write", file.write(bytes));
    require("write", file.flush());
    require("rename", file.rename());
    if (!copy.isEmpty())
        pruneBackups(copy);
}

} // namespace

CodePage SaveFile(const QString &path, const QString &text, std::optional<Encoding> encoding)
{
    // A link to a file that is not there yet is followed by who writes.
    const QString meant = fileToWrite(path);
    const QString target = QFileInfo(meant).isFile() ? QFileInfo(meant).canonicalFilePath() : meant;
    requireFile(target);
    if (!encoding)
        encoding = {QFileInfo::exists(target) ? pageOfFile(target) : CodePage::Ascii};
    const QByteArray bytes = encodeFor(target, text, *encoding);
    replaceFile(target, bytes);
    noteWritten(target, bytes);
    return pageOf(bytes, encoding->rule);
}

void RestoreFile(const QString &path, const QString &version)
{
    requireFile(path);
    const std::optional<QByteArray> bytes = LoadBytes(version, {}, kLargestCopied);
    if (!bytes)
        throwFailed("read", version, QStringLiteral("there is no such file, or it is not to be read"));
    // From here on the version may go, to make room for one of the file as it is.
    const QFile::Permissions permissions = QFile::permissions(version);
    const QFileInfo old(path);
    const bool existed = old.exists();
    if (const QString reason = makeFolder(old.absolutePath()); !reason.isEmpty())
        throwFailed("open", path, QStringLiteral("its folder cannot be made: ") + reason);
    replaceFile(existed ? old.canonicalFilePath() : path, *bytes);
    if (!existed)
        QFile::setPermissions(path, permissions);
}

void DeleteFile(const QString &path)
{
    // Exactly this name: what is deleted for good is never guessed at.
    if (!QFileInfo(path).isFile())
        throwFailed("back up", path, QStringLiteral("there is no such file"));
    const QString copy = backUp(path);
    QFile file(path);
    if (!file.remove())
        throwFailed("delete", path, file.errorString());
    noteWritten(path, {});
    pruneBackups(copy);
}

} // namespace quillmere
