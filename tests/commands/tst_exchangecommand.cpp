#include "TextTable.h"
#include "commands/ExchangeCommand.h"
#include "files/Files.h"
#include "files/TestFiles.h"

#include <QDirIterator>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

struct Ran
{
    int status;
    QString out, err;
};

Ran run(Files &disk, const QStringList &words)
{
    const CommandLine line = parseCommandLine(QStringList{u"quillmere"_s} + words);
    Ran ran = {2, {}, line.text};
    QTextStream out(&ran.out), err(&ran.err);
    if (line.action == CommandLine::Action::Export)
        ran.status = runExport(disk, line, err);
    else if (line.action == CommandLine::Action::Import)
        ran.status = runImport(disk, line, out, err);
    return ran;
}

// A theme with one language, "de", in theme/i18n/de.xml.
class Theme
{
public:
    explicit Theme(const QByteArray &language)
    {
        disk.backups().setFolder(files.path(u"backup"_s));
        files.write(u"theme/theme.xml"_s, "<config><file_widget>w/widget.xml</file_widget>"
                                          "<file_i18n>i18n/i18n.xml</file_i18n></config>");
        files.write(u"theme/i18n/i18n.xml"_s, "<language id=\"de\">de.xml</language>"
                                              "<language id=\"none\">none.xml</language>"
                                              "<language id=\"empty\">i18n.xml</language>");
        files.write(u"theme/i18n/de.xml"_s, language);
        files.write(u"theme/w/widget.xml"_s, "<widget class=\"window\" name=\"my window\"/>");
        files.write(u"theme/w/my window.xml"_s,
                    "<widget name=\"w\">\n<string>One</string>\n<string>Two</string></widget>");
        files.write(u"theme/w/other.xml"_s, "<widget name=\"w\"><string>Two</string></widget>");
    }

    Ran run(QStringList words)
    {
        for (QString &word : words) {
            if (word == u"THEME" || word.contains(u'.'))
                word = files.path(word == u"THEME" ? u"theme"_s : word);
        }
        Ran ran = ::run(disk, words);
        for (QString *text : {&ran.out, &ran.err})
            text->remove(files.folder() + u'/');
        return ran;
    }
    QByteArray language() const { return files.read(u"theme/i18n/de.xml"_s); }
    bool isBackedUp() const
    {
        return QDirIterator(files.path(u"backup"_s), QDir::Files, QDirIterator::Subdirectories).hasNext();
    }

    TestFiles files;
    Files disk;
};

QByteArray po(const QString &pairs)
{
    QByteArray text;
    for (const QString &pair : pairs.split(u'|'))
        text += "msgid \"" + pair.section(u'=', 0, 0).toUtf8() + "\"\nmsgstr \"" +
                pair.section(u'=', 1).toUtf8() + "\"\n";
    return text;
}

} // namespace

class tst_exchangecommand : public QObject
{
    Q_OBJECT

private slots:
    void unchangedStays_data();
    void unchangedStays();
    void inPlace_data();
    void inPlace();
    void dryRun();
    void exportedPlaces();
    void cannotRun_data();
    void cannotRun();
    void leavesOthersAlone();
    void exampleTheme();
};

void tst_exchangecommand::unchangedStays_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::newRow("UTF-8") << QByteArray(
        "\xEF\xBB\xBF<language name=\"x\">\r\n<!-- kept -->\r\n"
        "<tran id=\"A &amp; \xE2\x80\xA6\">=1+1\xE2\x80\xA6</tran>\n"
        "<tran id=\"A\rB\">c\r\nd\te\"\\n \x01</tran><TRAN ID=\"B\"/>\r\n\r\n"
        "<tran id=\"B\">twice</tran><tran id=\"\">none</tran>");
    QTest::newRow("Windows-1252") << QByteArray("<language name=\"x\"><tran id=\"\xC4\">\x85\xFC\x81</tran>"
                                                "<tran id=\"a>b\">c</tran><tran id=\"cut");
    QTest::newRow("code 0") << QByteArray("<language name=\"x\"><tran id=\"a\0b\">\0</tran>", 42);
}

void tst_exchangecommand::unchangedStays()
{
    QFETCH(QByteArray, language);
    for (const char *name : {"a.po", "a.xlf", "a.csv", "a.tsv"}) {
        Theme theme(language);
        const QString file = QString::fromLatin1(name);
        QCOMPARE(theme.run({u"export"_s, u"THEME"_s, u"de"_s, u"--out"_s, file}).err, QString());
        QCOMPARE(theme.run({u"import"_s, u"THEME"_s, u"de"_s, file, u"--dry-run"_s}).status, 0);
        const Ran ran = theme.run({u"import"_s, u"THEME"_s, u"de"_s, file});
        QCOMPARE(ran.status, 0);
        QCOMPARE(ran.err, QString());
        QCOMPARE(theme.language(), language);
        QVERIFY(!theme.isBackedUp());
    }
}

