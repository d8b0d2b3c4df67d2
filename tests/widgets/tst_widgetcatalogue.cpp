#include "platform/FileList.h"
#include "platform/Paths.h"
#include "platform/TestFiles.h"
#include "widgets/WidgetCatalogue.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTest>

using namespace quillmere;

namespace {

QByteArray window(const QByteArray &name)
{
    return "<widget class=\"window\" name=\"" + name + "\"/>\r\n";
}

} // namespace

class TestWidgetCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void load_data();
    void load();
    void screenAndDates();
    void missingCatalogueEmptiesAll();
    void reload();
    void withWindow_data();
    void withWindow();
    void manyWindowsAreQuick();
};

void TestWidgetCatalogue::load_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("windows"); // path below the folder|name|status
    QTest::addColumn<QString>("unlisted");
    QTest::addColumn<QString>("listed"); // the folder that File1 ends at, below the catalogue's
    const auto row = [](const char *name, const QByteArray &xml, const char *windows, const char *unlisted,
                        const char *listed = "") {
        QTest::newRow(name) << xml << QString::fromLatin1(windows) << QString::fromLatin1(unlisted)
                            << QString::fromLatin1(listed);
    };
    row("some", "<interface>" + window("A") + window("none") + "</interface>", "A.xml|A|Y none.xml|none|",
        ".dot B.xml widgets.txt");
    row("all in other letters", window("a") + window("b"), "a.xml|a| b.xml|b|",
        ".dot A.xml B.xml widgets.txt");
    row("twice", window("A") + window("A"), "A.xml|A|Y A.xml|A|Y", ".dot B.xml widgets.txt");
    row("element in capitals", "<WIDGET class=\"window\" name=\"A\"/>", "A.xml|A|Y",
        ".dot B.xml widgets.txt");
    row("other classes", "<widget class=\"Window\" name=\"A\"/><widget class=\"box\" name=\"B\"/>", "",
        ".dot A.xml B.xml widgets.txt");
    row("before the first element", "class=\"window\" name=\"A\"", "", ".dot A.xml B.xml widgets.txt");
    row("no name", "<widget class=\"window\"/>", ".xml||", ".dot A.xml B.xml widgets.txt");
    row("name of the dot file", window(".dot"), ".dot.xml|.dot|", ".dot A.xml B.xml widgets.txt");
    // The last window leads elsewhere: it is the files there that are compared, by their names alone.
    row("window in a folder below", window("B") + window("sub\\A"), "B.xml|B|Y sub/A.xml|sub\\A|Y",
        "A.xml C.xml", "sub/");
    row("folder that is not there", window("A") + window("gone/A"), "A.xml|A|Y gone/A.xml|gone/A|", "",
        "gone/");
}

void TestWidgetCatalogue::load()
{
    QFETCH(QByteArray, xml);
    const TestFiles files;
    for (const char *name :
         {"A.xml", "B.xml", ".dot", "widgets.txt", "sub/A.xml", "sub/C.xml", "sub/widget.xml"})
        files.write(QLatin1String(name));
    const QString path = files.write(QStringLiteral("widget.xml"), xml);
    const QString folder = files.folder() + separator();
    FileList list;
    WidgetCatalogue catalogue;
    catalogue.LoadWidgetList(path, folder, list);
    QStringList windows;
    for (const ListRows::Row &row : catalogue.LvWidget.rows()) {
        QVERIFY(row.text.startsWith(folder));
        windows +=
            QDir::fromNativeSeparators(row.text.mid(folder.size())) + u'|' + row.sub(1) + u'|' + row.sub(3);
        QCOMPARE(row.sub(2).isEmpty(), row.sub(3).isEmpty());
    }
    QTEST(windows.join(u' '), "windows");
    QStringList unlisted;
    for (const ListRows::Row &row : catalogue.lvWidgetDel.rows())
        unlisted += row.text;
    QTEST(unlisted.join(u' '), "unlisted");
    QFETCH(QString, listed);
    QCOMPARE(list.path(), folder + withOwnSeparators(listed));
}

