#include "Failure.h"
#include "catalogues/PictureIntake.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/TestFiles.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kPng("\x89PNG\r\n\x1a\n and so on", 18), kGif("GIF89a and so on");

QString noPicture(const QByteArray &bytes)
{
    return bytes.contains("and so on") ? QString() : u"it is none"_s;
}

} // namespace

class tst_pictureintake : public QObject
{
    Q_OBJECT

private slots:
    // Whatever a name is made of: when it is admitted, the catalogue gives it back as it was.
    void admittedNamesComeBack()
    {
        const TestFiles files;
        Files disk;
        FileList file1;
        QRandomGenerator random(15);
        const QString letters = u"ab =/<>\"'\\&;.\t#%\u00e9\u0416\U0001f600-\u0085\u007f"_s;
        int admitted = 0;
        for (int i = 0; i < 2000; ++i) {
            QString name;
            for (int length = random.bounded(1, 7); length > 0; --length)
                name += letters[random.bounded(letters.size())];
            name += u".png"_s;
            if (name.contains(u'/') || !PictureIntake::nameProblem(name, {}).isEmpty())
                continue;
            ++admitted;
            ImageCatalogue saved, loaded;
            saved.rows.add(u"theme/"_s + name, {name.chopped(4), {}});
            const QString path = files.write(u"image.xml"_s, encodeText(saved.asText(), CodePage::Ascii));
            loaded.LoadImageList(Document::open(disk, path), {}, file1);
            QCOMPARE(loaded.rows.count(), 1);
            QCOMPARE(loaded.rows.text(0), saved.rows.text(0));
            QCOMPARE(loaded.rows.sub(0, 1), saved.rows.sub(0, 1));
        }
        QVERIFY(admitted > 200);
    }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("fits1252");
        QTest::addColumn<bool>("isGood");
        QTest::newRow("plain") << u"a b.PNG"_s << true << true;
        QTest::newRow("Cyrillic") << u"\u0416.png"_s << true << true;
        QTest::newRow("Cyrillic, one byte a letter") << u"\u0416.png"_s << false << false;
        QTest::newRow("a drawing") << u"a.svg"_s << true << false;
        QTest::newRow("no kind") << u"png"_s << true << false;
        QTest::newRow("no ID") << u".png"_s << true << false;
        QTest::newRow("quote") << u"it's.png"_s << true << false;
        QTest::newRow("line break") << u"a\n.png"_s << true << false;
    }

    void names()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, fits1252);
        QFETCH(const bool, isGood);
        const Encoding encoding = {CodePage::Ascii,
                                   fits1252 ? CodePageRule::Automatic : CodePageRule::Windows1252};
        QCOMPARE(PictureIntake::nameProblem(name, encoding).isEmpty(), isGood);
    }

    void replaces_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("failure"); // its end; empty where it is replaced
        QTest::newRow("same format") << u"a.png"_s << QByteArray(kPng + '2') << QString();
        QTest::newRow("other letters") << u"A.PNG"_s << QByteArray(kPng + '2') << QString();
        QTest::newRow("what the file is") << u"png.gif"_s << QByteArray(kPng + '2') << QString();
        QTest::newRow("what the name says") << u"png.gif"_s << QByteArray(kGif + '2') << QString();
        QTest::newRow("another format")
            << u"a.png"_s << kGif << u": it is a GIF picture, unlike \"a.png\"."_s;
        QTest::newRow("no picture") << u"a.png"_s << QByteArray("text") << u": it is none."_s;
        QTest::newRow("nothing there") << u"b.png"_s << kPng << u": there is no such file."_s;
        QTest::newRow("outside") << u"../out.png"_s << kPng << u"out.png\"."_s;
        QTest::newRow("a link that leaves") << u"link.png"_s << kPng << u"out.png\"."_s;
    }

    void replaces()
    {
        QFETCH(const QString, path);
        QFETCH(const QByteArray, source);
        QFETCH(const QString, failure);
        const TestFiles files;
        for (const QString &name : {u"theme/a.png"_s, u"theme/png.gif"_s, u"out.png"_s})
            files.write(name, kPng);
        QVERIFY(QFile::link(files.path(u"out.png"_s), files.path(u"theme/link.png"_s)));
        Files disk;
        disk.backups().setFolder(files.path(u"backup"_s));
        const QString theme = files.path(u"theme"_s);
        const QString failed = failureOf([&] {
            replacePicture(theme + u'/' + path, files.write(u"new"_s, source), theme, disk, noPicture);
        });
        QVERIFY2(failed.endsWith(failure) && failed.isEmpty() == failure.isEmpty(), qPrintable(failed));
        QCOMPARE(files.read(u"out.png"_s), kPng);
        const QList<Version> versions = disk.backups().versionsBelow(theme);
        QCOMPARE(versions.size(), failure.isEmpty() ? 1 : 0);
        if (failure.isEmpty())
            QCOMPARE(files.read(u"theme/"_s + (path == u"A.PNG" ? u"a.png"_s : path)), source);
    }
};

QTEST_GUILESS_MAIN(tst_pictureintake)
#include "tst_pictureintake.moc"
