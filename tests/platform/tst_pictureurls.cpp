#include "platform/PictureUrls.h"
#include "platform/TestFiles.h"

#include <QTest>

using namespace quillmere;

class TestPictureUrls : public QObject
{
    Q_OBJECT

private slots:
    void rewrites_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("rewritten");
        const auto row = [](const char *name, QStringView page, QStringView rewritten) {
            QTest::newRow(name) << page.toString() << rewritten.toString();
        };
        row("two in other letters", u"a url('/t/a.png') b URL('/t/B.png')c",
            u"a url('quillmere:/t/a.png') b URL('quillmere:/t/B.png')c");
        row("signs with a meaning", u"url('/t/a b%20#?&\"<;\\c.png')",
            u"url('quillmere:/t/a%20b%2520%23%3F%26%22%3C%3B/c.png')");
        row("quote and brackets", u"url('/t/it's (1).png')", u"url('quillmere:/t/it%27s%20%281%29.png')");
        row("other alphabets", u"url('/\u0436\U0001F600.png')", u"url('quillmere:/%D0%B6%F0%9F%98%80.png')");
        row("drive", u"url('C:\\t\\a.png')", u"url('quillmere:/C%3A/t/a.png')");
        row("another scheme is a path", u"url('http://h/a.png')", u"url('quillmere:/http%3A//h/a.png')");
        row("empty", u"url('') url('a')", u"url('') url('quillmere:/a')");
        row("no end", u"url('a') url('b", u"url('quillmere:/a') url('b");
        row("other ways to write it", u"url(a) url(\"b\") url( 'c')", u"url(a) url(\"b\") url( 'c')");
    }

    void rewrites()
    {
        QFETCH(QString, page);
        QTEST(withPictureUrls(page), "rewritten");
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *path :
             {"/a/b.png", "/a b/%41%2f#?.png", "/a'b\"(c)[d]{e}&;=+@:!$,~*.png", "/\xD0\xB6/\xC3\xA4.png",
              "/a/../b/./c.png", "//server/share/a.png", "/", "/a//b"})
            QTest::newRow(path) << QString::fromUtf8(path);
    }

    void roundTrip()
    {
        QFETCH(QString, path);
        const QString native = QDir::toNativeSeparators(path);
        QCOMPARE(picturePath(pictureUrl(native)), native);
        // As it comes back from the browser.
        QCOMPARE(picturePath(QUrl::fromEncoded(pictureUrl(native).toEncoded())), native);
    }

    void admits_data()
    {
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("admitted"); // below the folder; empty for none
        const auto row = [](const char *name, const char *asked, const char *admitted = "") {
            QTest::newRow(name) << QString::fromLatin1(asked) << QString::fromLatin1(admitted);
        };
        row("picture", "theme/images/a b%23.png", "theme/images/a b%23.png");
        row("picture in other letters", "theme/Images/A B%23.PNG", "theme/images/a b%23.png");
        row("suffix in capitals", "theme/logo.JPG", "theme/logo.JPG");
        row("back into the theme", "theme2/../theme/logo.JPG", "theme/logo.JPG");
        row("out of the theme", "theme/../theme2/a.png");
        row("beside the theme", "theme2/a.png");
        row("link that stays", "theme/stays.png", "theme/logo.JPG");
        row("link that leaves", "theme/leaves.png");
        row("folder that leaves", "theme/other/a.png");
        row("link to a text", "theme/text.png");
        row("link to nothing", "theme/nothing.png");
        row("text", "theme/theme.xml");
        row("no suffix", "theme/png");
        row("folder", "theme/folder.png");
    }

    void admits()
    {
        const TestFiles files;
        for (const char *name : {"theme/images/a b%23.png", "theme/logo.JPG", "theme/theme.xml", "theme/png",
                                 "theme/folder.png/inner.xml", "theme2/a.png"})
            files.write(QLatin1String(name));
        const auto link = [&files](const char *target, const char *name) {
            QVERIFY(QFile::link(files.path(QLatin1String(target)), files.path(QLatin1String(name))));
        };
        link("theme/logo.JPG", "theme/stays.png");
        link("theme2/a.png", "theme/leaves.png");
        link("theme2", "theme/other");
        link("theme/theme.xml", "theme/text.png");
        link("theme/none.png", "theme/nothing.png");
        link("theme", "linked");
        QFETCH(QString, asked);
        QFETCH(QString, admitted);
        if (!admitted.isEmpty())
            admitted = QFileInfo(files.path(admitted)).canonicalFilePath();
        QUrl url = pictureUrl(files.path(asked));
        QCOMPARE(admittedPicture(url, files.path(QStringLiteral("theme"))), admitted);
        QCOMPARE(admittedPicture(url, files.path(QStringLiteral("linked/"))), admitted);
        QCOMPARE(admittedPicture(url, {}), QString());
        url.setScheme(QStringLiteral("file"));
        QCOMPARE(admittedPicture(url, files.path(QStringLiteral("theme"))), QString());
    }
};

QTEST_APPLESS_MAIN(TestPictureUrls)
#include "tst_pictureurls.moc"
