#include "checks/CheckedFiles.h"
#include "commands/CheckCommand.h"

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QTextStream>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

struct Ran
{
    int status;
    QByteArray out;
    QString err;
};

Ran run(const QStringList &words)
{
    const CommandLine line = parseCommandLine(QStringList{u"quillmere"_s} + words);
    if (line.action != CommandLine::Action::Check)
        return {2, {}, line.text};
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    Ran ran;
    QTextStream err(&ran.err);
    ran.status = runCheck(line, readTextPicture, out, err);
    ran.out = out.data();
    return ran;
}

// An error, a warning, and notes.
class FaultyTheme
{
public:
    FaultyTheme()
    {
        files.write(u"my theme/theme.xml"_s,
                    "<config><file_widget>widget.xml</file_widget><file_image>i.xml</file_image></config>");
        files.write(u"my theme/widget.xml"_s, "<widget class=\"window\" name=\"w\"/>");
        files.write(
            u"my theme/w.xml"_s,
            "<widget name=\"b\">\n  <img>\xc3\x84\x01-</img><backcolor>\n[#000000]</backcolor></widget>");
        files.write(u"my theme/i.xml"_s, "<image id=\"x y\">a b.png</image>");
        files.write(u"my theme/a b.png"_s, "1x1");
    }
    QString folder() const { return files.path(u"my theme"_s); }

    TestFiles files;
};

} // namespace

class tst_checkreport : public QObject
{
    Q_OBJECT

private slots:
    void text();
    void json();
    void sarif();
    void exitStatus_data();
    void exitStatus();
    void cannotRun_data();
    void cannotRun();
    void exampleTheme();
    void rulesAreInTheManual();
};

void tst_checkreport::text()
{
    const FaultyTheme theme;
    QCOMPARE(QString::fromUtf8(run({u"check"_s, theme.folder()}).out),
             u"i.xml:1:12: note: Unused image \"x y\" (3 bytes) [unused-image]\n"
             "w.xml:2:8: error: There is no image \"\u00c4?-\" [unknown-image]\n"
             "w.xml:2:17: warning: 1 colour instead of 3 [colour-list]\n"
             "unused images take 3 bytes\n"
             "1 errors, 1 warnings, 1 notes\n"_s);
}

void tst_checkreport::json()
{
    const FaultyTheme theme;
    const QJsonArray all =
        QJsonDocument::fromJson(run({u"check"_s, theme.folder(), u"--format"_s, u"json"_s}).out).array();
    QCOMPARE(all.size(), 3);
    const QJsonObject expected = {{u"file"_s, u"w.xml"_s},
                                  {u"line"_s, 2},
                                  {u"column"_s, 8},
                                  {u"length"_s, 3},
                                  {u"severity"_s, u"error"_s},
                                  {u"rule"_s, u"unknown-image"_s},
                                  {u"message"_s, u"There is no image \"\u00c4?-\""_s}};
    QCOMPARE(all.at(1).toObject(), expected);
}

void tst_checkreport::sarif()
{
    const FaultyTheme theme;
    const QJsonObject log =
        QJsonDocument::fromJson(run({u"check"_s, theme.folder(), u"--format"_s, u"sarif"_s}).out).object();
    QCOMPARE(log[u"version"_s].toString(), u"2.1.0"_s);
    const QJsonObject once = log[u"runs"_s][0].toObject();
    const QJsonArray rules = once[u"tool"_s][u"driver"_s][u"rules"_s].toArray();
    QCOMPARE(rules.size(), kRules);
    const QJsonArray results = once[u"results"_s].toArray();
    QCOMPARE(results.size(), 3);
    for (const QJsonValue &result : results)
        QCOMPARE(rules[result[u"ruleIndex"_s].toInt()][u"id"_s], result[u"ruleId"_s]);
    const QJsonValue place = results[0][u"locations"_s][0][u"physicalLocation"_s];
    QCOMPARE(place[u"artifactLocation"_s][u"uri"_s].toString(), u"i.xml"_s);
    const QJsonObject region = {{u"startLine"_s, 1},  {u"startColumn"_s, 12}, {u"endLine"_s, 1},
                                {u"endColumn"_s, 15}, {u"charOffset"_s, 11},  {u"charLength"_s, 3}};
    QCOMPARE(place[u"region"_s].toObject(), region);
    const QJsonValue list = results[2][u"locations"_s][0][u"physicalLocation"_s];
    QCOMPARE(list[u"region"_s][u"endLine"_s].toInt(), 3); // of an element
}

