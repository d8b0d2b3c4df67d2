#include "catalogues/KeymapCatalogue.h"
#include "catalogues/PanelSettings.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "rows/ListRows.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString rowsAsText(const ListRows &rows)
{
    QString text;
    for (const ListRows::Row &row : rows.rows())
        text += QString(row.text + u'|' + row.sub(1) + u' ');
    return text.trimmed();
}

// What is set, in the order of the settings page.
QString asText(const PanelSettings &settings)
{
    QString text;
    for (const auto &choice : {settings.language, settings.scart, settings.spdif})
        text += choice ? QString(choice->entries.join(u'/') + u'@' + QString::number(choice->selected) + u' ')
                       : QString();
    for (const auto &level : {settings.transparence, settings.volume})
        text += level ? u"%1=%2% "_s.arg(level->value).arg(level->percent) : QString();
    if (settings.timeZone)
        text += u"zone@%1 "_s.arg(timeZoneEntry(timeZones(), *settings.timeZone));
    if (settings.summerTime)
        text += QLatin1String(*settings.summerTime ? "summer" : "winter");
    return text.trimmed();
}

} // namespace

class TestKeymapPanel : public QObject
{
    Q_OBJECT

private slots:
    void keymap_data()
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
            "<ITEM display=\"A\" GROUP=\"ab\"/><GROUP NAME=\"AB\"><KEY name=\"k\">1</KEY><key "
            "NAME=\"l\">2</key>",
            "A|", "k|1");
        row("first of two groups, not the one it begins",
            "<item display=\"A\"/><group name=\"abc\"><key name=\"j\">0</key><group name=\"ab\"><key "
            "name=\"k\">1</key>"
            "</group><key name=\"behind\">2</key><group name=\"ab\"><key name=\"l\">3</key>",
            "", "k|1 behind|2");
        row("no keys", "<group name=\"ab\"/><key id=\"k\">1</key><group name=\"x\"><key name=\"k\">1</key>",
            "", "");
    }

    void keymap()
    {
        QFETCH(QByteArray, xml);
        const TestFiles files;
        Files disk;
        const QString path = files.write(u"keymap.xml"_s, xml);
        ListRows groups({QString(), QString()}), keys({QString(), QString()});
        LoadKeymapList(groups, Document::open(disk, path));
        QTEST(rowsAsText(groups), "groups");
        Document keymap =
            Document::open(disk, files.write(u"k.xml"_s, "<group name=\"ab\"><key name=\"old\">"));
        ShowKeyGroup(keys, keymap, u"ab"_s);
        files.write(u"k.xml"_s, xml); // the group is read as it is now
        ShowKeyGroup(keys, keymap, u"ab"_s);
        QTEST(rowsAsText(keys), "keys");
    }

    void panel_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("settings");
        const auto row = [](const char *name, const QByteArray &xml, const char *settings) {
            QTest::newRow(name) << xml << QString::fromLatin1(settings);
        };
        const QByteArray ab = "<list value=\"a\" display=\"A\"/><list value=\"b\" display=\"B\"/>";
        const QByteArray b = "<group name=\"language\" value = \"b\">" + ab;
        row("each list",
            b + "<group name=\"scart config\" value=\"a\">" + ab + "<group name=\"spdif config\">",
            "A/B@1 a - A/b - B@0 @0");
        row("no match takes the position of before", b + "<group name=\"scart config\" value=\"x\">" + ab,
            "A/B@1 a - A/b - B@1");
        row("no match, shorter list",
            b + "<group name=\"spdif config\" value=\"x\"><list value=\"p\" display=\"P\"/>",
            "A/B@1 p - P@1");
        row("no match at all", "<group name=\"language\" value=\"B\">" + ab, "A/B@0");
        row("last of two matches, capitals",
            "<GROUP NAME=\"LANGUAGE\" value=\"b\">" + ab + ab + "<LIST value=\"b\"/>", "A/B/A/B@3");
        row("two names in one group", "<group name=\"language\" name=\"scart config\" value=\"b\">" + ab,
            "A/B@1 a - A/b - B@1");
        row("a PNG", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), "");

        const auto item = [&row](const char *name, const QByteArray &attributes, const char *settings) {
            row(name, "<group name=\"common\"><item name=\"" + attributes + "/>", settings);
        };
        item("percentage is cut", "transparence\" value=\"128\"", "128=50%");
        item("percentage is exact", "Volume\" value=\" 7.9x\"", "7=28%");
        item("beyond any number", "transparence\" value=\"99999999999999999999\"", "1000000000=392156862%");
        item("two names in one item", "volume\" transparence value=\"25\"", "25=9% 25=100%");
        item("summer", "summer time\" value=\"1.5\"", "summer");
        item("item in capitals is part of the one before",
             "x\" value=\"1\"/><ITEM name=\"volume\" value=\"2\"", "1=4%");
        item("last zone", "time zone\" value=\"12\"", "zone@24");
        item("first zone is never found", "time zone\" value=\"-12\"", "zone@25");
        item("zone with its sign", "time zone\" value=\"+1\"", "zone@25");
    }

    void panel()
    {
        QFETCH(QByteArray, xml);
        const TestFiles files;
        Files disk;
        const auto settings = LoadPanelConfig(Document::open(disk, files.write(u"default.xml"_s, xml)));
        QVERIFY(settings);
        QTEST(asText(*settings), "settings");
        QVERIFY(!LoadPanelConfig(Document::open(disk, files.write(u"empty.xml"_s))));
    }
};

QTEST_APPLESS_MAIN(TestKeymapPanel)
#include "tst_keymappanel.moc"
