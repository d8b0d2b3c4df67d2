#include "checks/CheckedFiles.h"
#include "checks/Mends.h"
#include "files/Files.h"

#include <QTest>

using namespace quillmere;

namespace {

ThemeFiles smallTheme()
{
    return {
        {QStringLiteral("theme.xml"),
         "<config><file_widget>widget.xml</file_widget><file_image>i.xml</file_image>"
         "<file_font>f.xml</file_font><file_color>c.xml</file_color><file_i18n>l.xml</file_i18n></config>"},
        {QStringLiteral("l.xml"), "<language id=\"German\">g.xml</language>"},
        {QStringLiteral("g.xml"), "<language name=\"German\">\n\t<tran id=\"A\">x</tran>\n</language>"},
        {QStringLiteral("widget.xml"),
         "<interface>\r\n    <widget class=\"window\" name=\"w\"/>\r\n</interface>\r\n"},
        {QStringLiteral("w.xml"), "<widget name=\"b\">\r\n  <img>bg_main</img></widget>"},
        {QStringLiteral("i.xml"), "<image id=\"bg_main\">p.png</image>"},
        {QStringLiteral("p.png"), "1x1"},
        {QStringLiteral("f.xml"), "<fonts>\n</fonts>"},
        {QStringLiteral("c.xml"), "<color name=\"navy\">#000080</color>"}};
}

} // namespace

class tst_mends : public QObject
{
    Q_OBJECT

private slots:
    void mends_data();
    void mends();
    void ofOpenRows();
};

void tst_mends::mends_data()
{
    QTest::addColumn<QString>("file"); // that has the fault
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("titles"); // of all mends
    QTest::addColumn<QString>("mended"); // the file that the first one changes
    QTest::addColumn<QByteArray>("after");

    const auto row = [](const char *name, const char *file, const QByteArray &text, const char *rule,
                        const char *titles, const char *mended, const QByteArray &after) {
        QTest::newRow(name) << QString::fromLatin1(file) << text << QString::fromLatin1(rule)
                            << QString::fromLatin1(titles) << QString::fromLatin1(mended) << after;
    };
    row("nearest name", "w.xml", "<widget>\r\n<img>bg_mian</img></widget>", "unknown-image",
        "Change to \"bg_main\"", "w.xml", "<widget>\r\n<img>bg_main</img></widget>");
    row("no near name", "w.xml", "<widget><img>quite_other</img></widget>", "unknown-image", "", "", "");
    row("in a list", "w.xml", "<widget><backcolor>[navi, #000000,navy]</backcolor></widget>",
        "unknown-colour", "Change to \"navy\"", "w.xml",
        "<widget><backcolor>[navy, #000000,navy]</backcolor></widget>");
    row("letter case", "w.xml", "<widget><img>BG_main</img></widget>", "letter-case", "Change to \"bg_main\"",
        "w.xml", "<widget><img>bg_main</img></widget>");
    row("file in other letters", "f.xml", "<font><name>n</name><file>P.PNG</file></font>", "letter-case",
        "Change to \"p.png\"", "f.xml", "<font><name>n</name><file>p.png</file></font>");
    row("file of theme.xml in other letters", "theme.xml", "<config><file_x>P.png</file_x></config>",
        "letter-case", "Change to \"p.png\"", "theme.xml", "<config><file_x>p.png</file_x></config>");
    row("entry of theme.xml", "theme.xml", "<config>\n<file_x>nothing</file_x>\n</config>", "theme-config",
        "Remove \"file_x\" from \"theme.xml\"", "theme.xml", "<config>\n</config>");
    row("nearest file", "f.xml", "<font><name>n</name><file>./q.png</file></font>", "missing-font-file",
        "Change to \"./p.png\"|Remove \"n\" from \"f.xml\"", "f.xml",
        "<font><name>n</name><file>./p.png</file></font>");
    row("strings that a language lacks", "w.xml",
        "<widget><string>One</string><string>A</string><string>Two</string></widget>", "untranslated",
        "Add 2 rows to \"g.xml\" and go there", "g.xml",
        "<language name=\"German\">\n\t<tran id=\"A\">x</tran>\n\t<tran id=\"One\"></tran>\n"
        "\t<tran id=\"Two\"></tran>\n</language>");
    row("closing tag", "w.xml", "<widget>\n</x>\n</widget>", "unclosed-element", "Remove \"</x>\"", "w.xml",
        "<widget>\n</widget>");
    row("mode", "w.xml", "<widget name=\"b\"><mode>single</mode><l_img>bg_main</l_img></widget>", "mode",
        "Change to \"multiple\"", "w.xml",
        "<widget name=\"b\"><mode>multiple</mode><l_img>bg_main</l_img></widget>");
    row("row with its line", "f.xml", "<fonts>\n  <font><name>n</name><file>p.png</file></font>\n</fonts>",
        "unused-font", "Remove \"n\" from \"f.xml\"", "f.xml", "<fonts>\n</fonts>");
    row("row among others", "widget.xml",
        "<interface><widget class=\"window\" name=\"w\"/><widget class=\"window\" "
        "name=\"gone\"/></interface>",
        "missing-document", "Remove \"gone\" from \"widget.xml\"", "widget.xml",
        "<interface><widget class=\"window\" name=\"w\"/></interface>");
    row("document", "new.xml", "<interface/>", "unlisted-document", "Add \"new\" to \"widget.xml\"",
        "widget.xml",
        "<interface>\r\n    <widget class=\"window\" name=\"w\"/>\r\n"
        "    <widget class=\"window\" style=\"default\" name=\"new\"/>\r\n</interface>\r\n");
    row("blanks", "g.xml", "<language name=\"German\"><tran id=\" A\">x</tran></language>", "blank-ends",
        "Change to \" x\"", "g.xml", "<language name=\"German\"><tran id=\" A\"> x</tran></language>");
    row("mark at the end", "g.xml",
        "<language name=\"German\">\n<tran id=\"Sure?\">Sicher!</tran></language>", "end-punctuation",
        "Change to \"Sicher?\"", "g.xml",
        "<language name=\"German\">\n<tran id=\"Sure?\">Sicher?</tran></language>");
    row("mark in brackets", "g.xml", "<language name=\"German\"><tran id=\"(Sure?)\">(Ja)</tran></language>",
        "end-punctuation", "", "", "");
    row("source twice", "g.xml",
        "<language name=\"German\">\n<tran id=\"A\">x</tran>\n<tran id=\"A\">x</tran>\n</language>",
        "duplicate-source", "Remove \"A\" from \"g.xml\"", "g.xml",
        "<language name=\"German\">\n<tran id=\"A\">x</tran>\n</language>");
    row("nothing mends it", "w.xml", "<widget><rect>1</rect></widget>", "bad-rect", "", "", "");
}