void tst_checkreport::exitStatus_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("status");

    const auto row = [](const char *options, int status) {
        QTest::newRow(options) << QString::fromLatin1(options) << status;
    };
    row("", 1);
    row("--ignore unknown-image", 0);
    row("--ignore unknown-image:x", 1);
    row("--ignore unknown-image --fail-on warning", 1);
    row("--ignore unknown-image --ignore colour-list --fail-on warning", 0);
    row("--ignore unknown-image --ignore colour-list --fail-on note", 1);
    row("--fail-on none", 2);
    row("--format xml", 2);
    row("--ignore nothing", 2);
    row("--out x", 2);
}

void tst_checkreport::exitStatus()
{
    QFETCH(QString, options);
    QFETCH(int, status);

    const FaultyTheme theme;
    const Ran ran = run(QStringList{u"check"_s, theme.folder()} + options.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(ran.status, status);
    QCOMPARE(ran.out.isEmpty(), status == 2);
    QCOMPARE(ran.err.isEmpty(), status != 2);
    QCOMPARE(
        run({u"check"_s, theme.folder(), u"--ignore"_s, u"unused-image:x y"_s, u"--fail-on"_s, u"note"_s})
            .out.contains("unused-image"),
        false);
}

void tst_checkreport::cannotRun_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("no theme") << u"check"_s;
    QTest::newRow("no folder") << u"check FOLDER/none"_s;
    QTest::newRow("no theme.xml") << u"check FOLDER"_s;
    QTest::newRow("two") << u"check FOLDER FOLDER"_s;
    QTest::newRow("options without check") << u"FOLDER --format json"_s;
    QTest::newRow("view") << u"render FOLDER --out FOLDER --view both"_s;
    QTest::newRow("state") << u"render FOLDER --out FOLDER --view receiver --state 4"_s;
    QTest::newRow("no jobs") << u"render FOLDER --out FOLDER --jobs 0"_s;
    QTest::newRow("jobs of a check") << u"check FOLDER --jobs 2"_s;
    QTest::newRow("state of the preview") << u"render FOLDER --out FOLDER --state 2"_s;
}

void tst_checkreport::cannotRun()
{
    QFETCH(QString, words);

    const TestFiles files;
    const Ran ran = run(words.replace(u"FOLDER"_s, files.folder()).split(u' '));
    QCOMPARE(ran.status, 2);
    QVERIFY(ran.out.isEmpty());
    QVERIFY(!ran.err.isEmpty());
}

// What its README lists; that its pictures fit is not looked at.
void tst_checkreport::exampleTheme()
{
    const CommandLine line =
        parseCommandLine({u"quillmere"_s, u"check"_s, QStringLiteral(EXAMPLES_FOLDER "/aurora/theme")});
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QTextStream err(stderr);
    QCOMPARE(runCheck(
                 line,
                 [](const QByteArray &) {
                     return PictureReading{{}, true};
                 },
                 out, err),
             1);
    // Each of six languages lacks texts in sixteen windows, and has six that no window shows. Eight German
    // words are the English ones, as many Indonesian, and three Turkish.
    const QMap<QString, int> expected = {{u"duplicate-id"_s, 1},      {u"missing-document"_s, 1},
                                         {u"missing-font-file"_s, 8}, {u"missing-image-file"_s, 1},
                                         {u"unlisted-document"_s, 1}, {u"untranslated"_s, 6 * 16},
                                         {u"unused-colour"_s, 1},     {u"unused-image"_s, 2},
                                         {u"unused-string"_s, 6 * 6}, {u"same-as-source"_s, 8 + 8 + 3}};
    QMap<QString, int> counts;
    for (const QByteArray &problem : out.data().split('\n')) {
        if (problem.endsWith(']'))
            ++counts[QString::fromUtf8(problem.sliced(problem.lastIndexOf('[')).chopped(1).sliced(1))];
    }
    QCOMPARE(counts, expected);
}

void tst_checkreport::rulesAreInTheManual()
{
    QFile manual(QStringLiteral(EXAMPLES_FOLDER "/../docs/checks.md"));
    QVERIFY(manual.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(manual.readAll());
    for (int number = 0; number < kRules; ++number) {
        const RuleText &rule = textOf(Rule(number));
        const QString line = u"| `%1` | %2 | %3 |\n"_s.arg(QLatin1String(rule.id), nameOf(rule.severity),
                                                           QLatin1String(rule.explanation));
        QVERIFY2(text.contains(line), rule.id);
    }
}

QTEST_GUILESS_MAIN(tst_checkreport)
#include "tst_checkreport.moc"
