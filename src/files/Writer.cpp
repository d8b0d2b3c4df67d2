#include "files/Writer.h"

#include "files/Backups.h"
#include "files/FailedStep.h"
#include "files/NewFile.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <memory>
#include <vector>

namespace quillmere {

namespace {

Q_LOGGING_CATEGORY(lcFiles, "quillmere.files", QtInfoMsg)

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

void require(const char *step, const QString &path, const QString &reason)
{
    if (!reason.isEmpty())
        throwFailed(step, path, reason);
}

} // namespace

Writer::Writer(Backups &backups, Written written) : m_backups(backups), m_written(std::move(written)) {}

// Goes to the target of a symbolic link and takes over the permissions of the old file.
void Writer::replace(const QString &target, const QByteArray &bytes)
{
    const QStringList copies = QFileInfo::exists(target) ? m_backups.backUp({target}) : QStringList();
    WholeFile file(target);
    require("open", target, file.open());
    require("write", target, file.write(bytes));
    require("write", target, file.flush());
    require("rename", target, file.rename());
    m_backups.prune(copies);
}

CodePage Writer::save(const QString &path, const QString &text, std::optional<Encoding> encoding)
{
    // A link to a file that is not there yet is followed by who writes.
    const QString meant = fileToWrite(path);
    const QString target = QFileInfo(meant).isFile() ? QFileInfo(meant).canonicalFilePath() : meant;
    requireFile(target);
    if (!encoding)
        encoding = {QFileInfo::exists(target) ? pageOfFile(target) : CodePage::Ascii};
    const QByteArray bytes = encodeFor(target, text, *encoding);
    replace(target, bytes);
    qCDebug(lcFiles) << "saved" << target << bytes.size() << "bytes";
    m_written(target, bytes);
    return pageOf(bytes, encoding->rule);
}

void Writer::replaceAll(const QList<Files::Change> &files)
{
    QStringList paths;
    for (const Files::Change &file : files) {
        requireFile(file.path);
        paths.append(file.path);
    }
    const QStringList copies = m_backups.backUp(paths);
    std::vector<std::unique_ptr<WholeFile>> beside;
    for (const Files::Change &file : files) {
        auto &whole = *beside.emplace_back(std::make_unique<WholeFile>(file.path, WholeFile::Of::Many));
        require("open", file.path, whole.open());
        require("write", file.path, whole.write(file.after));
        require("write", file.path, whole.flush());
        require("write", file.path, whole.close());
    }
    for (qsizetype i = 0; i < files.size(); ++i) {
        try {
            // Getting here took a while, and other programs do not wait.
            if (LoadBytes(files[i].path) != files[i].before)
                throwFailed("change", files[i].path, QStringLiteral("it has changed in the meantime"));
            require("rename", files[i].path, beside[size_t(i)]->rename());
            m_written(files[i].path, files[i].after);
        } catch (const RunTimeError &error) {
            beside.clear();
            putBack(files, i, error.message());
            throw;
        }
    }
    m_backups.prune(copies);
}

// What another program has written since stays.
void Writer::putBack(const QList<Files::Change> &files, qsizetype count, const QString &reason)
{
    QStringList lost;
    for (qsizetype i = count; i > 0; --i) {
        const Files::Change &file = files[i - 1];
        try {
            if (LoadBytes(file.path) != file.after)
                throwFailed("change", file.path, reason);
            replace(file.path, file.before);
            m_written(file.path, file.before);
        } catch (const RunTimeError &) {
            lost.append(file.path);
        }
    }
    if (!lost.isEmpty())
        throw RunTimeError(reason + QStringLiteral(" These files were changed and could not be restored; "
                                                   "their old versions are in the backup folder: %1.")
                                        .arg(lost.join(QStringLiteral(", "))));
}

void Writer::create(const QString &path, const QByteArray &bytes)
{
    // A file of other letters would be another one here, and the same on systems that do not mind.
    if (const QString taken = findFile(path); !taken.isEmpty() || QFileInfo(path).isSymLink())
        throwFailed(
            "make", path,
            QStringLiteral("there is already a file \"%1\"").arg(fileNameOf(taken.isEmpty() ? path : taken)));
    require("make", path, writeNewFile(path, bytes));
    m_written(path, bytes);
}

void Writer::restore(const QString &path, const QString &version)
{
    requireFile(path);
    const std::optional<QByteArray> bytes = LoadBytes(version, {}, kLargestCopied);
    if (!bytes)
        throwFailed("read", version, QStringLiteral("there is no such file, or it cannot be read"));
    // From here on the version may go, to make room for one of the file as it is.
    const QFile::Permissions permissions = QFile::permissions(version);
    const QFileInfo old(path);
    const bool existed = old.exists();
    if (const QString reason = makeFolder(old.absolutePath()); !reason.isEmpty())
        throwFailed("open", path, QStringLiteral("its folder cannot be made: ") + reason);
    replace(existed ? old.canonicalFilePath() : path, *bytes);
    if (!existed)
        QFile::setPermissions(path, permissions);
}

void Writer::move(const QString &path, const QString &to)
{
    requireFile(path);
    const QFileInfo taken(to);
    const bool isItself =
        taken.canonicalFilePath() == QFileInfo(path).canonicalFilePath(); // in other letters
    if ((taken.exists() || taken.isSymLink()) && !isItself)
        throwFailed("rename", path, QStringLiteral("there is already a file \"%1\"").arg(fileNameOf(to)));
    QFile file(path);
    if (!file.rename(to))
        throwFailed("rename", path, file.errorString());
    m_written(path, {});
    m_written(to, LoadBytes(to));
}

void Writer::remove(const QString &path)
{
    // Exactly this name: what is deleted for good is never guessed at.
    if (!QFileInfo(path).isFile())
        throwFailed("back up", path, QStringLiteral("there is no such file"));
    const QStringList copies = m_backups.backUp({path});
    QFile file(path);
    if (!file.remove())
        throwFailed("delete", path, file.errorString());
    m_written(path, {});
    m_backups.prune(copies);
}

} // namespace quillmere
