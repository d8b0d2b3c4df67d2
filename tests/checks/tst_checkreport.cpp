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

namespace {

struct Ran
{
    int status;
    QByteArray out;
    QString err;
};

Ran run(const QStringList &words)
{
    const CommandLine line = parseCommandLine(QStringList{QStringLiteral("quillmere")} + words);
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
        files.write(QStringLiteral("my theme/theme.xml"),
                    "<config><file_widget>widget.xml</file_widget><file_image>i.xml</file_image></config>");
        files.write(QStringLiteral("my theme/widget.xml"), "<widget class=\"window\" name=\"w\"/>");
        files.write(
            QStringLiteral("my theme/w.xml"),
            "<widget name=\"b\">\n  <img>\xc3\x84\x01-</img><backcolor>\n[#000000]</backcolor></widget>");
        files.write(QStringLiteral("my theme/i.xml"), "<image id=\"x y\">a b.png</image>");
        files.write(QStringLiteral("my theme/a b.png"), "1x1");
    }
    QString folder() const { return files.path(QStringLiteral("my theme")); }

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
    QCOMPARE(QString::fromUtf8(run({QStringLiteral("check"), theme.folder()}).out),
             QStringLiteral("i.xml:1:12: note: Nothing uses the image \"x y\" (3 bytes) [unused-image]\n"
                            "w.xml:2:8: error: There is no image \"\u00c4?-\" [unknown-image]\n"
                            "w.xml:2:17: warning: The list holds 1 of three colours [colour-list]\n"
                            "unused images take 3 bytes\n"
                            "1 errors, 1 warnings, 1 notes\n"));
}

void tst_checkreport::json()
{
    const FaultyTheme theme;
    const QJsonArray all = QJsonDocument::fromJson(run({QStringLiteral("check"), theme.folder(),
                                                        QStringLiteral("--format"), QStringLiteral("json")})
                                                       .out)
                               .array();
    QCOMPARE(all.size(), 3);
    const QJsonObject expected = {
        {QStringLiteral("file"), QStringLiteral("w.xml")},
        {QStringLiteral("line"), 2},
        {QStringLiteral("column"), 8},
        {QStringLiteral("length"), 3},
        {QStringLiteral("severity"), QStringLiteral("error")},
        {QStringLiteral("rule"), QStringLiteral("unknown-image")},
        {QStringLiteral("message"), QStringLiteral("There is no image \"\u00c4?-\"")}};
    QCOMPARE(all.at(1).toObject(), expected);
}

void tst_checkreport::sarif()
{
    const FaultyTheme theme;
    const QJsonObject log = QJsonDocument::fromJson(run({QStringLiteral("check"), theme.folder(),
                                                         QStringLiteral("--format"), QStringLiteral("sarif")})
                                                        .out)
                                .object();
    QCOMPARE(log[QStringLiteral("version")].toString(), QStringLiteral("2.1.0"));
    const QJsonObject once = log[QStringLiteral("runs")][0].toObject();
    const QJsonArray rules =
        once[QStringLiteral("tool")][QStringLiteral("driver")][QStringLiteral("rules")].toArray();
    QCOMPARE(rules.size(), kRules);
    const QJsonArray results = once[QStringLiteral("results")].toArray();
    QCOMPARE(results.size(), 3);
    for (const QJsonValue &result : results)
        QCOMPARE(rules[result[QStringLiteral("ruleIndex")].toInt()][QStringLiteral("id")],
                 result[QStringLiteral("ruleId")]);
    const QJsonValue place = results[0][QStringLiteral("locations")][0][QStringLiteral("physicalLocation")];
    QCOMPARE(place[QStringLiteral("artifactLocation")][QStringLiteral("uri")].toString(),
             QStringLiteral("i.xml"));
    const QJsonObject region = {{QStringLiteral("startLine"), 1},   {QStringLiteral("startColumn"), 12},
                                {QStringLiteral("endLine"), 1},     {QStringLiteral("endColumn"), 15},
                                {QStringLiteral("charOffset"), 11}, {QStringLiteral("charLength"), 3}};
    QCOMPARE(place[QStringLiteral("region")].toObject(), region);
    const QJsonValue list = results[2][QStringLiteral("locations")][0][QStringLiteral("physicalLocation")];
    QCOMPARE(list[QStringLiteral("region")][QStringLiteral("endLine")].toInt(), 3); // of an element
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
    const Ran ran =
        run(QStringList{QStringLiteral("check"), theme.folder()} + options.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(ran.status, status);
    QCOMPARE(ran.out.isEmpty(), status == 2);
    QCOMPARE(ran.err.isEmpty(), status != 2);
    QCOMPARE(run({QStringLiteral("check"), theme.folder(), QStringLiteral("--ignore"),
                  QStringLiteral("unused-image:x y"), QStringLiteral("--fail-on"), QStringLiteral("note")})
                 .out.contains("unused-image"),
             false);
}

void tst_checkreport::cannotRun_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("no theme") << QStringLiteral("check");
    QTest::newRow("no folder") << QStringLiteral("check FOLDER/none");
    QTest::newRow("no theme.xml") << QStringLiteral("check FOLDER");
    QTest::newRow("two") << QStringLiteral("check FOLDER FOLDER");
    QTest::newRow("options without check") << QStringLiteral("FOLDER --format json");
}

void tst_checkreport::cannotRun()
{
    QFETCH(QString, words);

    const TestFiles files;
    const Ran ran = run(words.replace(QStringLiteral("FOLDER"), files.folder()).split(u' '));
    QCOMPARE(ran.status, 2);
    QVERIFY(ran.out.isEmpty());
    QVERIFY(!ran.err.isEmpty());
}

// What its README lists; that its pictures fit is not looked at.
void tst_checkreport::exampleTheme()
{
    const CommandLine line = parseCommandLine({QStringLiteral("quillmere"), QStringLiteral("check"),
                                               QStringLiteral(EXAMPLES_FOLDER "/aurora/theme")});
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
    // Each of six languages lacks texts in sixteen windows, and has six that no window shows.
    const QMap<QString, int> expected = {
        {QStringLiteral("duplicate-id"), 1},      {QStringLiteral("missing-document"), 1},
        {QStringLiteral("missing-font-file"), 8}, {QStringLiteral("missing-image-file"), 1},
        {QStringLiteral("unlisted-document"), 1}, {QStringLiteral("untranslated"), 6 * 16},
        {QStringLiteral("unused-colour"), 1},     {QStringLiteral("unused-image"), 2},
        {QStringLiteral("unused-string"), 6 * 6}};
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
        const QString line =
            QStringLiteral("| `%1` | %2 | %3 |\n")
                .arg(QLatin1String(rule.id), nameOf(rule.severity), QLatin1String(rule.explanation));
        QVERIFY2(text.contains(line), rule.id);
    }
}

QTEST_GUILESS_MAIN(tst_checkreport)
#include "tst_checkreport.moc"
