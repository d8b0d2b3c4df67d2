#include "Failure.h"
#include "TextTable.h"
#include "files/TestFiles.h"
#include "i18n/ExchangeFile.h"
#include "i18n/LanguageImport.h"

#include <QProcess>
#include <QStandardPaths>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

constexpr ExchangeFormat kFormats[] = {ExchangeFormat::Po, ExchangeFormat::Xliff, ExchangeFormat::Csv,
                                       ExchangeFormat::Tsv};

QString letterOf(UnitState state)
{
    return state == UnitState::Fuzzy ? u"?"_s : state == UnitState::Translated ? u"+"_s : QString();
}

// A line a unit, "LINE[state] SOURCE=TRANSLATION", then what was refused.
QString asText(const ExchangeTable &table)
{
    QString text;
    for (const ExchangeUnit &unit : table.units)
        text += QString(QString::number(unit.line) + letterOf(unit.state) + u' ' + unit.source + u'=' +
                        unit.translation + u'\n');
    for (const LineNote &note : table.refused)
        text += QString(u'!' + QString::number(note.line) + u' ' + note.text + u'\n');
    return text;
}

QString read(const QString &name, const QByteArray &bytes)
{
    try {
        return asText(readExchange(*exchangeFormatOf(name), bytes));
    } catch (const LineError &error) {
        return u"fails in " + QString::number(error.line()) + u": " + error.message();
    }
}

QString allControls()
{
    QString text = u"a"_s;
    for (char16_t unit = 0; unit < 0x20; ++unit)
        text += QChar(unit == u'\r' ? u'\u0085' : unit);
    return text + u"7\u007F";
}

struct Hostile
{
    const char *name;
    QString text;
};
const QList<Hostile> &hostileTexts()
{
    static const QList<Hostile> texts = {
        {"quotes", u"\"a\" 'b' \"\"\"c\""_s},
        {"backslashes", u"\\n\\\\ \\\" \\x41 \\101\\"_s},
        {"line breaks", u"\na\n\nb\n"_s},
        {"only a line break", u"\n"_s},
        {"tabs and blanks", u" \ta\t b  "_s},
        {"controls", allControls()},
        {"separators", u"a,b;c\td=sep=;"_s},
        {"sep=", u"sep=;"_s},
        {"formulas", u"=1+1"_s},
        {"plus", u"+1"_s},
        {"minus", u"-1"_s},
        {"at", u"@A1"_s},
        {"markup", u"<g id=\"1\">&amp;&#65;]]><!-- <!DOCTYPE x>"_s},
        {"PO in PO", u"msgid \"x\"\n#~ msgstr \"y\"\n#, fuzzy"_s},
        {"placeholders", u"100% %s %1 %% {x} %\u00A0d"_s},
        {"right to left", u"\u202B\u05D0\u05D1 \u0645\u202C\u200F!"_s},
        {"beyond the plane", u"\U0001F4FA\U0010FFFF"_s},
        {"no characters", u"a\uFFFE\uFFFFb\uFEFF"_s},
        {"byte order mark", u"\uFEFFa"_s},
        {"line separators", u"a\u2028b\u2029c\u0085d"_s},
    };
    return texts;
}

ExchangeTable hostileTable(UnitState state)
{
    ExchangeTable table;
    table.language = u"charset=de\n<\""_s;
    for (const Hostile &each : hostileTexts())
        table.units.append({each.text, each.text, state, {u"my \"window\"\n:12"_s, u"b,;\t<c>:3"_s}, 0});
    table.units.append({u"untranslated"_s, {}, UnitState::None, {}, 0});
    return table;
}

} // namespace

class tst_exchange : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip();
    void tools();
    void foreign_data();
    void foreign();
    void hugeFiles_data();
    void hugeFiles();
    void halfPairs();
    void plans_data();
    void plans();
};

void tst_exchange::roundTrip()
{
    for (const ExchangeFormat format : kFormats) {
        for (const UnitState state : {UnitState::None, UnitState::Fuzzy, UnitState::Translated}) {
            const ExchangeTable table = hostileTable(state);
            const ExchangeTable again = readExchange(format, exchangeBytes(format, table));
            QVERIFY(again.refused.isEmpty());
            QCOMPARE(again.units.size(), table.units.size());
            for (qsizetype i = 0; i < table.units.size(); ++i) {
                QCOMPARE(again.units[i].source, table.units[i].source);
                QCOMPARE(again.units[i].translation, table.units[i].translation);
                const bool isSaid = format != ExchangeFormat::Po || table.units[i].state == UnitState::Fuzzy;
                QCOMPARE(again.units[i].state, isSaid ? table.units[i].state : UnitState::None);
            }
        }
    }
}