void tst_exchangecommand::inPlace_data()
{
    QTest::addColumn<QByteArray>("strings");
    QTest::addColumn<QString>("pairs");
    QTest::addColumn<QByteArray>("after"); // empty: as before
    QTest::addColumn<QString>("err");
    const auto row = [](const char *name, const QByteArray &strings, QStringView pairs,
                        const QByteArray &after, QStringView err = {}) {
        QTest::newRow(name) << strings << pairs.toString().replace(u'`', u'"') << after
                            << err.toString().replace(u'`', u'"');
    };
    row("all kinds", "<tran id=\"A\">a</tran>\n<tran id=\"B\"></tran> <tran id=\"C\">c</tran><x/>",
        u"C=|A=\u00E4\\n\\`|B=b b",
        "<tran id=\"A\">\xC3\xA4\n\"</tran>\n<tran id=\"B\">b b</tran> "
        "<tran id=\"C\"></tran><x/>");
    row("line ends of the file", "<tran id=\"A\r\nB\">a</tran>\r\n", u"A\\nB=a\\nb",
        "<tran id=\"A\r\nB\">a\r\nb</tran>\r\n");
    row("closes itself", "<tran id=\"A\"/>\r\n<tran id=\"B\" x=\"1\" />", u"A=a|B=b",
        "<tran id=\"A\">a</tran>\r\n<tran id=\"B\" x=\"1\" >b</tran>");
    row("no place", "<tran id=\"a>b\">c</tran><tran id=\"d\"", u"a>b=x|d=y", {},
        u"a.po:1: the language file has no place for a translation of `a>b`\n"
        "a.po:3: the language file has no place for a translation of `d`\n");
    row("Windows-1252", "<tran id=\"\xC4\">a</tran><tran id=\"B\">b</tran>", u"\u00C4=\u2026\u00FC|B=\u0416",
        "<tran id=\"\xC4\">\x85\xFC</tran><tran id=\"B\">b</tran>",
        u"a.po:3: the language file is in Windows-1252, which lacks letters of `\u0416`\n");
    row("others are taken", "<tran id=\"A\">a</tran><tran id=\"B\">b</tran>", u"A=<|X=x|B=\u2026",
        "<tran id=\"A\">a</tran><tran id=\"B\">...</tran>",
        u"a.po:1: a translation holds neither < nor >: `<`\na.po:3: the language has no `X`\n");
}

void tst_exchangecommand::inPlace()
{
    QFETCH(QByteArray, strings);
    QFETCH(QString, pairs);
    QFETCH(QByteArray, after);
    QFETCH(QString, err);

    const QByteArray head = "<language name=\"x\">";
    Theme theme(head + strings);
    theme.files.write(u"a.po"_s, po(pairs));
    const Ran ran = theme.run({u"import"_s, u"THEME"_s, u"de"_s, u"a.po"_s});
    QCOMPARE(ran.status, 0);
    QCOMPARE(theme.language(), head + (after.isEmpty() ? strings : after));
    QCOMPARE(ran.err, err);
    QCOMPARE(theme.isBackedUp(), !after.isEmpty());
    QCOMPARE(theme.run({u"import"_s, u"THEME"_s, u"de"_s, u"a.po"_s, u"--dry-run"_s}).status, 0);
}

void tst_exchangecommand::dryRun()
{
    const QByteArray language = "<language name=\"x\"><tran id=\"A\">a</tran><tran id=\"B\"></tran>"
                                "<tran id=\"C\">c</tran><tran id=\"D\">d</tran><tran id=\"E\">e</tran>";
    Theme theme(language);
    theme.files.write(u"a.po"_s, po(u"A=\\033[2J|B=b\\nb|C=|D=x|D=y|F=f"_s));
    const Ran ran = theme.run({u"import"_s, u"THEME"_s, u"de"_s, u"a.po"_s, u"--dry-run"_s});
    QCOMPARE(ran.status, 1);
    QCOMPARE(
        ran.out,
        u"a.po:3: new: \"B\" -> \"b\\nb\"\n"
        "a.po:5: gone: \"C\": \"c\"\n"
        "a.po:9: conflicting: \"D\" is translated otherwise in line 7\n"
        "1 new, 0 changed, 1 gone, 1 conflicting, 1 refused, 1 not in the language, 1 not in the file\n"_s);
    QCOMPARE(ran.err, u"a.po:1: a translation holds no control characters: \"?[2J\"\n"
                      "a.po:11: the language has no \"F\"\n"_s);
    QCOMPARE(theme.language(), language);
}

void tst_exchangecommand::exportedPlaces()
{
    Theme theme("<language name=\"x\"><tran id=\"Two\">2</tran><tran id=\"None\"></tran>");
    theme.files.write(u"a.tsv"_s, "old");
    QCOMPARE(theme.run({u"export"_s, u"THEME"_s, u"de"_s, u"--out"_s, u"a.tsv"_s}).status, 0);
    QVERIFY(theme.isBackedUp());
    QCOMPARE(theme.files.read(u"a.tsv"_s), QByteArray("\xEF\xBB\xBFSource\tTranslation\tState\tPlaces\r\n"
                                                      "Two\t2\t\tmy window:3; other:1\r\nNone\t\t\t\r\n"));
}

