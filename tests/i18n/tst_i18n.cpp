#include "RowsAsText.h"
#include "TextTable.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "i18n/Dictionary.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/SpellWords.h"

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

    void spelledWords_data()
    {
        textTable({"text", "words"},
                  {{u"sentence", u"Alle Sender, (neu)!", u"Alle|Sender|neu"},
                   {u"apostrophes", u"l\u2019ami 'quoted' it's o'", u"l\u2019ami|quoted|it's"},
                   {u"hyphen and line break", u"Kanal-Liste\\nzwei\ndrei", u"Kanal|Liste|zwei|drei"},
                   {u"marks", u"e\u0301te\u0301 naïve", u"e\u0301te\u0301|naïve"},
                   {u"capitals, numbers, single letters", u"EPG ÄÖ 24h DVB-T2 x v2_a 3ème a", u""},
                   {u"one capital among small", u"HbbTV Ok", u"HbbTV|Ok"},
                   {u"placeholders", u"%d files of %sKB in {folder} %1$s, 100% done", u"files|of|in|done"},
                   {u"no blanks between words", u"\u0E01\u0E02 \u4E2D\u6587 ok", u"ok"},
                   {u"letters beyond 16 bits", u"\U0001D400bc de", u"de"},
                   {u"Cyrillic", u"Все каналы", u"Все|каналы"}});
    }
    void spelledWords()
    {
        QFETCH(QString, text);
        QFETCH(QString, words);
        QStringList found;
        for (const Range &word : wordsToSpell(text))
            found.append(word.in(text).toString());
        QCOMPARE(found.join(u'|'), words);
        QVERIFY(wordsToSpell(QString(1000, u'a')).isEmpty());
    }

    void spellFiles_data()
    {
        // Of German; "a/" and "b/" are the folders, in this order.
        textTable({"files", "rules"}, {{u"none", u"a/en_US b/fr", u""},
                                       {u"of the country", u"a/de_AT a/de_DE b/de", u"a/de_DE"},
                                       {u"of another country", u"a/de_CH a/de_AT a/den", u"a/de_AT"},
                                       {u"the code alone", u"a/de a/de_CH", u"a/de"},
                                       {u"first folder", u"a/de_CH b/de_DE", u"a/de_CH"},
                                       {u"second folder", u"a/de_DE.aff b/de-1901", u"b/de-1901"},
                                       {u"other language", u"a/den_DE a/deu", u""}});
    }
    void spellFiles()
    {
        QFETCH(QString, files);
        QFETCH(QString, rules);
        const TestFiles disk;
        for (const QString &file : files.split(u' ')) {
            disk.write(file.endsWith(u".aff") ? file : QString(file + u".aff"), "");
            if (!file.endsWith(u".aff"))
                disk.write(QString(file + u".dic"), "");
        }
        const SpellFiles found =
            spellFilesFor(QLocale::German, {disk.path(u"a"_s), disk.path(u"b"_s), disk.path(u"gone"_s)});
        QCOMPARE(found.rules, rules.isEmpty() ? QString() : disk.path(QString(rules + u".aff")));
        QCOMPARE(found.words, rules.isEmpty() ? QString() : disk.path(QString(rules + u".dic")));
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
