#include "browser/PictureUrls.h"

#include "files/Paths.h"
#include "markup/Matching.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace quillmere {

namespace {

constexpr qint64 kMostBytes = 64 * 1024 * 1024;

// Only to look whether a file of another machine is there would already tell that machine something.
bool isRemote(const QString &path)
{
    return QDir::fromNativeSeparators(path).startsWith(QLatin1String("//"));
}

// The browser keeps pictures by their URL; when a file was written stands in it, so that one that was changed
// is asked for anew.
QString stampedUrl(const QString &path)
{
    const QString url = QString::fromLatin1(pictureUrl(path).toEncoded());
    if (isRemote(path) || !QDir::isAbsolutePath(path) || path.contains(QChar(QChar::Null)))
        return url;
    const QFileInfo info(withOwnSeparators(path));
    return info.exists() ? QString(url + u'?' + QString::number(info.lastModified().toMSecsSinceEpoch()))
                         : url;
}

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

QUrl pictureUrl(const QString &path)
{
    const QString slashed = QString(path).replace(u'\\', u'/');
    const QByteArray encoded = QUrl::toPercentEncoding(slashed, "/");
    // Behind two slashes would be a host, and not the first folder of a path on the network.
    const QByteArray head = slashed.startsWith(u"//") ? "://" : slashed.startsWith(u'/') ? ":" : ":/";
    return QUrl::fromEncoded(QByteArray(kPictureScheme) + head + encoded);
}

QString picturePath(const QUrl &url)
{
    // The library decodes no letter that it takes for none, as U+FFFF; a file may have it in its name.
    QString path = QUrl::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
#ifdef Q_OS_WIN
    if (path.startsWith(u'/') && path.size() > 2 && path[2] == u':')
        path.remove(0, 1);
#endif
    return withOwnSeparators(path);
}

QString withPictureUrls(const QString &page)
{
    return PictureUrlPieces(page).next(page.size());
}

QString PictureUrlPieces::next(qsizetype units)
{
    static constexpr QStringView opening = u"url('";
    static constexpr QStringView closing = u"')";
    const qsizetype end = std::min(m_done + units, m_page.size());
    QString out;
    out.reserve(units + units / 8);
    // A picture's path is never cut, and neither is what announces it.
    while (m_done < end) {
        const QStringView ahead = QStringView(m_page).first(std::min(end + opening.size(), m_page.size()));
        const qsizetype start = indexOfIgnoringCase(ahead, opening, m_done);
        const qsizetype stop =
            start < 0 || start >= end ? -1 : indexOfExact(m_page, closing, start + opening.size());
        if (stop < 0) {
            const qsizetype cut = start >= 0 && start < end ? m_page.size() : end;
            out += QStringView(m_page).sliced(m_done, cut - m_done);
            m_done = cut;
            break;
        }
        const qsizetype from = start + opening.size();
        out += QStringView(m_page).sliced(m_done, from - m_done);
        if (stop > from) {
            const QString path = m_page.mid(from, stop - from);
            QString &url = m_urls[path];
            if (url.isEmpty())
                url = stampedUrl(path);
            out += url;
        }
        out += closing;
        m_done = stop + closing.size();
    }
    return out;
}

QString admittedPicture(const QUrl &url, const QString &themeFolder)
{
    static const QStringList kinds = {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                      QStringLiteral("gif"), QStringLiteral("bmp"), QStringLiteral("webp"),
                                      QStringLiteral("svg"), QStringLiteral("ico")};
    if (themeFolder.isEmpty() || url.scheme() != QLatin1String(kPictureScheme))
        return {};
    const QString path = picturePath(url);
    if (isRemote(path) && !isRemote(themeFolder))
        return {};
    const QString file = findFile(path);
    if (file.isEmpty() || !liesBelow(file, themeFolder))
        return {};
    const QFileInfo info(QFileInfo(file).canonicalFilePath());
    return info.isFile() && kinds.contains(info.suffix().toLower()) ? info.filePath() : QString();
}

std::unique_ptr<QFile> openPicture(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!openPlainly(*file) || file->size() > kMostBytes)
        return {};
    // A folder on the way may have been changed for a link meanwhile. What still is the file at this place
    // was below the theme when it was opened, whatever happens to the path from now on.
    return QFileInfo(path).canonicalFilePath() == path && isStillAt(*file, path) ? std::move(file) : nullptr;
}

} // namespace quillmere