void tst_exchangecommand::cannotRun_data()
{
    textTable(
        {"words", "err"},
        {
            {u"import: no columns", u"import THEME de bad.csv",
             u"bad.csv:1: there are no columns Source and Translation\n"},
            {u"another language", u"import THEME de tr.po",
             u"quillmere: Cannot import `tr.po`: it says it is Turkish, not de.\n"},
            {u"another target", u"import THEME de tr.xlf --dry-run",
             u"quillmere: Cannot import `tr.xlf`: it says it is Turkish, not de.\n"},
            {u"no language", u"import THEME fr a.po",
             u"quillmere: the theme has no language `fr`; it has: de, none, empty\n"},
            {u"no language file", u"export THEME none --out b.po",
             u"quillmere: Cannot read `theme/i18n/none.xml`: there is no such file.\n"},
            {u"no strings", u"export THEME empty --out b.po",
             u"quillmere: Cannot read `theme/i18n/i18n.xml`: it holds no strings.\n"},
            {u"no theme", u"export de de --out b.po", u"quillmere: there is no folder"},
            {u"no file", u"import THEME de none.po",
             u"quillmere: Cannot read `none.po`: No such file or directory.\n"},
            {u"no folder", u"export THEME de --out none/b.po", u"quillmere: Cannot write `none/b.po`: "},
            {u"a folder", u"export THEME de --out folder.po",
             u"quillmere: Cannot write `folder.po`: it is not a file.\n"},
            {u"format", u"export THEME de --out b.txt", u"The name of the file must end in"},
            {u"no --out", u"export THEME de", u"export: --out FILE is missing."},
            {u"too few", u"import THEME de", u"import: import THEME LANGUAGE FILE"},
            {u"--dry-run", u"export THEME de --out b.po --dry-run", u"--dry-run goes with import."},
        });
}

void tst_exchangecommand::cannotRun()
{
    QFETCH(QString, words);
    QFETCH(QString, err);

    const QByteArray language = "<language name=\"x\"><tran id=\"A\">a</tran>";
    Theme theme(language);
    theme.files.write(u"a.po"_s, po(u"A=b"_s));
    theme.files.write(u"tr.po"_s,
                      "msgid \"\"\nmsgstr \"Language-Team: German\\nlanguage: tr_TR\\n\"\n" + po(u"A=b"_s));
    theme.files.write(u"tr.xlf"_s, "<xliff><file target-language=\"tr\"><trans-unit><source>A</source>"
                                   "<target>b</target></trans-unit></file></xliff>");
    theme.files.write(u"bad.csv"_s, "A,b\n");
    QDir().mkpath(theme.files.path(u"folder.po"_s));
    const Ran ran = theme.run(words.split(u' '));
    QCOMPARE(ran.status, 2);
    QVERIFY2(ran.err.startsWith(err), qPrintable(ran.err));
    QCOMPARE(theme.language(), language);
    QVERIFY(!QFileInfo::exists(theme.files.path(u"b.po"_s)));
}

// A theme names the file that an import writes.
void tst_exchangecommand::leavesOthersAlone()
{
    const QByteArray language = "<language name=\"x\"><tran id=\"A\">a</tran>";
    Theme theme({});
    const QString outside = theme.files.write(u"outside.xml"_s, language);
    QFile::remove(theme.files.path(u"theme/i18n/de.xml"_s));
    QVERIFY(QFile::link(outside, theme.files.path(u"theme/i18n/de.xml"_s)));
    theme.files.write(u"a.po"_s, po(u"A=b"_s));
    const Ran ran = theme.run({u"import"_s, u"THEME"_s, u"de"_s, u"a.po"_s});
    QCOMPARE(ran.status, 2);
    QVERIFY2(ran.err.contains(u"outside the theme's folder"), qPrintable(ran.err));
    QCOMPARE(theme.files.read(u"outside.xml"_s), language);
}

void tst_exchangecommand::exampleTheme()
{
    const QString msgfmt = QStandardPaths::findExecutable(u"msgfmt"_s);
    if (msgfmt.isEmpty())
        QSKIP("gettext is not installed");
    const TestFiles files;
    Files disk;
    const QString theme = QStringLiteral(EXAMPLES_FOLDER "/aurora/theme");
    for (const char *language : {"English", "Indonesian", "German", "Turkish", "Arabic", "Russian"}) {
        const QString path = files.path(QLatin1String(language) + u".po"_s);
        QCOMPARE(run(disk, {u"export"_s, theme, QLatin1String(language), u"--out"_s, path}).err, QString());
        QProcess tool;
        tool.start(msgfmt, {u"--check"_s, u"-o"_s, files.path(u"a.mo"_s), path});
        QVERIFY(tool.waitForFinished());
        QCOMPARE(QString::fromUtf8(tool.readAllStandardError()), QString());
        QCOMPARE(tool.exitCode(), 0);
        QCOMPARE(run(disk, {u"import"_s, theme, QLatin1String(language), path, u"--dry-run"_s}).status, 0);
    }
}

QTEST_GUILESS_MAIN(tst_exchangecommand)
#include "tst_exchangecommand.moc"
