#include "TextTable.h"
#include "browser/PictureFile.h"
#include "browser/PictureLookup.h"
#include "browser/PictureUrls.h"
#include "files/FileList.h"
#include "files/Paths.h"
#include "files/TestFiles.h"

#include <QAbstractItemModelTester>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void joinsAndTells()
    {
        const auto joined = [](QStringView folder, QStringView name) {
            return QDir::fromNativeSeparators(joinPath(withOwnSeparators(folder), withOwnSeparators(name)));
        };
        QCOMPARE(joined(u"/a/b\\/", u"/c"), u"/a/b/c"_s);
        QCOMPARE(joined(u"/", u"c"), u"/c"_s);
        QCOMPARE(joined(u"", u"c"), u"c"_s);
        QCOMPARE(joined(u"/a", u""), u"/a/"_s);
        QVERIFY(isThemeFolder(withOwnSeparators(u"/a/theme")));
        for (const char *path : {"/a/Theme", "/a/mytheme", "/theme/a", "/a/theme/", "theme"})
            QVERIFY2(!isThemeFolder(withOwnSeparators(QString::fromLatin1(path))), path);
    }

    void finds_data()
    {
        textTable({"asked", "found"},
                  {{u"exact", u"Images/Logo.PNG", u"Images/Logo.PNG"},
                   {u"foreign separators", u"Images\\Logo.PNG", u"Images/Logo.PNG"},
                   {u"folder in other letters", u"IMAGES\\sub/..\\LOGO.png", u"Images/Sub/../Logo.PNG"},
                   {u"beginning with dots", u"images//.SUB///.HIDDEN", u"Images/.sub/.hidden"},
                   {u"missing", u"Images/none.png"},
                   {u"missing folder", u"none/Logo.PNG"},
                   {u"folder is no file", u"images/sub"},
                   {u"file is no folder", u"Images/Logo.PNG/a"},
                   {u"separator at the end", u"Images/Logo.PNG/"},
                   {u"nul", QString(u"Images/Logo.PNG"_s + QChar())},
                   {u"endless", u"a/"_s.repeated(50000)}});
    }

    void finds()
    {
        const TestFiles files({"Images/Logo.PNG", "Images/.sub/.hidden", "Images/Sub/a.xml"});
        QFETCH(QString, asked);
        QFETCH(QString, found);
        QCOMPARE(findFile(files.path(asked)), found.isEmpty() ? QString() : files.path(found));
        // The same below the current folder, where no root helps.
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(files.folder()));
        const QString relative = findFile(asked);
        QDir::setCurrent(before);
        QCOMPARE(QDir::cleanPath(relative), QDir::cleanPath(found));
    }

    void findsTheExactNameAndRegularFilesOnly()
    {
        const TestFiles files;
        const QString pipe = files.path(u"pipe.xml"_s);
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
#endif
        QCOMPARE(findFile(pipe) + findFile(u"/dev/zero"_s), QString());
        const QString large = files.write(u"A.xml"_s), small = files.write(u"a.xml"_s);
        if (filesOf(files.folder()).size() < 2)
            QSKIP("this file system takes both names for one");
        QCOMPARE(filesOf(files.folder()).join(u' '), u"A.xml a.xml"_s);
        QCOMPARE(findFile(small) + findFile(large), QString(small + large));
        QVERIFY(!FileNames().contains(files.folder(), u"A.XML"_s));
    }

    void lists()
    {
        const TestFiles files({"b.xml", "A.xml", "C.xml", ".dot", "sub/inner.xml"});
        const QString expected = u".dot A.xml b.xml C.xml"_s;
        QCOMPARE(filesOf(files.folder()).join(u' '), expected);
        QCOMPARE(filesOf(files.path(u"none"_s)) + filesOf({}), QStringList());
        FileNames names;
        QVERIFY(names.contains(files.folder(), u"A.xml"_s));
        QVERIFY(!names.contains(files.folder(), u"a.xml"_s));
        QVERIFY(!names.contains(files.folder(), u"sub"_s));
        // The folder may be written in other letters, the file's name may not.
        QVERIFY(names.contains(files.path(u"SUB/"_s), u"inner.xml"_s));

        FileList list;
        const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(list.rowCount(), 0);
        list.setPath(files.folder() + u'/');
        QCOMPARE(list.files().join(u' '), expected);
        files.write(u"d.xml"_s);
        QCOMPARE(list.rowCount(), 4);
        list.refresh();
        QCOMPARE(list.index(4).data().toString(), u"d.xml"_s);
    }

    void makesPictureUrls()
    {
        QCOMPARE(withPictureUrls(u"a url('/t/a b%20#?&\"<;\\c.png') b URL('/it's (1).png')c"_s, {}),
                 u"a url('quillmere:/t/a%20b%2520%23%3F%26%22%3C%3B/c.png') b "
                 "URL('quillmere:/it%27s%20%281%29.png')c"_s);
        QCOMPARE(withPictureUrls(u"url('') url('C:\\\u0436.png') url(a) url(\"b\") url( 'c') url('d"_s, {}),
                 u"url('') url('quillmere:/C%3A/%D0%B6.png') url(a) url(\"b\") url( 'c') url('d"_s);
        const TestFiles files({"t/a.png", "a.png"});
        const qint64 written = QFileInfo(files.path(u"t/a.png"_s)).lastModified().toMSecsSinceEpoch();
        const auto urlOf = [&](const QString &path) {
            return withPictureUrls(QString(u"url('" + files.folder() + path + u"')"), files.path(u"t/"_s));
        };
        QCOMPARE(urlOf(u"/t/a.png"_s), QString(u"url('quillmere:" + files.folder() + u"/t/a.png?" +
                                               QString::number(written) + u"')"));
        for (const QString &outside : {u"/a.png"_s, u"/t/../a.png"_s})
            QVERIFY(!urlOf(outside).contains(u'?'));
        // As it comes back from the browser.
        const QString path = withOwnSeparators(u"//s/a'b\"(c)[d]{e}&;=+@:!$,~*%41%2f#?./../\u0436\uFFFF.png");
        QCOMPARE(picturePath(QUrl::fromEncoded(pictureUrl(path).toEncoded())), path);
    }

    void admits_data()
    {
        textTable(
            {"asked", "admitted"}, // below the folder; empty for none
            {{u"picture in other letters", u"theme/Images/A B%23.PNG", u"theme/images/a b%23.png"},
             {u"suffix in capitals", u"theme/logo.JPG", u"theme/logo.JPG"},
             {u"back into the theme", u"theme/images/.././../theme/logo.JPG", u"theme/logo.JPG"},
             {u"a folder that leads around the theme", u"theme/around/theme/logo.JPG", u"theme/logo.JPG"},
             {u"by way of a folder outside", u"theme2/../theme/logo.JPG"},
             {u"link that stays", u"theme/stays.png", u"theme/logo.JPG"},
             {u"out of the theme", u"theme/../theme2/a.png"},
             {u"beside the theme", u"theme2/a.png"},
             {u"link that leaves", u"theme/leaves.png"},
             {u"folder that leaves", u"theme/other/a.png"},
             {u"link to a text", u"theme/text.png"},
             {u"link to nothing", u"theme/nothing.png"},
             {u"text", u"theme/theme.xml"},
             {u"no suffix", u"theme/png"},
             {u"a mark of byte order before the name", u"theme/\ufefflogo.JPG"},
             {u"folder", u"theme/folder.png"},
             {u"the theme itself", u"theme"}});
    }

    void admits()
    {
        const TestFiles files({"theme/images/a b%23.png", "theme/logo.JPG", "theme/theme.xml", "theme/png",
                               "theme/folder.png/inner.xml", "theme2/a.png"});
        for (const auto &[target, name] : {std::pair{"theme/logo.JPG", "theme/stays.png"},
                                           {"theme2/a.png", "theme/leaves.png"},
                                           {"theme2", "theme/other"},
                                           {"theme/theme.xml", "theme/text.png"},
                                           {"theme/none.png", "theme/nothing.png"},
                                           {"theme/..", "theme/around"},
                                           {"theme", "linked"}})
            QVERIFY(QFile::link(files.path(QLatin1String(target)), files.path(QLatin1String(name))));
        QFETCH(QString, asked);
        QFETCH(QString, admitted);
        if (!admitted.isEmpty())
            admitted = QFileInfo(files.path(admitted)).canonicalFilePath();
        const QString theme = files.path(u"theme"_s);
        QUrl url = pictureUrl(files.path(asked));
        QCOMPARE(PictureLookup(theme).admitted(url), admitted);
        QCOMPARE(PictureLookup(files.path(u"linked/"_s)).admitted(url), admitted);
        QVERIFY(admitted.isEmpty() || liesBelow(admitted, u"/"_s));
        QCOMPARE(PictureLookup({}).admitted(url), QString());
        url.setScheme(u"file"_s);
        QCOMPARE(PictureLookup(theme).admitted(url), QString());
    }

    void listsFoldersOnce()
    {
        const TestFiles files({"theme/a.png", "theme/sub/b.png", "c.png"});
        PictureLookup lookup(files.path(u"theme"_s));
        const auto ask = [&](const QString &path) { return lookup.admitted(pictureUrl(files.path(path))); };
        for (int number = 0; number < 9; ++number) {
            QVERIFY(ask(u"theme/none%1.png"_s.arg(number)).isEmpty());
            QVERIFY(ask(u"theme/SUB/none%1.png"_s.arg(number)).isEmpty());
            QVERIFY(ask(u"none%1.png"_s.arg(number)).isEmpty());
        }
        QCOMPARE(lookup.listings(), 2);
        files.write(u"theme/late.png"_s);
        QVERIFY(!ask(u"theme/late.png"_s).isEmpty());
    }

    // A drawing is none by whatever name; nor is what merely is called a picture.
    void knowsPixels()
    {
        const TestFiles files;
        QByteArray list;
        for (const QByteArray &bytes :
             {QByteArray("\x89PNG\r\n\x1a\n0000"), QByteArray("\xff\xd8\xff\xe0"), QByteArray("GIF89a"),
              QByteArray("BM00"), QByteArray("RIFF0000WEBPVP8"), QByteArray("\0\0\1\0\1", 5),
              QByteArray("<svg xmlns='http://www.w3.org/2000/svg'/>"), QByteArray("\x1f\x8b\x08"),
              QByteArray()}) {
            files.write(u"a"_s, bytes);
            QFile file(files.path(u"a"_s));
            QVERIFY(file.open(QIODevice::ReadOnly));
            list += pixelFormat(file) + ' ';
            QCOMPARE(file.readAll(), bytes);
        }
        QCOMPARE(list, QByteArray("png jpeg gif bmp webp ico    "));
    }

    void opensWhatWasAdmitted()
    {
        const TestFiles files({"theme/a.png"});
        const QString folder = QFileInfo(files.folder()).canonicalFilePath();
        QVERIFY(QFile::link(folder + u"/theme/a.png", folder + u"/theme/link.png"));
        QVERIFY(QFile::link(folder + u"/theme", folder + u"/folder"));
        QCOMPARE(::mkfifo(qPrintable(folder + u"/theme/pipe.png"), 0600), 0);
        QVERIFY(openPicture(folder + u"/theme/a.png"));
        // What may have come there since.
        for (const char *other : {"/theme/link.png", "/folder/a.png", "/theme/pipe.png", "/theme", "/none"})
            QVERIFY2(!openPicture(folder + QLatin1String(other)), other);
    }
};

QTEST_GUILESS_MAIN(TestPaths)
#include "tst_paths.moc"