void tst_exchange::tools()
{
    const QString msgfmt = QStandardPaths::findExecutable(u"msgfmt"_s);
    const QString msgcat = QStandardPaths::findExecutable(u"msgcat"_s);
    if (msgfmt.isEmpty() || msgcat.isEmpty())
        QSKIP("gettext is not installed");
    ExchangeTable table = hostileTable(UnitState::Fuzzy);
    // The tools' own texts end at a code 0, and they complain of such as a bell.
    table.units.removeIf([](const ExchangeUnit &unit) { return unit.source.contains(u'\0'); });
    const TestFiles files;
    const QString path = files.write(u"a.po"_s, exchangeBytes(ExchangeFormat::Po, table));
    QProcess tool;
    tool.start(msgfmt, {u"--check"_s, u"-o"_s, files.path(u"a.mo"_s), path});
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(tool.readAllStandardError()), QString());
    tool.start(msgcat, {path});
    QVERIFY(tool.waitForFinished());
    const ExchangeTable again = readExchange(ExchangeFormat::Po, tool.readAllStandardOutput());
    QCOMPARE(again.units.size(), table.units.size());
    for (qsizetype i = 0; i < table.units.size(); ++i) {
        QCOMPARE(again.units[i].source, table.units[i].source);
        QCOMPARE(again.units[i].translation, table.units[i].translation);
        QCOMPARE(again.units[i].state, table.units[i].state);
    }
}

