#include "catalogues/ImageCatalogue.h"
#include "platform/FileList.h"
#include "platform/Paths.h"
#include "platform/TestFiles.h"

#include <QElapsedTimer>
#include <QTest>

using namespace quillmere;

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
    void load_data();
    void load();
    void reload();
    void getImg_data();
    void getImg();
    void getImgAfterChanges();
    void manyImagesAreQuick();
};

void TestImageCatalogue::load_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char *name, const QByteArray &xml, const char *rows) {
        QTest::newRow(name) << xml << QString::fromLatin1(rows);
    };
    row("plain", "<images>\r\n<image id=\"A\">logo.png</image>\r\n</images>", "logo.png|A|Y\n");
    row("blanks around the equals sign",
        "<image id = \"A\" >logo.png</image><image id= \"B\" >sub/a.png</image>",
        "logo.png|A|Y\nsub/a.png|B|Y\n");
    row("element in capitals", "<IMAGE id=\"A\">logo.png</IMAGE>", "logo.png|A|Y\n");
    row("attribute in capitals", "<image ID=\"A\">logo.png</image>", "logo.png||Y\n");
    row("no id", "<image name=\"A\">logo.png</image>", "");
    row("text before", "logo.png id=\"X\"", "");
    row("foreign separators", "<image id=\"A\">sub\\a.png</image>", "sub/a.png|A|Y\n");
    row("duplicates stay", "<image id=\"A\">logo.png</image><image id=\"A\">none.png</image>",
        "logo.png|A|Y\nnone.png|A|\n");
    row("name in other letters", "<image id=\"A\">Logo.png</image>", "Logo.png|A|\n");
    row("folder is no picture", "<image id=\"A\">sub</image>", "sub|A|\n");
    row("folder that is not there", "<image id=\"A\">none/a.png</image>", "none/a.png|A|\n");
    // The name is taken out of the path wherever it stands, so another folder is looked at.
    row("name within the folder's name", "<image id=\"A\">ICONic/icon</image>", "ICONic/icon|A|Y\n");
    row("folder named as the file", "<image id=\"A\">same/same</image>", "same/same|A|\n");
    row("no path", "<image id=\"A\"></image>", "|A|\n");
    row("dot file", "<image id=\"A\">.hidden</image>", ".hidden|A|Y\n");
    row("empty", "", "");
}

void TestImageCatalogue::load()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, rows);
    const TestFiles files;
    for (const char *name : {"logo.png", "sub/a.png", "ic/icon", "same/same", ".hidden"})
        files.write(QLatin1String(name));
    const QString path = files.write(QStringLiteral("image.xml"), xml);
    const QString folder = files.folder() + separator();
    FileList list;
    ImageCatalogue images;
    images.LoadImageList(path, folder, list);
    QCOMPARE(rowsAsText(images.rows, folder), rows);
    QCOMPARE(images.path(), path);
}

void TestImageCatalogue::reload()
{
    const TestFiles files;
    files.write(QStringLiteral("sub/b.png"));
    const QString path = files.write(QStringLiteral("image.xml"),
                                     "<image id=\"A\">a.png</image><image id=\"B\">sub/b.png</image>");
    FileList list;
    ImageCatalogue images;
    images.LoadImageList(path, files.folder() + separator(), list);
    QCOMPARE(images.rows.count(), 2);
    QCOMPARE(list.files(), QStringList(QStringLiteral("b.png")));
    const QString missing = files.path(QStringLiteral("none.xml"));
    images.LoadImageList(missing, files.folder() + separator(), list);
    QCOMPARE(images.rows.count(), 0);
    QCOMPARE(images.path(), missing);
    QCOMPARE(images.GetImg(QStringLiteral("A")), QString());
}

void TestImageCatalogue::getImg_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "a"
                           << "1";
    QTest::newRow("capital") << "A"
                             << "2";
    QTest::newRow("blanks around the row's") << "b"
                                             << "3";
    QTest::newRow("blanks around the asked") << " \t\r\na \n"
                                             << "1";
    QTest::newRow("blank inside") << "a b"
                                  << "";
    QTest::newRow("first of two") << "c"
                                  << "4";
    QTest::newRow("missing") << "d"
                             << "";
    QTest::newRow("empty finds the row without ID") << " "
                                                    << "6";
}

void TestImageCatalogue::getImg()
{
    ImageCatalogue images;
    const QStringList ids = {QStringLiteral("a"), QStringLiteral("A"),  QStringLiteral("\t b\r\n"),
                             QStringLiteral("c"), QStringLiteral(" c"), QString()};
    for (int i = 0; i < ids.size(); ++i)
        images.rows.add(QString::number(i + 1), {ids.at(i)});
    QFETCH(QString, id);
    QTEST(images.GetImg(id), "path");
}

void TestImageCatalogue::getImgAfterChanges()
{
    ImageCatalogue images;
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    QCOMPARE(images.GetImg(a), QString());
    images.rows.add(QStringLiteral("1"), {a});
    QCOMPARE(images.GetImg(a), QStringLiteral("1"));
    images.rows.setSub(0, 1, b);
    QCOMPARE(images.GetImg(a), QString());
    QCOMPARE(images.GetImg(b), QStringLiteral("1"));
    images.rows.setText(0, QStringLiteral("2"));
    QCOMPARE(images.GetImg(b), QStringLiteral("2"));
    images.rows.add(QStringLiteral("3"), {b});
    images.rows.remove(0);
    QCOMPARE(images.GetImg(b), QStringLiteral("3"));
    images.rows.assign({{QStringLiteral("4"), {a}, false}});
    QCOMPARE(images.GetImg(b), QString());
    QCOMPARE(images.GetImg(a), QStringLiteral("4"));
    images.rows.clear();
    QCOMPARE(images.GetImg(a), QString());
}

void TestImageCatalogue::manyImagesAreQuick()
{
    const TestFiles files;
    QByteArray xml = "<images>\r\n";
    for (int i = 0; i < 10000; ++i)
        xml += "<image id= \"ID" + QByteArray::number(i) + "\" >sub/p" + QByteArray::number(i) +
               ".png</image>\r\n";
    for (int i = 0; i < 2000; ++i)
        files.write(QStringLiteral("sub/p%1.png").arg(i));
    const QString path = files.write(QStringLiteral("image.xml"), xml);
    FileList list;
    ImageCatalogue images;
    QElapsedTimer timer;
    timer.start();
    images.LoadImageList(path, files.folder() + separator(), list);
    for (int i = 0; i < 10000; ++i)
        QCOMPARE(images.GetImg(QStringLiteral("ID%1").arg(i)), images.rows.text(i));
    // A listing or a search a row takes minutes; the bound leaves room for a busy machine and the sanitizers.
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(images.rows.sub(1999, 2), QStringLiteral("Y"));
    QCOMPARE(images.rows.sub(2000, 2), QString());
}

QTEST_APPLESS_MAIN(TestImageCatalogue)
#include "tst_imagecatalogue.moc"