void TestWidgetCatalogue::screenAndDates()
{
    const TestFiles files;
    QFile document(files.write(QStringLiteral("A.xml")));
    QVERIFY(document.open(QIODevice::ReadWrite));
    QVERIFY(document.setFileTime(QDateTime(QDate(2009, 3, 4), QTime(15, 6, 7)),
                                 QFileDevice::FileModificationTime));
    document.close();
    const QString path =
        files.write(QStringLiteral("widget.xml"),
                    "<width> 1280</width><height>720</height><bpp>32</bpp><width>9</width>" + window("A"));
    FileList list;
    WidgetCatalogue catalogue;
    catalogue.LoadWidgetList(path, files.folder() + separator(), list);
    QCOMPARE(catalogue.width, QStringLiteral(" 1280"));
    QCOMPARE(catalogue.height, QStringLiteral("720"));
    QCOMPARE(catalogue.bpp, QStringLiteral("32"));
    QCOMPARE(catalogue.LvWidget.sub(0, 2), QStringLiteral("2009-03-04 15:06:07"));
}

void TestWidgetCatalogue::missingCatalogueEmptiesAll()
{
    const TestFiles files;
    const QString path = files.write(QStringLiteral("widget.xml"), "<width>1</width>" + window("A"));
    files.write(QStringLiteral("B.xml"));
    FileList list;
    WidgetCatalogue catalogue;
    catalogue.LoadWidgetList(path, files.folder() + separator(), list);
    QVERIFY(!catalogue.LvWidget.isEmpty() && !catalogue.lvWidgetDel.isEmpty());
    const QString missing = files.path(QStringLiteral("gone/widget.xml"));
    catalogue.LoadWidgetList(missing, folderOf(missing).toString(), list);
    QVERIFY(catalogue.LvWidget.isEmpty() && catalogue.lvWidgetDel.isEmpty());
    QCOMPARE(catalogue.width, QString());
    QCOMPARE(catalogue.path, missing);
    QCOMPARE(catalogue.folder, folderOf(missing).toString());
}

void TestWidgetCatalogue::reload()
{
    const TestFiles files;
    FileList list;
    WidgetCatalogue catalogue;
    catalogue.reload(list);
    QCOMPARE(list.path(), QString());
    const QString path = files.write(QStringLiteral("widget.xml"), window("A"));
    catalogue.LoadWidgetList(path, files.folder() + separator(), list);
    QCOMPARE(catalogue.LvWidget.sub(0, 3), QString());
    files.write(QStringLiteral("A.xml"));
    catalogue.reload(list);
    QCOMPARE(catalogue.LvWidget.sub(0, 3), QStringLiteral("Y"));
}

void TestWidgetCatalogue::withWindow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("extended");
    // "%" stands for the line of the window N.
    const auto row = [](const char *name, QByteArray text, QByteArray extended) {
        const QByteArray line = "<widget class=\"window\" style=\"default\" name=\"N\"/>";
        text.replace("%lower", line.toLower()).replace('%', line);
        extended.replace("%lower", line.toLower()).replace('%', line);
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(extended);
    };
    row("plain", "<interface>\r\n</interface>\r\n", "<interface>\r\n%</interface>\r\n");
    row("line end is added", "</interface>", "%</interface>\r\n");
    row("lone line feed at the end", "</interface>\n", "%</interface>\n\r\n");
    row("capitals, twice", "</INTERFACE></interface>\r\n", "%</interface>%</interface>\r\n");
    row("there already", "%</interface>\r\n", "%</interface>\r\n");
    row("there in other letters", "%lower</interface>\r\n", "%lower%</interface>\r\n");
    row("no place", "<interface>\r\n", "<interface>\r\n");
}

void TestWidgetCatalogue::withWindow()
{
    QFETCH(QString, text);
    QTEST(WidgetCatalogue::withWindow(text, QStringLiteral("N")), "extended");
}

void TestWidgetCatalogue::manyWindowsAreQuick()
{
    const TestFiles files;
    QByteArray xml;
    for (int i = 0; i < 5000; ++i) {
        files.write(QStringLiteral("w%1.xml").arg(i));
        xml += window("w" + QByteArray::number(i * 2));
    }
    const QString path = files.write(QStringLiteral("widget.xml"), xml);
    FileList list;
    WidgetCatalogue catalogue;
    QElapsedTimer timer;
    timer.start();
    catalogue.LoadWidgetList(path, files.folder() + separator(), list);
    // A listing a row takes minutes; the bound leaves room for a busy machine and the sanitizers.
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(catalogue.lvWidgetDel.count(), 2500);
}

QTEST_APPLESS_MAIN(TestWidgetCatalogue)
#include "tst_widgetcatalogue.moc"
