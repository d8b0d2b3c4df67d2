#include "app/WindowFixture.h"

#include "commands/forms/CompareCommand.h"
#include "commands/forms/SheetCommand.h"

#include <QRegularExpression>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

struct Ran
{
    int status = -1;
    QString out, err;
};

using Command = int (*)(const CommandLine &, QTextStream &, QTextStream &);

Ran run(Command command, const QStringList &words)
{
    const CommandLine line = parseCommandLine(QStringList{u"quillmere"_s} + words);
    Ran ran;
    QTextStream out(&ran.out), err(&ran.err);
    ran.status = line.action == CommandLine::Action::Fail ? 2 : command(line, out, err);
    return ran;
}

QByteArray box(const char *colour, const char *size = "1024,576")
{
    return QByteArray("<widget class=\"box\" name=\"b\"><property><rect>[0,0,") + size +
           "]</rect><backcolor>[" + colour + "]</backcolor></property></widget>";
}

// Windows in the order of the catalogue; those without a text have no document.
void writeTheme(const TestFiles &files, const QString &folder,
                const QList<std::pair<QByteArray, QByteArray>> &windows)
{
    QByteArray catalogue;
    for (const auto &[name, text] : windows) {
        catalogue += "<widget class=\"window\" name=\"" + name + "\"/>";
        if (!text.isEmpty())
            files.write(folder + u'/' + QLatin1String(name) + u".xml", text);
    }
    files.write(folder + u"/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
    files.write(folder + u"/widget.xml", catalogue);
}

} // namespace

class TestSheetCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        writeTheme(
            m_files, u"theme"_s,
            {{"red", box("#ff0000")}, {"none", {}}, {"blue", box("#0000ff")}, {"a&lt;b", box("#00ffff")}});
    }

    void picture()
    {
        const Ran ran = sheet(u"sheet.png"_s, {u"--columns"_s, u"3"_s});
        QCOMPARE(ran.status, 1);
        QVERIFY(ran.err.contains(u"none: no document"_s));
        const QImage whole(m_files.path(u"sheet.png"_s));
        QCOMPARE(whole.size(), QSize(3 * 332 + 12, 2 * (180 + 22 + 12) + 12));
        QCOMPARE(whole.pixelColor(100, 100), QColor(Qt::red));
        QCOMPARE(whole.pixelColor(12 + 2 * 332 + 100, 100), QColor(Qt::blue));
        QCOMPARE(whole.pixelColor(100, 214 + 100), QColor(Qt::cyan));
        QCOMPARE(whole.pixelColor(6, 6), whole.pixelColor(12 + 332 + 160, 40)); // nothing there
    }

    void page()
    {
        QCOMPARE(sheet(u"sheet.html"_s).status, 1);
        const QByteArray text = m_files.read(u"sheet.html"_s);
        QVERIFY(text.contains("repeat(4,"));
        QVERIFY(!text.contains("a<b") && !text.contains("<script") && !text.contains("href"));
        QList<QColor> colours;
        static const QRegularExpression data(u"data:image/png;base64,([^\"]+)"_s);
        for (auto found = data.globalMatch(QString::fromLatin1(text)); found.hasNext();)
            colours.append(QImage::fromData(QByteArray::fromBase64(found.next().captured(1).toLatin1()))
                               .pixelColor(160, 90));
        QCOMPARE(colours, (QList<QColor>{Qt::red, Qt::blue, Qt::cyan}));
    }

    void pages()
    {
        QCOMPARE(sheet(u"sheet.pdf"_s, {u"--columns"_s, u"1"_s}).status, 1);
        const QByteArray pdf = m_files.read(u"sheet.pdf"_s);
        QVERIFY(pdf.startsWith("%PDF-"));
        QCOMPARE(pdf.count("/Type /Page\n"), 4);
    }

    // What cannot be done leaves what is there as it is.
    void refused_data()
    {
        QTest::addColumn<QString>("words");
        QTest::newRow("suffix") << u"sheet FOLDER/theme --out FOLDER/kept.jpg"_s;
        QTest::newRow("no theme") << u"sheet FOLDER/nowhere --out FOLDER/kept.png"_s;
        QTest::newRow("no columns") << u"sheet FOLDER/theme --out FOLDER/kept.png --columns 0"_s;
        QTest::newRow("language") << u"sheet FOLDER/theme --out FOLDER/kept.html --language None"_s;
        QTest::newRow("no folder") << u"sheet FOLDER/theme --out FOLDER/none/kept.png"_s;
        QTest::newRow("one theme") << u"compare FOLDER/theme --out FOLDER/kept"_s;
        QTest::newRow("no other theme") << u"compare FOLDER/theme FOLDER/none --out FOLDER/kept"_s;
        QTest::newRow("no theme.xml") << u"compare FOLDER/theme FOLDER --out FOLDER/kept"_s;
        QTest::newRow("no report") << u"compare FOLDER/theme FOLDER/theme"_s;
        QTest::newRow("no room") << u"compare FOLDER/theme FOLDER/theme --out FOLDER/kept.png"_s;
    }

    void refused()
    {
        QFETCH(QString, words);
        m_files.write(u"kept.png"_s, "kept");
        m_files.write(u"kept.html"_s, "kept");
        words.replace(u"FOLDER"_s, m_files.folder());
        const Ran ran = run(words.startsWith(u"sheet"_s) ? writeSheet : compareThemes, words.split(u' '));
        QCOMPARE(ran.status, 2);
        for (const char *kept : {"kept.png", "kept.html"})
            QCOMPARE(m_files.read(QLatin1String(kept)), QByteArray("kept"));
        QCOMPARE(QDir(m_files.folder()).entryList({u".quillmere*"_s}, QDir::Files | QDir::Hidden),
                 QStringList());
    }

    void compare()
    {
        writeTheme(m_files, u"other"_s,
                   {{"a&lt;b", box("#00ffff")},
                    {"red", box("#ff0000", "1024,570")},
                    {"none", {}},
                    {"new", box("#fff")}});
        const QStringList words = {u"compare"_s, m_files.path(u"theme"_s), m_files.path(u"other"_s),
                                   u"--out"_s, m_files.path(u"report"_s)};
        const Ran ran = run(compareThemes, words);
        QCOMPARE(ran.status, 1);
        QVERIFY2(ran.out.startsWith(u"red: 6144 pixels differ\nblue: only in "_s), qPrintable(ran.out));
        QVERIFY(ran.out.contains(u"3 of 5 windows differ"_s));
        QCOMPARE(
            QDir(m_files.path(u"report"_s)).entryList(QDir::Files).join(u' '),
            u"blue.before.png index.html new.after.png red.after.png red.before.png red.difference.png"_s);
        const QImage difference(m_files.path(u"report/red.difference.png"_s));
        QCOMPARE(difference.pixelColor(5, 570), QColor(0xe0, 0, 0));
        QVERIFY(difference.pixelColor(5, 569) != QColor(0xe0, 0, 0));
        QVERIFY(m_files.read(u"report/index.html"_s).contains("6144 pixels differ"));

        QStringList same = words;
        same[2] = words[1];
        QCOMPARE(run(compareThemes, same).status, 0);
        QVERIFY(m_files.read(u"report/index.html"_s).contains("0 of 4 windows differ"));
    }

    // They would be black, and never differ.
    void hiddenWindows()
    {
        const auto hidden = [](const char *colour) -> QByteArray {
            return QByteArray("<widget class=\"box\"><property><rect>[0,0,1024,576]</rect><backcolor>[") +
                   colour + "]</backcolor><state>hide</state></property></widget>";
        };
        writeTheme(m_files, u"closed"_s, {{"w", hidden("#ff0000")}});
        writeTheme(m_files, u"closed2"_s, {{"w", hidden("#0000ff")}});
        const QString closed = m_files.path(u"closed"_s), out = m_files.path(u"closed.png"_s);
        QCOMPARE(run(writeSheet, {u"sheet"_s, closed, u"--out"_s, out}).status, 0);
        const QColor seen = QImage(out).pixelColor(100, 100);
        QVERIFY2(std::abs(seen.red() - 128) < 2 && seen.blue() == 0, qPrintable(seen.name()));
        const Ran ran = run(compareThemes, {u"compare"_s, closed, m_files.path(u"closed2"_s), u"--out"_s,
                                            m_files.path(u"closed report"_s)});
        QVERIFY2(ran.out.startsWith(u"w: 589824 pixels differ"_s), qPrintable(ran.out + ran.err));
    }

private:
    Ran sheet(const QString &file, const QStringList &more = {}) const
    {
        return run(writeSheet,
                   QStringList{u"sheet"_s, m_files.path(u"theme"_s), u"--out"_s, m_files.path(file)} + more);
    }

    const TestFiles m_files;
};

WINDOW_TEST_MAIN(TestSheetCommands)
#include "tst_sheetcommands.moc"