void tst_mends::mends()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, text);
    QFETCH(QString, rule);
    QFETCH(QString, titles);
    QFETCH(QString, mended);
    QFETCH(QByteArray, after);

    const TestFiles files;
    ThemeFiles theme = smallTheme();
    theme[file] = text;
    for (auto each = theme.cbegin(); each != theme.cend(); ++each)
        files.write(QStringLiteral("theme/") + each.key(), *each);
    ThemeSources sources;
    sources.folder = files.path(QStringLiteral("theme"));
    PictureStore pictures(readTextPicture);
    const auto index = ThemeIndex::build(sources);
    const CheckedTheme checked = checkTheme(sources, *index, pictures).value();
    const QList<Problem> &problems = checked.problems;
    const auto problem = std::find_if(problems.begin(), problems.end(), [&](const Problem &each) {
        return each.rule == ruleOf(rule) && each.file.endsWith(u'/' + file);
    });
    QVERIFY(problem != problems.end());

    const QList<Mend> found = mendsFor(
        *problem, {sources, *index, [](const QString &) { return std::optional<QList<ListRows::Row>>(); }});
    QStringList names;
    for (const Mend &mend : found)
        names.append(mend.title);
    QCOMPARE(names.join(u'|'), titles);
    if (found.isEmpty())
        return;
    Files disk;
    disk.backups().setFolder(files.path(QStringLiteral("backup")));
    found.first().edit.apply({disk, sources.folder});
    QCOMPARE(files.read(QStringLiteral("theme/") + mended), after);
    QVERIFY(found.first().before != found.first().after);
}

void tst_mends::ofOpenRows()
{
    const TestFiles files;
    ThemeFiles theme = smallTheme();
    theme[QStringLiteral("w.xml")] = "<widget><img>new</img></widget>";
    for (auto each = theme.cbegin(); each != theme.cend(); ++each)
        files.write(QStringLiteral("theme/") + each.key(), *each);
    ThemeSources sources;
    sources.folder = files.path(QStringLiteral("theme"));
    PictureStore pictures(readTextPicture);
    const auto index = ThemeIndex::build(sources);
    QList<ListRows::Row> images = {{files.path(QStringLiteral("theme/p.png")), {QStringLiteral("bg_main")}}};
    class Rows : public OpenRows
    {
    public:
        explicit Rows(QList<ListRows::Row> &rows) : m_rows(rows) {}
        QList<ListRows::Row> rows() const override { return m_rows; }
        void apply(const QList<RowChange> &changes) override { m_rows = *changedRows(m_rows, changes); }

    private:
        QList<ListRows::Row> &m_rows;
    } rows(images);
    const MendedTheme mended = {sources, *index, [&](const QString &path) {
                                    return path.endsWith(u"i.xml") ? std::optional(images) : std::nullopt;
                                }};
    Files disk;
    const EditTargets targets = {disk, sources.folder, [](const QString &) { return nullptr; },
                                 [&](const QString &) { return &rows; }};
    // The image that is missing gets a row, and the one that nothing uses loses its own.
    const CheckedTheme checked = checkTheme(sources, *index, pictures).value();
    for (const Problem &problem : checked.problems) {
        if (problem.rule == Rule::UnknownImage || problem.rule == Rule::UnusedImage)
            mendsFor(problem, mended).value(0).edit.apply(targets);
    }
    QCOMPARE(images.size(), 1);
    // A row that has come since is not taken for another.
    for (const Problem &problem : checked.problems) {
        if (problem.rule == Rule::UnusedImage)
            QVERIFY(mendsFor(problem, mended).isEmpty());
    }
    QCOMPARE(images[0].sub(1), QStringLiteral("new"));
    QCOMPARE(images[0].text, files.path(QStringLiteral("theme/new.png")));
}

QTEST_GUILESS_MAIN(tst_mends)
#include "tst_mends.moc"
