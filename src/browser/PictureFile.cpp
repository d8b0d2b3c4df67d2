#include "browser/PictureFile.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace quillmere {

namespace {

constexpr qint64 kMostBytes = 64 * 1024 * 1024;

// Opens without waiting for the other end of a pipe and without following a link in the file's place; both
// may have come there since somebody looked.
bool openPlainly(QFile &file)
{
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(file.fileName()).constData(),
                              O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    return handle >= 0 && file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
#else
    return file.open(QIODevice::ReadOnly);
#endif
}

// Whether the path still leads to the file that was opened by it.
bool isStillAt(const QFile &file, const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat opened = {}, now = {};
    return ::fstat(file.handle(), &opened) == 0 && ::lstat(QFile::encodeName(path).constData(), &now) == 0 &&
           S_ISREG(opened.st_mode) && opened.st_dev == now.st_dev && opened.st_ino == now.st_ino;
#else
    return !file.isSequential() && QFileInfo(path).isFile();
#endif
}

} // namespace

std::unique_ptr<QFile> openPicture(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!openPlainly(*file) || file->size() > kMostBytes)
        return {};
    // A folder on the way may have been changed for a link meanwhile. What still is the file at this place
    // was below the theme when it was opened, whatever happens to the path from now on.
    return QFileInfo(path).canonicalFilePath() == path && isStillAt(*file, path) ? std::move(file) : nullptr;
}

QByteArray pixelFormat(QIODevice &file)
{
    const QByteArray head = file.peek(12);
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (head.startsWith("\xff\xd8\xff"))
        return "jpeg";
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return "gif";
    if (head.startsWith("BM"))
        return "bmp";
    if (head.startsWith("RIFF") && head.sliced(8) == "WEBP")
        return "webp";
    return head.startsWith(QByteArray("\0\0\1\0", 4)) ? "ico" : QByteArray();
}

} // namespace quillmere