void tst_exchange::foreign_data()
{
    textTable(
        {"file", "bytes", "result"},
        {
            {u"as gettext writes", u"a.po",
             u"# by hand\r\nmsgid ``\r\nmsgstr `Content-Type: text/plain; charset=utf-8\\n`\r\n\r\n"
             "#. note\r\n#: w:1\r\n#, c-format, fuzzy\r\n#| msgid `old`\r\nmsgid ``\r\n `a\\n` `b`\r\n"
             "msgstr\t`\\x41\\102\\t`\r\nmsgid `c`\r\nmsgstr ``\r\n",
             u"9? a\nb=AB\t\n12 c=\n"},
            {u"obsolete", u"a.po",
             u"msgid `a`\nmsgstr `b`\n\n#, fuzzy\n#~ msgid `c`\n#~ msgstr `d`\n\nmsgid `e`\nmsgstr `f`",
             u"1 a=b\n8 e=f\n"},
            {u"contexts", u"a.po",
             u"msgctxt `x`\nmsgid `a`\nmsgstr `b`\nmsgctxt `y`\nmsgid `a`\nmsgstr `c`\n"
             "msgctxt `z`\nmsgid ``\nmsgstr `d`",
             u"2 a=b\n5 a=c\n!8 the source is empty\n"},
            {u"plural", u"a.po",
             u"msgid `a`\nmsgid_plural `as`\nmsgstr[0] `b`\nmsgstr[1] `c`\nmsgid `d`\nmsgstr `e`",
             u"5 d=e\n!1 a language has no plural forms\n"},
            {u"empty PO", u"a.po", u"", u""},
            {u"charset", u"a.po", u"\nmsgid ``\nmsgstr `Content-Type: text/plain; charset=ISO-8859-2\\n`",
             u"fails in 2: its charset is ISO-8859-2; only UTF-8 is read"},
            {u"no msgstr", u"a.po", u"msgid `a`\n\n#, fuzzy\n",
             u"fails in 1: there is no msgstr for this msgid"},
            {u"two msgids", u"a.po", u"msgid `a`\nmsgid `b`\n", u"fails in 2: msgid instead of msgstr"},
            {u"two msgstrs", u"a.po", u"msgid `a`\nmsgstr `b`\nmsgstr `c`",
             u"fails in 3: this is not a line of a PO file"},
            {u"only a context", u"a.po", u"msgctxt `a`", u"fails in 1: there is no msgid for this msgctxt"},
            {u"open quote", u"a.po", u"msgid `a\nmsgstr ``",
             u"fails in 1: a double quote is missing at the end of the line"},
            {u"open escape", u"a.po", u"msgid `a\\",
             u"fails in 1: a double quote is missing at the end of the line"},
            {u"no quote", u"a.po", u"msgid `a`\nmsgstr b", u"fails in 2: a text in double quotes is missing"},
            {u"loose text", u"a.po", u"msgid `a`\nmsgstr `b`\n#\n`c`",
             u"fails in 4: a text outside an entry"},
            {u"unknown escape", u"a.po", u"msgid `\\q`", u"fails in 1: `\\q` stands for nothing"},
            {u"bytes as escapes", u"a.po", u"msgid `\\xC3\\xA4`", u"fails in 1: `\\x` stands for nothing"},
            {u"no PO", u"a.PO", u"{\\rtf1}", u"fails in 1: this is not a line of a PO file"},

            {u"of other programs", u"a.xliff",
             u"<?xml version='1.0'?>\r\n<x:xliff version='1.1' xmlns:x='urn:x'><x:file><x:body><x:group>\r\n"
             "<x:trans-unit id='1' "
             "approved='yes'><x:source>a<x:mrk>b</x:mrk></x:source><x:target>c\r\n&lt;&#13;"
             "</x:target><x:alt-trans><x:source>x</x:source><x:target>y</x:target></x:alt-trans></"
             "x:trans-unit>\r\n"
             "<x:trans-unit id='2'><x:source><![CDATA[<d>]]></x:source><x:target state='needs-l10n'/>"
             "</x:trans-unit></x:group></x:body></x:file></x:xliff>",
             u"3+ ab=c\n<\n\n5? <d>=\n"},
            {u"inline elements", u"a.xlf",
             u"<xliff><trans-unit><source>a</source><target>b<g id='1'>c</g></target></trans-unit>\n"
             "<trans-unit><source><ph ctype='x-code-0041'/></source></trans-unit><trans-unit/></xliff>",
             u"!1 a language file has no element <g>\n!2 a language file has no element <ph>\n"
             "!2 the source is empty\n"},
            {u"DTD", u"a.xlf", u"<?xml version='1.0'?>\n<!DOCTYPE x [<!ENTITY a 'b'>]>\n<xliff/>",
             u"fails in 2: document types are not read"},
            {u"entity", u"a.xlf", u"<xliff>\n<trans-unit><source>&a;</source></trans-unit></xliff>",
             u"fails in 2: Entity 'a' not declared."},
            {u"version 2", u"a.xlf", u"<xliff version='2.0'></xliff>",
             u"fails in 1: this is XLIFF 2.0; only 1.2 is read"},
            {u"no XLIFF", u"a.xlf", u"<html/>", u"fails in 1: this is not an XLIFF file"},
            {u"cut off", u"a.xlf", u"<xliff>\n<trans-unit><source>a",
             u"fails in 2: Premature end of document."},
            {u"empty XLIFF", u"a.xlf", u"", u"fails in 1: Premature end of document."},

            {u"semicolons", u"a.csv", u"\uFEFFPlaces;translation;SOURCE\r\nx;b,c;a\r\n;`d``;\r\n`;e\r\n\r\n",
             u"2 a=b,c\n3 e=d`;\n\n"},
            {u"sep=", u"a.csv", u"sep=|\nSource|Translation|State\na|b| Fuzzy \nc|d|translated|",
             u"3? a=b\n4+ c=d\n"},
            {u"tabs in a .csv", u"a.csv", u"Source\tTranslation\na\tb,c\n", u"2 a=b,c\n"},
            {u"commas in a .tsv", u"a.tsv", u"Source,Translation\ra,b", u"2 a=b\n"},
            {u"cells too few and too many", u"a.csv", u"Source,Translation\na\nb,c,d\ne,f,,\n,g\n`h`,i`j`\n",
             u"4 e=f\n6 h=i`j`\n!2 a cell is missing\n!3 there are more cells than columns\n"
             "!5 the source is empty\n"},
            {u"open cell", u"a.csv", u"Source,Translation\na,b\nc,`d\ne,f\n",
             u"fails in 3: the double quote here has no other"},
            {u"behind a cell", u"a.csv", u"Source,Translation\n`a\nb`c,d",
             u"fails in 3: something stands behind a closing double quote"},
            {u"no columns", u"a.csv", u"a,b\nc,d",
             u"fails in 1: there are no columns Source and Translation"},
            {u"empty table", u"a.tsv", u"", u"fails in 1: there are no columns Source and Translation"},
        });
}

void tst_exchange::foreign()
{
    QFETCH(QString, file);
    QFETCH(QString, bytes);
    QFETCH(QString, result);
    QCOMPARE(read(file, bytes.toUtf8()), result);
}

