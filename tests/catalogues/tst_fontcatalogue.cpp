#include "catalogues/FontCatalogue.h"
#include "platform/TestFiles.h"

#include <QTest>

using namespace quillmere;

class TestFontCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void load_data();
    void load();
    void defaultSize();
};

void TestFontCatalogue::load_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("rows"); // name|file|size|style
    const auto row = [](const char *name, const QByteArray &xml, const char *rows) {
        QTest::newRow(name) << xml << QString::fromLatin1(rows);
    };
    row("plain",
        "<fonts>\r\n<font>\r\n<name>f</name><file>a.ttf</file><size> 18 </size><style>bold</style></font>\r\n"
        "<font><name>g</name></font></fonts>",
        "f|a.ttf| 18 |bold\ng|||normal\n");
    row("empty style", "<font><name>f</name><style></style></font>", "f|||normal\n");
    row("start tag in capitals", "<FONT><name>f</name></FONT>", "f|||normal\n");
    row("field in capitals", "<font><NAME>f</NAME><size>1</size></font>", "||1|normal\n");
    row("nothing in it", "<font></font><font>", "|||normal\n|||normal\n");
    row("attribute", "<font a=\"b\"><name>f</name></font>", "");
    row("closing tag missing", "<font><name>f</font>", "f</font>|||normal\n");
    row("empty", "", "");
}

void TestFontCatalogue::load()
{
    QFETCH(QByteArray, xml);
    const TestFiles files;
    ListRows lvFont({QString(), QStringLiteral("Name")});
    lvFont.add(QStringLiteral("old"));
    LoadFontList(lvFont, files.write(QStringLiteral("font.xml"), xml));
    QString actual;
    for (const ListRows::Row &row : lvFont.rows()) {
        QCOMPARE(row.text, QString());
        actual += row.subItems.join(u'|') + u'\n';
    }
    QTEST(actual, "rows");
}

void TestFontCatalogue::defaultSize()
{
    ListRows lvFont({QString()});
    lvFont.add({}, {QStringLiteral("Font_prog"), {}, QStringLiteral("10")});
    QCOMPARE(defaultFontSize(lvFont), QString());
    lvFont.add({}, {QStringLiteral("font_prog"), {}, QStringLiteral("20")});
    lvFont.add({}, {QStringLiteral("font_prog"), {}, QStringLiteral("30")});
    QCOMPARE(defaultFontSize(lvFont), QStringLiteral("20"));
}

QTEST_APPLESS_MAIN(TestFontCatalogue)
#include "tst_fontcatalogue.moc"
