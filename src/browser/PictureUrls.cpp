#include "browser/PictureUrls.h"

#include "files/Paths.h"
#include "markup/Matching.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

constexpr QStringView kOpening = u"url('";

// Whether the path, as it is written, leads below the folder. What does not is not even looked at: that alone
// could tell another machine something, or wait for one.
bool reachesBelow(const QString &path, const QString &folder)
{
    if (folder.isEmpty() || path.contains(QChar(QChar::Null)))
        return false;
    const QString inner = QDir::cleanPath(QString(path).replace(u'\\', u'/'));
    const QString outer = QDir::cleanPath(QDir::fromNativeSeparators(folder)) + u'/';
    return QDir::isAbsolutePath(inner) && inner.startsWith(outer, Qt::CaseInsensitive);
}

// The browser keeps pictures by their URL; when a file was written stands in it, so that one that was changed
// is asked for anew.
QString stampedUrl(const QString &path, const QString &themeFolder)
{
    const QString url = QString::fromLatin1(pictureUrl(path).toEncoded());
    if (!reachesBelow(path, themeFolder))
        return url;
    const QFileInfo info(withOwnSeparators(path));
    return info.exists() ? QString(url + u'?' + QString::number(info.lastModified().toMSecsSinceEpoch()))
                         : url;
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

QString withPictureUrls(const QString &page, const QString &themeFolder)
{
    if (indexOfIgnoringCase(page, kOpening) < 0)
        return page;
    return PictureUrlPieces(page, themeFolder).next(page.size());
}

QString PictureUrlPieces::next(qsizetype units)
{
    static constexpr QStringView closing = u"')";
    const qsizetype end = std::min(m_done + units, m_page.size());
    QString out;
    out.reserve(units + units / 8);
    // A picture's path is never cut, and neither is what announces it.
    while (m_done < end) {
        const QStringView ahead = QStringView(m_page).first(std::min(end + kOpening.size(), m_page.size()));
        const qsizetype start = indexOfIgnoringCase(ahead, kOpening, m_done);
        const qsizetype stop =
            start < 0 || start >= end ? -1 : indexOfExact(m_page, closing, start + kOpening.size());
        if (stop < 0) {
            const qsizetype cut = start >= 0 && start < end ? m_page.size() : end;
            out += QStringView(m_page).sliced(m_done, cut - m_done);
            m_done = cut;
            break;
        }
        const qsizetype from = start + kOpening.size();
        out += QStringView(m_page).sliced(m_done, from - m_done);
        if (stop > from) {
            const QString path = m_page.mid(from, stop - from);
            QString &url = m_urls[path];
            if (url.isEmpty())
                url = stampedUrl(path, m_themeFolder);
            out += url;
        }
        out += closing;
        m_done = stop + closing.size();
    }
    return out;
}

} // namespace quillmere
