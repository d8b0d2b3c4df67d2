#include "catalogues/KeymapCatalogue.h"
#include "catalogues/PanelSettings.h"
#include "platform/ListRows.h"
#include "platform/TestFiles.h"

#include <QTest>

using namespace quillmere;

namespace {

QString rowsAsText(const ListRows &rows)
{
    QStringList lines;
    for (const ListRows::Row &row : rows.rows())
        lines.append(QString(row.text + u'|' + row.sub(1)));
    return lines.join(u' ');
}

// What is set, in the order of the settings page.
QString asText(const PanelSettings &settings)
{
    QStringList parts;
    for (const auto &choice : {settings.language, settings.scart, settings.spdif}) {
        if (choice)
            parts.append(choice->entries.join(u'/') + QStringLiteral("@%1").arg(choice->selected));
    }
    for (const auto &text : {settings.hardwareVersion, settings.softwareVersion, settings.userdefine1,
                             settings.userdefine2, settings.userdefine3}) {
        if (text)
            parts.append(*text);
    }
    for (const auto &level : {settings.transparence, settings.volume}) {
        if (level)
            parts.append(QStringLiteral("%1=%2%").arg(level->value).arg(level->percent));
    }
    if (settings.timeZone)
        parts.append(QStringLiteral("zone@%1").arg(timeZoneEntry(timeZones(), *settings.timeZone)));
    if (settings.summerTime)
        parts.append(QLatin1String(*settings.summerTime ? "summer" : "winter"));
    return parts.join(u' ');
}

} // namespace

class TestKeymapPanel : public QObject
{
    Q_OBJECT

private slots:
    void keymap_data();
    void keymap();
    void panel_data();
    void panel();
};

void TestKeymapPanel::keymap_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("groups"); // display|group
    QTest::addColumn<QString>("keys");   // name|code, of the group "ab"
    const auto row = [](const char *name, const QByteArray &xml, const char *groups, const char *keys) {
        QTest::newRow(name) << xml << QString::fromLatin1(groups) << QString::fromLatin1(keys);
    };
    row("blanks around the equals sign",
        "<item display = \"A\" group  =\"ab\"/><group name = \"ab\"><key name= \"k\" >1</key>", "A|ab",
        "k|1");
    row("capitals",
        "<ITEM display=\"A\" GROUP=\"ab\"/><GROUP NAME=\"AB\"><KEY name=\"k\">1</KEY><key NAME=\"l\">2</key>",
        "A|", "k|1");
    row("item without a group", "<item display=\"A\"/><item group=\"x\"/>", "|x", "");
    row("prefix of another", "<group name=\"abc\"><key name=\"k\">1</key></group>", "", "");
    row("first of two groups",
        "<group name=\"ab\"><key name=\"k\">1</key></group><key name=\"behind\">2</key>"
        "<group name=\"ab\"><key name=\"l\">3</key></group>",
        "", "k|1 behind|2");
    row("no keys", "<group name=\"ab\"/><key id=\"k\">1</key><group name=\"x\"><key name=\"k\">1</key>", "",
        "");
    row("empty", "", "", "");
}

void TestKeymapPanel::keymap()
{
    QFETCH(QByteArray, xml);
    const TestFiles files;
    const QString path = files.write(QStringLiteral("keymap.xml"), xml);
    ListRows groups({QString(), QString()}), keys({QString(), QString()});
    LoadKeymapList(groups, files.write(QStringLiteral("old.xml"), "<item group=\"old\"/>"));
    LoadKeymapList(groups, path);
    QTEST(rowsAsText(groups), "groups");
    // Keys are read from the file as it is at each click.
    files.write(QStringLiteral("keymap.xml"), "<group name=\"ab\"><key name=\"old\">0</key></group>");
    ShowKeyGroup(keys, path, QStringLiteral("ab"));
    QCOMPARE(rowsAsText(keys), QStringLiteral("old|0"));
    files.write(QStringLiteral("keymap.xml"), xml);
    ShowKeyGroup(keys, path, QStringLiteral("ab"));
    QTEST(rowsAsText(keys), "keys");
}

void TestKeymapPanel::panel_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char *name, const QByteArray &xml, const char *settings) {
        QTest::newRow(name) << xml << QString::fromLatin1(settings);
    };
    const QByteArray ab = "<list value=\"a\" display=\"A\"/><list value=\"b\" display=\"B\"/>";
    const QByteArray b = "<group name=\"language\" value = \"b\">" + ab;
    row("each list", b + "<group name=\"scart config\" value=\"a\">" + ab + "<group name=\"spdif config\">",
        "A/B@1 a - A/b - B@0 @0");
    row("no match takes the position of before", b + "<group name=\"scart config\" value=\"x\">" + ab,
        "A/B@1 a - A/b - B@1");
    row("no match behind a shorter list",
        b + "<group name=\"spdif config\"><list value=\"p\" display=\"P\"/>", "A/B@1 p - P@0");
    row("no match, shorter list",
        b + "<group name=\"spdif config\" value=\"x\"><list value=\"p\" display=\"P\"/>", "A/B@1 p - P@1");
    row("no match at all", "<group name=\"language\" value=\"B\">" + ab, "A/B@0");
    row("last of two matches", b + ab, "A/B/A/B@3");
    row("capitals", "<GROUP NAME=\"LANGUAGE\" value=\"b\">" + ab + "<LIST value=\"d\" display=\"D\"/>",
        "A/B@1");
    row("two names in one group", "<group name=\"language\" name=\"scart config\" value=\"b\">" + ab,
        "A/B@1 a - A/b - B@1");
    row("a PNG", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), "");

    const auto item = [&row](const char *name, const QByteArray &attributes, const char *settings) {
        row(name, "<group name=\"common\"><item name=\"" + attributes + "/>", settings);
    };
    item("texts", "hardware version\" value=\"1\"/><item userdefine3 value=\" 3 \"", "1  3 ");
    item("percentage is cut", "transparence\" value=\"128\"", "128=50%");
    item("percentage is exact", "Volume\" value=\"7\"", "7=28%");
    item("whole part", "volume\" value=\" -3.9x\"", "-3=-12%");
    item("no number", "volume\" value=\"x1\"", "0=0%");
    item("beyond any number", "transparence\" value=\"99999999999999999999\"", "1000000000=392156862%");
    item("two names in one item", "volume\" transparence value=\"25\"", "25=9% 25=100%");
    item("summer", "summer time\" value=\"1.5\"", "summer");
    item("no summer", "summer time\" value=\"2\"", "winter");
    item("item in capitals is part of the one before", "x\" value=\"1\"/><ITEM name=\"volume\" value=\"2\"",
         "1=4%");
    item("zone", "time zone\" value=\"-11\"", "zone@1");
    item("last zone", "time zone\" value=\"12\"", "zone@24");
    item("first zone is never found", "time zone\" value=\"-12\"", "zone@25");
    item("zone with its sign", "time zone\" value=\"+1\"", "zone@25");
}

void TestKeymapPanel::panel()
{
    QFETCH(QByteArray, xml);
    const TestFiles files;
    const auto settings = LoadPanelConfig(files.write(QStringLiteral("default.xml"), xml));
    QVERIFY(settings);
    QTEST(asText(*settings), "settings");
    QVERIFY(!LoadPanelConfig(files.write(QStringLiteral("empty.xml"))));
}

QTEST_APPLESS_MAIN(TestKeymapPanel)
#include "tst_keymappanel.moc"
