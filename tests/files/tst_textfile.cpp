#include "TextTable.h"
#include "files/Files.h"
#include "files/LoadedFiles.h"
#include "files/RunTimeError.h"
#include "files/TestFiles.h"

#include <QRandomGenerator>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestTextFile : public QObject
{
    Q_OBJECT

private slots:
    void codes_data()
    {
        // The bytes stand as letters of the same code. What is read as another page was written because the
        // page that was asked for does not do.
        textTable(
            {"text", "bytes", "page", "readAs"},
            {{u"ascii", u"<a>\r\n", u"<a>\r\n", u"ASCII"},
             {u"byte order mark", u"\uFEFF\uFEFF<a>\uFEFF", u"\xEF\xBB\xBF\xEF\xBB\xBF<a>\xEF\xBB\xBF",
              u"UTF-8"},
             {u"beyond the first plane", u"\U0001F600", u"\xF0\x9F\x98\x80", u"UTF-8"},
             {u"no character", u"\uFFFE", u"\xEF\xBF\xBE", u"UTF-8"},
             {u"one byte a letter", u"\u00A0\u00C2\u00E9\u00FF", u"\xA0\xC2\xE9\xFF", u"Windows-1252"},
             {u"upper controls",
              u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
              u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178",
              u"\x80\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F"
              u"\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F",
              u"Windows-1252"},
             {u"cut short", u"\u00C3", u"\xC3", u"Windows-1252"},
             {u"overlong", u"\u00C0\u20AC", u"\xC0\x80", u"Windows-1252"},
             {u"half a pair", u"\u00ED\u00A0\u20AC", u"\xED\xA0\x80", u"Windows-1252"},
             {u"beyond the last plane", u"\u00F4\x90\u20AC\u20AC", u"\xF4\x90\x80\x80", u"Windows-1252"},
             {u"new file", u"\u00E9", u"\xE9", u"ASCII", u"Windows-1252"},
             {u"new file, a letter too many", u"\u00E9\u0416", u"\xC3\xA9\xD0\x96", u"ASCII", u"UTF-8"},
             {u"one byte gives way", u"\u00E9\u0416", u"\xC3\xA9\xD0\x96", u"Windows-1252", u"UTF-8"},
             {u"control that is no byte", u"\x80", u"\xC2\x80", u"Windows-1252", u"UTF-8"},
             {u"would be read as utf-8", u"\u00C3\u00A9", u"\xC3\x83\xC2\xA9", u"Windows-1252", u"UTF-8"}});
    }

    void codes()
    {
        QFETCH(QString, text);
        QFETCH(QString, bytes);
        QFETCH(QString, page);
        QFETCH(QString, readAs);
        CodePage asked = CodePage::Ascii;
        for (const CodePage each : {CodePage::Utf8, CodePage::Windows1252})
            asked = codePageName(each) == page ? each : asked;
        QCOMPARE(encodeText(text, asked), bytes.toLatin1());
        const DecodedText decoded = decodeText(bytes.toLatin1());
        QCOMPARE(decoded.text, text);
        QCOMPARE(codePageName(decoded.page), readAs.isEmpty() ? page : readAs);
    }

    void everyByteStringComesBack()
    {
        const auto compare = [](const QByteArray &bytes) {
            for (const CodePageRule rule : {CodePageRule::Automatic, CodePageRule::Windows1252}) {
                const DecodedText decoded = decodeText(bytes, rule);
                QCOMPARE(encodeText(decoded.text, decoded.page, rule).toHex(), bytes.toHex());
                QVERIFY(rule == CodePageRule::Automatic || decoded.text.size() == bytes.size());
            }
        };
        for (int pair = 0; pair < 65536; ++pair)
            compare(QByteArray(1, char(pair / 256)) + char(pair % 256));
        // Pieces that are, or nearly are, UTF-8 meet each other far more often than random bytes would.
        const QByteArray pieces[] = {
            "<a>",  "\r\n",         "\xEF\xBB\xBF", "\xC3\xA9",     "\xE2\x82\xAC",     "\xF0\x9F\x98",
            "\x80", "\xED\xB0\x80", "\xFF\xFE",     "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF", QByteArray(1, '\0'),
            "\x8D", "\xC2",         "\xE9"};
        QRandomGenerator random(20);
        for (int round = 0; round < 20000; ++round) {
            QByteArray bytes;
            for (int i = random.bounded(8); i > 0; --i)
                bytes += random.bounded(4) == 0 ? QByteArray(1, char(random.bounded(256)))
                                                : pieces[random.bounded(int(std::size(pieces)))];
            compare(bytes);
        }
    }

    void unfitLetters()
    {
        const auto error = [](const QString &text, CodePageRule rule) {
            try {
                return QString::fromUtf8(encodeText(text, CodePage::Utf8, rule));
            } catch (const RunTimeError &thrown) {
                return thrown.message();
            }
        };
        QCOMPARE(error(u"a\r\nb\r\n\u0416"_s, CodePageRule::Windows1252),
                 u"The letter \"\u0416\" (U+0416) on line 3 cannot be written in Windows-1252."_s);
        QCOMPARE(error(u"\U0001F600\n"_s, CodePageRule::Windows1252),
                 u"The letter \"\U0001F600\" (U+1F600) on line 1 cannot be written in Windows-1252."_s);
        const QString high(QChar(0xD800)), low(QChar(0xDC00));
        for (const QString &text :
             {high, QString(high + high), QString(high + u'a'), low, QString(low + high)})
            QVERIFY2(error(text, CodePageRule::Automatic).contains(u"(U+D"), qPrintable(text));
    }

    void load()
    {
        const TestFiles files;
        const QString path = files.write(u"Sub/A.xml"_s, "\xEF\xBB\xBF\xC3\xA9");
        QCOMPARE(LoadFile(files.folder() + u"\\sub\\a.XML"_s), u"\uFEFF\u00E9"_s);
        QCOMPARE(LoadFile(files.path(u"none.xml"_s)) + LoadFile(files.path(u"Sub"_s)), QString());
        const DecodedText single = LoadText(path, CodePageRule::Windows1252);
        QCOMPARE(single.text.size(), 5);
        QCOMPARE(single.page, CodePage::Windows1252);
    }

    void changes()
    {
        const TestFiles files;
        Files disk;
        disk.backups().setFolder(files.path(u"backup"_s));
        const QString path = files.write(u"a.xml"_s, "a");
        const QString link = files.path(u"link.xml"_s);
        const QString spelt = files.folder() + u"\\.\\A.XML"_s;
        const QString gone = files.path(u"none.xml"_s);
        QVERIFY(QFile::link(path, link));
        QVERIFY(!disk.loaded().changedOutside(path)); // nobody has loaded it
        const QStringList names = {path, link, spelt, gone};
        for (const QString &name : names)
            disk.loaded().load(name);
        const auto changed = [&] {
            QString found;
            for (const QString &name : names)
                found += disk.loaded().changedOutside(name) ? u'+' : u'-';
            return found;
        };
        QCOMPARE(changed(), u"----"_s);
        files.write(u"a.xml"_s, "b"); // as long as before, and within the same second
        QCOMPARE(changed(), u"+++-"_s);
        // Written under one name, it is known under all; what is loaded otherwise does not count.
        LoadFile(path);
        disk.saveOwn(link, u"c"_s);
        disk.saveOwn(gone, u"d"_s);
        QCOMPARE(changed(), u"----"_s);
        files.write(u"a.xml"_s, "theirs");
        QCOMPARE(disk.loaded().savingQuestion(u"?"_s, path),
                 u"?\nThe file was changed by another program."_s);
        disk.remove(gone, files.folder());
        QFile::remove(path);
        QCOMPARE(changed(), u"+++-"_s);
        QCOMPARE(disk.loaded().savingQuestion(u"?"_s, gone), u"?"_s);
        QCOMPARE(disk.loaded().savingQuestion(u"?"_s, path), u"?"_s);
    }
};

QTEST_APPLESS_MAIN(TestTextFile)
#include "tst_textfile.moc"
