#include "TextTable.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/TestFiles.h"
#include "widgets/WidgetCatalogue.h"

#include <QDateTime>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestWidgetCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void loads_data()
    {
        // An exclamation mark stands for `class="window" name=`. Files as path below the folder|name|status;
        // the folder is the one that File1 ends at, below the catalogue's.
        textTable(
            {"xml", "windows", "unlisted", "folder"},
            {{u"some", u"<widget !`A`/><widget !`no`/>", u"A.xml|A|Y no.xml|no|", u".dot B.xml widgets.txt"},
             {u"all in other letters", u"<WIDGET !`a`/>", u"a.xml|a|", u".dot A.xml B.xml widgets.txt"},
             {u"twice", u"<widget !`A`/><widget !`A`/>", u"A.xml|A|Y A.xml|A|Y", u".dot B.xml widgets.txt"},
             {u"no window", u"!`A`<widget class=`Window` name=`A`/>", u"", u".dot A.xml B.xml widgets.txt"},
             {u"no name", u"<widget class=`window`/>", u".xml||", u".dot A.xml B.xml widgets.txt"},
             // The last window leads elsewhere: it is the files there that are compared, by their names
             // alone.
             {u"window in a folder below", u"<widget !`B`/><widget !`sub\\A`/>",
              u"B.xml|B|Y sub/A.xml|sub\\A|Y", u"A.xml C.xml", u"sub/"},
             {u"folder that is not there", u"<widget !`gone/A`/>", u"gone/A.xml|gone/A|", u"", u"gone/"}});
    }

    void loads()
    {
        QFETCH(QString, xml);
        const TestFiles files(
            {"A.xml", "B.xml", ".dot", "widgets.txt", "sub/A.xml", "sub/C.xml", "sub/widget.xml"});
        Files disk;
        xml.replace(u'!', u"class=\"window\" name="_s);
        const QString folder = files.folder() + separator();
        FileList list;
        WidgetCatalogue catalogue;
        catalogue.LoadWidgetList(Document::open(disk, files.write(u"widget.xml"_s, xml.toLatin1())), folder,
                                 list);
        QStringList windows, unlisted;
        for (const ListRows::Row &row : catalogue.LvWidget.rows()) {
            QVERIFY(row.text.startsWith(folder) && row.sub(2).isEmpty() == row.sub(3).isEmpty());
            const QString path = QDir::fromNativeSeparators(row.text.mid(folder.size()));
            windows += path + u'|' + row.sub(1) + u'|' + row.sub(3);
        }
        for (int row = 0; row < catalogue.lvWidgetDel.count(); ++row) {
            unlisted += catalogue.lvWidgetDel.text(row);
            QCOMPARE(catalogue.unlistedPath(row), list.path() + unlisted.constLast());
        }
        QTEST(windows.join(u' '), "windows");
        QTEST(unlisted.join(u' '), "unlisted");
        QTEST(QDir::fromNativeSeparators(list.path().mid(folder.size())), "folder");
    }

    void screenAndDates()
    {
        const TestFiles files;
        Files disk;
        FileList list;
        WidgetCatalogue catalogue;
        catalogue.reload(disk, list);
        QCOMPARE(list.rowCount(), 0);
        const QString path = files.write(
            u"widget.xml"_s, "<width> 1280</width><height>720</height><bpp>32</bpp><width>9</width>"
                             "<widget class=\"window\" name=\"A\"/>");
        catalogue.LoadWidgetList(Document::open(disk, path), files.folder() + separator(), list);
        QCOMPARE(QString(catalogue.width + u'x' + catalogue.height + u'x' + catalogue.bpp),
                 u" 1280x720x32"_s);
        QFile document(files.write(u"A.xml"_s));
        QVERIFY(document.open(QIODevice::ReadWrite));
        const QDateTime time(QDate(2009, 3, 4), QTime(15, 6, 7));
        QVERIFY(document.setFileTime(time, QFileDevice::FileModificationTime));
        document.close();
        QCOMPARE(catalogue.LvWidget.sub(0, 3), QString());
        files.write(u"B.xml"_s);
        catalogue.reload(disk, list);
        QCOMPARE(catalogue.LvWidget.sub(0, 2) + catalogue.LvWidget.sub(0, 3), u"2009-03-04 15:06:07Y"_s);
        // A catalogue that is not there empties everything.
        const QString missing = files.path(u"gone/widget.xml"_s);
        catalogue.LoadWidgetList(Document::open(disk, missing), folderOf(missing).toString(), list);
        QVERIFY(catalogue.LvWidget.isEmpty() && catalogue.lvWidgetDel.isEmpty() && catalogue.width.isEmpty());
        QCOMPARE(catalogue.document.path() + catalogue.folder, missing + folderOf(missing));
    }

    void addsWindow()
    {
        const QString line = u"<widget class=\"window\" style=\"default\" name=\"N\"/>"_s;
        const auto extended = [&line](const char *text) {
            QString with = QString::fromLatin1(text).replace(u'%', line).replace(u'!', line.toLower());
            with = WidgetCatalogue::withWindow(with, u"N"_s);
            return with.replace(line, u"%"_s).replace(line.toLower(), u"!"_s);
        };
        QCOMPARE(extended("<interface>\r\n</interface>\r\n"), u"<interface>\r\n%</interface>\r\n"_s);
        QCOMPARE(extended("</interface>\n"), u"%</interface>\n\r\n"_s);
        QCOMPARE(extended("</INTERFACE></interface>\r\n"), u"%</interface>%</interface>\r\n"_s);
        QCOMPARE(extended("%</interface>"), u"%</interface>\r\n"_s);
        QCOMPARE(extended("!</interface>\r\n"), u"!%</interface>\r\n"_s);
    }
};

QTEST_APPLESS_MAIN(TestWidgetCatalogue)
#include "tst_widgetcatalogue.moc"