void tst_exchange::hugeFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *file, const QByteArray &bytes, const char *reason) {
        QTest::newRow(name) << QString::fromLatin1(file) << bytes << QString::fromLatin1(reason);
    };
    constexpr int many = 2'000'000;
    row("nesting", "a.xlf", "<xliff>" + QByteArray("\n<a>").repeated(many),
        "fails in 65: elements are nested more than 64 deep");
    row("a tag of attributes", "a.xlf", "<xliff>\n<a" + QByteArray(" b='>'").repeated(many),
        "fails in 2: a tag is too long");
    QByteArray attributes;
    for (int i = 0; i < 65; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    row("attributes", "a.xlf", "<xliff>\n<a" + attributes + "/></xliff>",
        "fails in 2: an element has more than 64 attributes");
    row("refused", "a.csv", "Source,Translation\n" + QByteArray("a\n").repeated(many),
        "fails in 10002: more than 10,000 strings cannot be read; the last: a cell is missing");
    row("strings", "a.csv", "Source,Translation\n" + QByteArray("a,b\n").repeated(many),
        "fails in 1000002: there are more than 1,000,000 strings");
    row("cells", "a.csv", "Source,Translation\n" + QByteArray(",").repeated(many) + 'b',
        "!2 there are more cells than columns\n");
    row("UTF-16", "a.csv", QByteArray("\xFF\xFE\x41\0", 4), "fails in 1: this is not UTF-8");
    row("cut letter", "a.po", "msgid \"\xC3\xA4\"\nmsgstr \"\xC3\"", "fails in 2: this is not UTF-8");
}

void tst_exchange::hugeFiles()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    QCOMPARE(read(file, bytes), reason);
}

void tst_exchange::halfPairs()
{
    ExchangeTable table;
    table.units.append({QString(QChar(0xD800)), u"a"_s, UnitState::None, {}, 0});
    for (const ExchangeFormat format : kFormats)
        QVERIFY(failureOf([&] { exchangeBytes(format, table); }).contains(u"U+D800"));
}

void tst_exchange::plans_data()
{
    textTable(
        {"strings", "file", "plan"},
        {
            {u"each kind", u"a=x|b=|c=z|d=d|e= ", u"a=y|b=x|c=|d=d|e=\n",
             u"0 a:x>y; 1 b:>x; 2 c:z>; kinds 102"},
            {u"the first row of a source", u"a=x|a=y|=z", u"a=x", u""},
            {u"absent and unknown", u"a=x|b=y", u"c=z|b=y|c=z",
             u"unknown 1: the language has no `c`; absent 1"},
            {u"two translations", u"a=x|b=y", u"a=p|b=z|a=q|a=p",
             u"1 b:y>z; kinds 1; conflicting 3: `a` is translated otherwise in line 1"},
            {u"the same twice", u"a=x", u"a=p|a=p", u"0 a:x>p; kinds 1"},
            {u"markup", u"a=x|b=y", u"a=<p|b=z>|c=<",
             u"refused 1: a translation holds neither < nor >: `<p`; "
             "refused 2: a translation holds neither < nor >: `z>`; unknown 3: the language has no `c`"},
            {u"control characters", u"a=x|b=y", u"a=\x1b[2J|b=\ty",
             u"1 b:y>\ty; kinds 1; refused 1: a translation holds no control characters: `\x1b[2J`"},
            {u"ellipsis", u"a=x|b=y\u2026|c=z...", u"a=p\u2026|b=y\u2026|c=z\u2026", u"0 a:x>p...; kinds 1"},
            {u"line ends", u"a\r\nb=x\ry|c=\r\n", u"a\nb=x\ny|c=", u""},
        });
}

void tst_exchange::plans()
{
    QFETCH(QString, strings);
    QFETCH(QString, file);
    QFETCH(QString, plan);

    QList<ListRows::Row> rows;
    for (const QString &pair : strings.split(u'|'))
        rows.append({QString(), pair.split(u'=')});
    ExchangeTable table;
    for (const QString &pair : file.split(u'|'))
        table.units.append({pair.section(u'=', 0, 0),
                            pair.section(u'=', 1),
                            UnitState::None,
                            {},
                            int(table.units.size()) + 1});
    const ImportPlan made = planImport(rows, table, CodePage::Utf8);
    QStringList said;
    QString kinds;
    for (const ImportChange &change : made.changes) {
        said.append(QString::number(change.row) + u' ' + change.source + u':' + change.before + u'>' +
                    change.after);
        kinds += QString::number(int(change.kind()));
    }
    if (!kinds.isEmpty())
        said.append(u"kinds " + kinds);
    const std::pair<QString, const QList<LineNote> &> lists[] = {
        {u"refused "_s, made.refused}, {u"unknown "_s, made.unknown}, {u"conflicting "_s, made.conflicting}};
    for (const auto &[name, notes] : lists) {
        for (const LineNote &note : notes)
            said.append(name + QString::number(note.line) + u": " + note.text);
    }
    if (made.absent > 0)
        said.append(u"absent " + QString::number(made.absent));
    QCOMPARE(said.join(u"; "_s), plan);
}

QTEST_APPLESS_MAIN(tst_exchange)
#include "tst_exchange.moc"
