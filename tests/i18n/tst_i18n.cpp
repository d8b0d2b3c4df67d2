#include "RowsAsText.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "i18n/Dictionary.h"
#include "i18n/LanguageCatalogue.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestI18n : public QObject
{
    Q_OBJECT

private slots:
    void languages()
    {
        const TestFiles files;
        Files disk;
        const QString path =
            files.write(u"i18n.xml"_s, "id=\"no\"<language id = \"ENG\" >english.xml</language>\r\n"
                                       "<LANGUAGE  id=\"x\"></language><language name=\"y\">y.xml</language>"
                                       "<language ID=\"z\">sub/z.xml</language>");
        ListRows rows = makeLanguageRows();
        LoadLanguageList(rows, Document::open(disk, path), u"dir/"_s);
        QCOMPARE(rowsAsText(rows.rows()),
                 u"dir/english.xml|ENG|english.xml\ndir/|x|\ndir/sub/z.xml||sub/z.xml\n"_s);
        LoadLanguageList(rows, Document::open(disk, files.path(u"none.xml"_s)), QString());
        QVERIFY(rows.isEmpty());
    }

    void roundTrip_data()
    {
        QTest::addColumn<QByteArray>("read");
        QTest::addColumn<QByteArray>(
            "written"); // the elements; empty where they are written as they were read
        const auto row = [](const char *name, const QByteArray &read, const QByteArray &written = {}) {
            QTest::newRow(name) << read << written;
        };
        row("ASCII", "<tran id=\"A\">a & b</tran>\r\n<tran id=\"B\"></tran>\r\n");
        row("UTF-8", "<tran id=\"\xC3\xA4\">\xD0\x9F\xD1\x80 \xF0\x9F\x93\xBA</tran>\r\n");
        row("Windows-1252", "<tran id=\"A\">\xE4\xF6 \x80 \x81\x8D\x8F\x90\x9D</tran>\r\n");
        row("cut UTF-8", "<tran id=\"A\">\xD0\x9F\xD1</tran>\r\n");
        row("code 0", QByteArray("<tran id=\"A\">a\0b</tran>\r\n", 25));
        row("ellipsis in UTF-8", "<tran id=\"A\xE2\x80\xA6\">\xD0\x9F\xE2\x80\xA6</tran>\r\n",
            "<tran id=\"A...\">\xD0\x9F...</tran>\r\n");
        row("ellipsis in broken UTF-8", "<tran id=\"A\">\xE2\x80\xA6\xD1</tran>\r\n",
            "<tran id=\"A\">...\xD1</tran>\r\n");
        row("ellipsis of one byte", "<tran id=\"A\">\xE4\x85</tran>\r\n");
        row("source with > and quote", "<tran id=\"a>b\">c</tran><tran id=\"d\"e\">f</tran>",
            "<tran id=\"a>b\">b\"</tran>\r\n<tran id=\"d\">f</tran>\r\n");
        row("capitals, cut in a tag", "<TRAN ID=\"A\">a</TRAN><tran id=\"B\"/>\r\n<tran id=\"C",
            "<tran id=\"A\">a</tran>\r\n<tran id=\"B\">\r\n</tran>\r\n<tran id=\"\"></tran>\r\n");
    }

    void roundTrip()
    {
        QFETCH(QByteArray, read);
        QFETCH(QByteArray, written);
        const QByteArray head = "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"
                                "<language name=\"N\">\r\n<font>font_prog</font>\r\n";
        const DecodedText file = decodeText(head + read);
        ListRows rows = makeStringRows();
        OpenLgXml(rows, file.text);
        const QByteArray bytes = encodeText(languageFileText(u"N"_s, rows, {file.page}), file.page);
        const int count = rows.count();
        OpenLgXml(rows, QString()); // a file that is not there
        QCOMPARE(rows.count(), count);
        QCOMPARE(bytes, head + (written.isEmpty() ? read : written) + "</language>\r\n");
    }

    void copyAndPaste()
    {
        ListRows rows = makeStringRows();
        for (const char *source : {"One", "OK", "Yes", "Done"})
            rows.add(QString(), {QLatin1String(source), QLatin1String(source).sliced(1)});
        rows.setChecked(3, true);
        QCOMPARE(linesToCopy(rows, 2, CopiedColumn::Source), u"Yes\r\nDone\r\n"_s);
        QCOMPARE(linesToCopy(rows, 0, CopiedColumn::NotTranslated), u"One[*]\r\nYes[*]\r\n"_s);
        // The line end behind the last line makes an empty line.
        QCOMPARE(pasteLines(rows, 0, u"1\r\n2\r\n"_s), 3);
        QCOMPARE(rowsAsText(rows.rows()), u"|One|1\n|OK|2\n|Yes|\n*|Done|one\n"_s);
        QCOMPARE(linesToCopy(rows, 0, CopiedColumn::Trans), u"1\r\n2\r\none\r\n"_s);
        QCOMPARE(pasteLines(rows, 2, u"3\n4\n5\n6"_s), 2);
        QCOMPARE(pasteLines(rows, 0, QString()), 0);
        QCOMPARE(rowsAsText(rows.rows()), u"|One|1\n|OK|2\n|Yes|3\n*|Done|4\n"_s);
    }
};

QTEST_APPLESS_MAIN(TestI18n)
#include "tst_i18n.moc"
