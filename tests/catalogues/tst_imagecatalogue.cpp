#include "RowsAsText.h"
#include "TextTable.h"
#include "catalogues/FontCatalogue.h"
#include "catalogues/ImageCatalogue.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TestFiles.h"
#include "files/TextFile.h"
#include "preview/PreviewPage.h"

#include <QElapsedTimer>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// One line a row: path below the folder | ID | status.
QString rowsAsText(const ListRows &rows, const QString &folder)
{
    QString text;
    for (const ListRows::Row &row : rows.rows()) {
        const QString path = row.text.startsWith(folder) ? row.text.mid(folder.size()) : row.text;
        text += QDir::fromNativeSeparators(path) + u'|' + row.sub(1) + u'|' + row.sub(2) + u'\n';
    }
    return text;
}

} // namespace

class TestImageCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void load_data()
    {
        textTable(
            {"xml", "rows"},
            {{u"blanks around the equals sign",
              u"<image id = `A` >a.png</image><image id= `B` >sub/a.png</image>",
              u"a.png|A|Y\nsub/a.png|B|Y\n"},
             {u"element in capitals", u"<IMAGE id=`A`>a.png</IMAGE>", u"a.png|A|Y\n"},
             {u"attribute in capitals", u"<image ID=`A`>a.png</image>", u"a.png||Y\n"},
             {u"no id", u"<image name=`A`>a.png</image>"},
             {u"foreign separators, twice", u"<image id=`A`>sub\\a.png</image><image id=`A`>no.png</image>",
              u"sub/a.png|A|Y\nno.png|A|\n"},
             {u"name in other letters", u"<image id=`A`>A.png</image>", u"A.png|A|\n"},
             {u"folder is no picture", u"<image id=`A`>sub</image>", u"sub|A|\n"},
             // The name is taken out of the path wherever it stands, so another folder is looked at.
             {u"name within the folder's name", u"<image id=`A`>ICONic/icon</image>", u"ICONic/icon|A|Y\n"},
             {u"no path", u"<image id=`A`></image>", u"|A|\n"},
             {u"empty", u""}});
    }

    void load()
    {
        QFETCH(QString, xml);
        QFETCH(QString, rows);
        const TestFiles files({"a.png", "sub/a.png", "ic/icon"});
        Files disk;
        const QString path = files.write(u"image.xml"_s, xml.toLatin1());
        const QString folder = files.folder() + separator();
        FileList list;
        ImageCatalogue images;
        images.LoadImageList(Document::open(disk, path), folder, list);
        QCOMPARE(rowsAsText(images.rows, folder), rows);
        QCOMPARE(images.document.path(), path);
    }

    void reload()
    {
        const TestFiles files;
        Files disk;
        files.write(u"sub/b.png"_s);
        const QString path =
            files.write(u"image.xml"_s, "<image id=\"A\">a.png</image><image id=\"B\">sub/b.png</image>");
        FileList list;
        ImageCatalogue images;
        images.LoadImageList(Document::open(disk, path), files.folder() + separator(), list);
        QCOMPARE(images.rows.count(), 2);
        QCOMPARE(list.files(), QStringList(u"b.png"_s));
        const QString missing = files.path(u"none.xml"_s);
        images.LoadImageList(Document::open(disk, missing), files.folder() + separator(), list);
        QCOMPARE(images.rows.count(), 0);
        QCOMPARE(images.document.path(), missing);
        QCOMPARE(images.GetImg(u"A"_s), QString());
    }

    void getImg()
    {
        ImageCatalogue images;
        for (const char *id : {"a", "A", "\t b\r\n", "c", " c", ""})
            images.rows.add(QString::number(images.rows.count() + 1), {QLatin1String(id)});
        QStringList found;
        for (const char *id : {"a", "A", "b", " \t\r\na \n", "a b", "c", "d", " "})
            found += images.GetImg(QLatin1String(id));
        QCOMPARE(found.join(u','), u"1,2,3,1,,4,,6"_s);
    }

    void getImgAfterChanges()
    {
        ImageCatalogue images;
        const QString a = u"a"_s;
        const QString b = u"b"_s;
        QCOMPARE(images.GetImg(a), QString());
        images.rows.add(u"1"_s, {a});
        QCOMPARE(images.GetImg(a), u"1"_s);
        images.rows.setSub(0, 1, b);
        QCOMPARE(images.GetImg(a), QString());
        QCOMPARE(images.GetImg(b), u"1"_s);
        images.rows.add(u"3"_s, {a});
        QCOMPARE(images.GetImg(b), u"1"_s);
        images.rows.remove(0);
        QCOMPARE(images.GetImg(b), QString());
        QCOMPARE(images.GetImg(a), u"3"_s);
        images.rows.assign({{u"4"_s, {a}, false}});
        QCOMPARE(images.GetImg(b), QString());
        QCOMPARE(images.GetImg(a), u"4"_s);
        images.rows.clear();
        QCOMPARE(images.GetImg(a), QString());
    }

    void saveAndLoadAgain()
    {
        const TestFiles files;
        const QByteArray name(100000, 'n');
        const QString path =
            files.write(u"image.xml"_s, "<image id=\"A\">sub\\a.png</image><IMAGE id = \"\xe4\">../b.png"
                                        "</IMAGE><image id=\"" +
                                            name + "\">" + name + "</image>");
        const QString folder = files.folder() + separator();
        FileList list;
        Files disk;
        disk.backups().setFolder(files.path(u"backup"_s));
        ImageCatalogue images;
        images.LoadImageList(Document::open(disk, path, files.folder()), folder, list);
        images.rows.add(QString(folder.toUpper() + u"d\\e.png"), {u"D"_s});
        const QByteArray saved =
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\r\n<images>\r\n"
            "<image id= \"A\" >sub/a.png</image>\r\n<image id= \"\xe4\" >../b.png</image>\r\n<image id= \"" +
            name + "\" >" + name + "</image>\r\n<image id= \"D\" >d/e.png</image>\r\n</images>\r\n";
        for (int round = 0; round < 2; ++round) {
            images.SaveImageList(disk);
            QCOMPARE(files.read(u"image.xml"_s), saved);
            images.LoadImageList(Document::open(disk, path, files.folder()), folder, list);
        }
        images.rows.add(u"/elsewhere/f.png"_s, {u"F"_s});
        QVERIFY(images.asText().contains(u" >/elsewhere/f.png</image>"_s));

        // A folder that is gone: said with its name, nothing lost.
        ImageCatalogue gone;
        gone.LoadImageList(Document::open(disk, files.path(u"gone/image.xml"_s), files.folder()), folder,
                           list);
        gone.rows.add(u"a"_s, {u"A"_s});
        try {
            gone.SaveImageList(disk);
            QFAIL("There is no folder to write to");
        } catch (const RunTimeError &error) {
            QVERIFY2(error.message().contains(gone.document.path()), qPrintable(error.message()));
        }
        QCOMPARE(gone.rows.count(), 1);
        QVERIFY_EXCEPTION_THROWN(ImageCatalogue().SaveImageList(disk), RunTimeError);
    }

    void manyImagesAreQuick()
    {
        const TestFiles files;
        Files disk;
        QByteArray xml = "<images>\r\n";
        for (int i = 0; i < 10000; ++i)
            xml += "<image id= \"ID" + QByteArray::number(i) + "\" >sub/p" + QByteArray::number(i) +
                   ".png</image>\r\n";
        for (int i = 0; i < 2000; ++i)
            files.write(u"sub/p%1.png"_s.arg(i));
        const QString path = files.write(u"image.xml"_s, xml);
        FileList list;
        ImageCatalogue images;
        QElapsedTimer timer;
        timer.start();
        images.LoadImageList(Document::open(disk, path), files.folder() + separator(), list);
        for (int i = 0; i < 10000; ++i)
            QCOMPARE(images.GetImg(u"ID%1"_s.arg(i)), images.rows.text(i));
        // A listing or a search a row takes minutes; the bound leaves room for a busy machine and the
        // sanitizers.
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(images.rows.sub(1999, 2), u"Y"_s);
        QCOMPARE(images.rows.sub(2000, 2), QString());
    }

    void fonts()
    {
        const TestFiles files;
        Files disk;
        const QString path = files.write(
            u"font.xml"_s,
            "<fonts><font "
            "a=\"b\"><name>h</name></font><font>\r\n<name>font_prog</name><file>a.ttf</file><size> 18 </size>"
            "<style>bold</style></font><FONT><NAME>g</NAME><size>1</size><style></style></FONT>"
            "<font></font><font><name>i</font>");
        ListRows lvFont(QStringList(5));
        lvFont.add(u"old"_s, {u"Font_prog"_s, {}, u"10"_s});
        QCOMPARE(defaultFontSize(lvFont), QString());
        LoadFontList(lvFont, Document::open(disk, path));
        QCOMPARE(::rowsAsText(lvFont.rows()),
                 u"|font_prog|a.ttf| 18 |bold\n|||1|normal\n||||normal\n|i</font>|||normal\n"_s);
        lvFont.add({}, {u"font_prog"_s, {}, u"30"_s});
        QCOMPARE(defaultFontSize(lvFont), u" 18 "_s);
        LoadFontList(lvFont, Document::open(disk, files.path(u"none.xml"_s)));
        QVERIFY(lvFont.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestImageCatalogue)
#include "tst_imagecatalogue.moc"
