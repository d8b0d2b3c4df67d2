#include "platform/PictureUrls.h"

#include "markup/Matching.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

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
    static constexpr QStringView opening = u"url('";
    static constexpr QStringView closing = u"')";
    QString out;
    out.reserve(page.size() + page.size() / 8);
    qsizetype done = 0;
    for (;;) {
        const qsizetype start = indexOfIgnoringCase(page, opening, done);
        const qsizetype end = start < 0 ? -1 : indexOfExact(page, closing, start + opening.size());
        if (end < 0)
            break;
        const qsizetype from = start + opening.size();
        out += QStringView(page).mid(done, from - done);
        if (end > from)
            out += QString::fromLatin1(pictureUrl(page.mid(from, end - from)).toEncoded());
        out += closing;
        done = end + closing.size();
    }
    out += QStringView(page).mid(done);
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
