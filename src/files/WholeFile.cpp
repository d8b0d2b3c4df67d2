#include "files/WholeFile.h"

#include "files/Paths.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace quillmere {

namespace {

// Bytes. Most file systems take names of 255, those that encrypt them 143; seven are put behind the name that
// is written beside.
constexpr int kLongestName = 143 - 7;

constexpr int kMostLinks = 40; // as the system follows

// The file does not have to be there.
QString behindLinks(QString path)
{
    for (int links = 0; links < kMostLinks && QFileInfo(path).isSymLink(); ++links)
        path = QFileInfo(path).symLinkTarget();
    return path;
}

QString nameBeside(const QString &path, WholeFile::Of of)
{
    const QStringView name = fileNameOf(path);
    if (of == WholeFile::Of::One && QFile::encodeName(name.toString()).size() <= kLongestName)
        return {};
    // Nobody can have put a link of this name there.
    const QString number = QString::number(QRandomGenerator::system()->generate64(), 36);
    return QString(folderOf(path) + QStringLiteral(".unfinished-") + number);
}

} // namespace

QString makeFolder(const QString &folder)
{
    std::error_code error;
    std::filesystem::create_directories(QFileInfo(folder).filesystemAbsoluteFilePath(), error);
    return error ? qt_error_string(error.value()) : QString();
}

QString keptOnDisk([[maybe_unused]] const QFileDevice &file)
{
#ifdef Q_OS_UNIX
    // Some disks, full ones behind a network for example, refuse what was written only when they are told to
    // keep it. Committing does tell them so, and passes over the answer. Others know no such order.
    if (fsync(file.handle()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS)
        return qt_error_string(errno);
#endif
    return {};
}

WholeFile::WholeFile(const QString &path, Of of)
    : m_path(behindLinks(path)), m_beside(nameBeside(m_path, of)),
      m_file(m_beside.isEmpty() ? m_path : m_beside)
{
}

WholeFile::~WholeFile()
{
    if (m_isBeside)
        QFile::remove(m_beside);
}

QString WholeFile::open()
{
    const QFileInfo old(m_path);
    const bool exists = old.exists();
#ifdef Q_OS_UNIX
    if (exists && access(QFile::encodeName(m_path).constData(), W_OK) != 0)
        return qt_error_string(errno);
#endif
    // With a buffer, a disk that is full in the middle of it goes without a reason.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return m_file.errorString();
    if (exists && !m_beside.isEmpty())
        m_file.setPermissions(old.permissions());
    return {};
}

QString WholeFile::write(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        // A full disk takes a part first, and says why at the next attempt.
        const qint64 written = m_file.write(bytes.data(), bytes.size());
        if (written <= 0) {
            const QString reason = m_file.errorString();
            m_file.cancelWriting();
            return reason;
        }
        bytes = bytes.sliced(written);
    }
    return {};
}

QString WholeFile::flush()
{
    const QString reason = keptOnDisk(m_file);
    if (!reason.isEmpty())
        m_file.cancelWriting();
    return reason;
}

QString WholeFile::close()
{
    errno = 0;
    if (!m_file.commit())
        return m_file.error() == QFileDevice::UnspecifiedError && errno != 0 ? qt_error_string(errno)
                                                                             : m_file.errorString();
    m_isBeside = !m_beside.isEmpty();
    return {};
}

QString WholeFile::rename()
{
    if (!m_isBeside) {
        const QString reason = close();
        if (!reason.isEmpty() || !m_isBeside)
            return reason;
    }
    std::error_code error;
    std::filesystem::rename(QFileInfo(m_beside).filesystemFilePath(), QFileInfo(m_path).filesystemFilePath(),
                            error);
    m_isBeside = false;
    if (error)
        QFile::remove(m_beside);
    return error ? qt_error_string(error.value()) : QString();
}

QString WholeFile::writeAll(QByteArrayView bytes)
{
    QString reason = open();
    if (reason.isEmpty())
        reason = write(bytes);
    if (reason.isEmpty())
        reason = flush();
    return reason.isEmpty() ? rename() : reason;
}

} // namespace quillmere
