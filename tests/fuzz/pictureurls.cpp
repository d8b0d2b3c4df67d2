#include "browser/PictureUrls.h"
#include "Fuzz.h"
#include "browser/PictureLookup.h"
#include "files/Paths.h"
#include "files/TestFiles.h"

#include <QRegularExpression>

namespace {

// The picture of a URL as the person's own files are looked up, wherever the way leads.
QString literallyAdmitted(const QUrl &url, const QString &theme)
{
    const QString file =
        url.scheme() == QLatin1String(kPictureScheme) ? findFile(picturePath(url)) : QString();
    if (file.isEmpty() || picturePath(url).startsWith(u"//") || !liesBelow(file, theme))
        return {};
    const QFileInfo info(QFileInfo(file).canonicalFilePath());
    const QString kind = info.suffix().toLower();
    return kind == u"png" || kind == u"jpg" ? info.filePath() : QString();
}

} // namespace

// A path comes back from its URL; a page changes only between url(' and '), where nothing is left that could
// end the URL; and of all files only pictures of the theme are given, those that looking
// everywhere gives, but for ways that lead through other folders.
void fuzz(const Input &input)
{
    static const TestFiles files({"theme/a.png", "theme/sub/b.jpg", "theme/c.txt", "theme2/a.png", "a.png"});
    static const QString theme = QFileInfo(files.path(u"theme"_s)).canonicalFilePath();
    static const bool linked = QFile::link(files.path(u"a.png"_s), theme + u"/l.png"_s) &&
                               QFile::link(files.path(u"theme2"_s), theme + u"/d"_s);
    check(linked, "links can be made");
    const QString path = input.text(0);
    same(picturePath(pictureUrl(u'/' + path)), withOwnSeparators(QString(u'/' + path)), "path of its URL");
    for (const QUrl &url :
         {pictureUrl(theme + u'/' + path), QUrl(path), QUrl(u"quillmere:" + theme + u'/' + path)}) {
        const QString file = PictureLookup(theme).admitted(url);
        check(file.isEmpty() || file == QString(theme + u"/a.png") || file == QString(theme + u"/sub/b.jpg"),
              "a picture of the theme", file);
        const QString literally = literallyAdmitted(url, theme);
        check(file == literally || (file.isEmpty() && picturePath(url).contains(u"..")),
              "the same as by looking everywhere", QString(file + u'|' + literally));
    }

    static const QRegularExpression urls(u"(url\\(')(.*?)('\\))"_s,
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression harmless(u"^[A-Za-z0-9:/%._~-]*(\\?[0-9]+)?$"_s);
    const QString page = input.text(1), shown = withPictureUrls(page, {});
    PictureUrlPieces pieces(page, {});
    QString together;
    while (!pieces.atEnd())
        together += pieces.next(1 + (together.size() + page.size()) % 9);
    same(together, shown, "wherever a long page is cut");
    same(QString(shown).replace(urls, u"\\1\\3"_s), QString(page).replace(urls, u"\\1\\3"_s),
         "nothing but URLs changes");
    for (auto match = urls.globalMatch(shown); match.hasNext();) {
        const QString url = match.next().captured(2);
        check(harmless.match(url).hasMatch(), "a URL in one piece", url);
    }
}
