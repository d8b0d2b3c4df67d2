#include "files/RegularFile.h"

#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quillmere {

namespace {

constexpr qint64 kPortion = 1 << 20;      // bytes
constexpr qint64 kLeastPortion = 1 << 12; // where the file holds more than it says

QString notRegular()
{
    return QStringLiteral("it is not a regular file");
}

QString tooLarge(qint64 most)
{
    return QStringLiteral("it is larger than %1 MB").arg(most / (1024 * 1024));
}

bool open(QFile &file, QString &reason)
{
#ifdef Q_OS_UNIX
    const int handle =
        ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (handle < 0) {
        reason = qt_error_string(errno);
        return false;
    }
    struct stat opened = {};
    if (::fstat(handle, &opened) != 0 || !S_ISREG(opened.st_mode)) {
        ::close(handle);
        reason = notRegular();
        return false;
    }
    if (file.open(handle, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(handle);
#else
    if (file.open(QIODevice::ReadOnly))
        return true;
#endif
    reason = file.errorString();
    return false;
}

} // namespace

std::unique_ptr<QFile> openRegular(const QString &path, qint64 most, QString &reason)
{
    const QFileInfo info(path);
    // Only to open some devices does something to them.
    if (info.exists() && !info.isFile()) {
        reason = notRegular();
        return nullptr;
    }
    auto file = std::make_unique<QFile>(path);
    if (!open(*file, reason))
        return nullptr;
    if (file->size() > most) {
        reason = tooLarge(most);
        return nullptr;
    }
    return file;
}

QByteArray readRegular(const QString &path, qint64 most, QString &reason, const Progress &progress)
{
    const std::unique_ptr<QFile> file = openRegular(path, most, reason);
    if (!file)
        return {};
    const qint64 size = file->size();
    QByteArray bytes;
    bytes.reserve(size);
    // Some files of the system, and those that somebody writes to just now, hold more than they say.
    for (QByteArray portion; bytes.size() <= most; bytes += portion) {
        // No more than is expected: memory for a portion is taken before it is known what there is. And never
        // a few bytes up to the limit: some files of the system give whole entries only.
        portion = file->read(std::clamp(size - bytes.size(), kLeastPortion, kPortion));
        if (portion.isEmpty())
            break;
        tell(progress, bytes.size(), size);
    }
    if (file->error() != QFileDevice::NoError)
        reason = file->errorString();
    else if (bytes.size() > most)
        reason = tooLarge(most);
    return reason.isEmpty() ? bytes : QByteArray();
}

} // namespace quillmere
