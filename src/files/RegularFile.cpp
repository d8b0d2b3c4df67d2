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

#ifdef Q_OS_UNIX

// -1, with the reason, where the file is not to be read.
int openHandle(const QString &path, qint64 most, qint64 &size, QString &reason)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat found = {};
    // Only to open some devices does something to them.
    if (::stat(name.constData(), &found) == 0 && !S_ISREG(found.st_mode)) {
        reason = notRegular();
        return -1;
    }
    const int handle = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (handle < 0) {
        reason = qt_error_string(errno);
        return -1;
    }
    if (::fstat(handle, &found) != 0 || !S_ISREG(found.st_mode))
        reason = notRegular();
    else if (found.st_size > most)
        reason = tooLarge(most);
    else
        size = found.st_size;
    if (reason.isEmpty())
        return handle;
    ::close(handle);
    return -1;
}

// An open file. A QFile asks the system for three times as much, which is felt with 20,000 pictures.
class Reader
{
public:
    Reader(const QString &path, qint64 most, QString &reason)
        : m_handle(openHandle(path, most, m_size, reason))
    {
    }
    ~Reader()
    {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(Reader)

    bool isOpen() const { return m_handle >= 0; }
    // Bytes, as the file says.
    qint64 size() const { return m_size; }
    // How many were read: 0 at the end, and with the reason where they cannot be.
    qint64 read(char *to, qint64 most, QString &reason)
    {
        ssize_t count = -1;
        do {
            count = ::read(m_handle, to, size_t(most));
        } while (count < 0 && errno == EINTR);
        if (count < 0)
            reason = qt_error_string(errno);
        return std::max<qint64>(count, 0);
    }

private:
    qint64 m_size = 0;
    int m_handle;
};

#else

class Reader
{
public:
    Reader(const QString &path, qint64 most, QString &reason) : m_file(openRegular(path, most, reason)) {}

    bool isOpen() const { return m_file != nullptr; }
    qint64 size() const { return m_file->size(); }
    qint64 read(char *to, qint64 most, QString &reason)
    {
        const qint64 count = m_file->read(to, most);
        if (count < 0)
            reason = m_file->errorString();
        return std::max<qint64>(count, 0);
    }

private:
    std::unique_ptr<QFile> m_file;
};

#endif

} // namespace

std::unique_ptr<QFile> openRegular(const QString &path, qint64 most, QString &reason)
{
    auto file = std::make_unique<QFile>(path);
#ifdef Q_OS_UNIX
    qint64 size = 0;
    const int handle = openHandle(path, most, size, reason);
    if (handle < 0)
        return nullptr;
    if (file->open(handle, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return file;
    ::close(handle);
#else
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        reason = notRegular();
        return nullptr;
    }
    if (file->open(QIODevice::ReadOnly)) {
        if (file->size() <= most)
            return file;
        reason = tooLarge(most);
        return nullptr;
    }
#endif
    reason = file->errorString();
    return nullptr;
}

FileState stateOf(const QString &path)
{
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(path);
    struct stat found = {};
    if (::lstat(name.constData(), &found) != 0)
        return {};
    const bool isLink = S_ISLNK(found.st_mode);
    if (isLink && ::stat(name.constData(), &found) != 0)
        return {0, 0, true};
    constexpr qint64 second = 1'000'000'000;
#ifdef Q_OS_DARWIN
    const timespec &time = found.st_mtimespec;
#else
    const timespec &time = found.st_mtim;
#endif
    return {found.st_size, qint64(time.tv_sec) * second + time.tv_nsec, isLink};
#else
    const QFileInfo info(path);
    return {info.size(), info.lastModified().toMSecsSinceEpoch(), info.isSymLink()};
#endif
}

QByteArray readRegular(const QString &path, qint64 most, QString &reason, const Progress &progress)
{
    Reader reader(path, most, reason);
    if (!reader.isOpen())
        return {};
    const qint64 size = reader.size();
    QByteArray bytes;
    bytes.reserve(size + kLeastPortion);
    // Some files of the system, and those that somebody writes to just now, hold more than they say.
    while (bytes.size() <= most) {
        // No more than is expected: memory for a portion is taken before it is known what there is. And never
        // a few bytes up to the limit: some files of the system give whole entries only.
        const qint64 done = bytes.size();
        const qint64 portion = std::clamp(size - done, kLeastPortion, kPortion);
        bytes.resize(done + portion);
        const qint64 count = reader.read(bytes.data() + done, portion, reason);
        bytes.resize(done + count);
        if (count == 0)
            break;
        tell(progress, done, size);
    }
    if (reason.isEmpty() && bytes.size() > most)
        reason = tooLarge(most);
    return reason.isEmpty() ? bytes : QByteArray();
}

} // namespace quillmere
