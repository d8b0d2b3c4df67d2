#include "platform/PictureUrls.h"

#include "markup/Matching.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace quillmere {

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
    QString path = url.path(QUrl::FullyDecoded);
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
        if (stop > from)
            out += QString::fromLatin1(pictureUrl(m_page.mid(from, stop - from)).toEncoded());
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
    // Only to look whether a file of another machine is there would already tell that machine something.
    const auto isRemote = [](const QString &of) {
        return QDir::fromNativeSeparators(of).startsWith(QLatin1String("//"));
    };
    if (isRemote(path) && !isRemote(themeFolder))
        return {};
    const QString file = findFile(path);
    if (file.isEmpty() || !liesBelow(file, themeFolder))
        return {};
    const QFileInfo info(QFileInfo(file).canonicalFilePath());
    return info.isFile() && kinds.contains(info.suffix().toLower()) ? info.filePath() : QString();
}

} // namespace quillmere
