#include "RowsAsText.h"
#include "catalogues/ColourCatalogue.h"
#include "colorpicker/ColourValue.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "files/TextFile.h"
#include "markup/ColourCode.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

struct Colours
{
    ListRows rows{{{}, u"Nama"_s, u"Code"_s}, ListRows::Checks::Yes};
    ColourCatalogue catalogue{rows};
};

} // namespace

class TestColourCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void load()
    {
        const std::pair<QByteArray, QString> catalogues[] = {
            {"<colors>\r\n<color name=\"White\">#FFFFFF</color>\r\n</colors>", u"|White|#FFFFFF\n"_s},
            {"<COLOR  NAME=\"a\">1</COLOR>", u"||1\n"_s},
            {"<color  name   =  \"a\"> 1 </color>", u"|a| 1 \n"_s},
            {"<color id=\"a\">1</color><color/>", {}},
            {"<color name=\"a\"/<color name=\"b\"> 1 ", u"|a|\n|b| 1 \n"_s},
            {"<color name=\"a\">1</color><color name=\"a\">2</color>", u"|a|1\n|a|2\n"_s},
            {QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), {}},
            {"", {}}};
        const TestFiles files;
        Files disk;
        Colours colours;
        for (const auto &[xml, rows] : catalogues) {
            colours.catalogue.LoadColorList(Document::open(disk, files.write(u"color.xml"_s, xml)));
            QCOMPARE(rowsAsText(colours.rows.rows()), rows);
        }
        colours.catalogue.LoadColorList(Document::open(disk, u"none"_s));
        QCOMPARE(colours.catalogue.document.path(), u"none"_s);
    }

    void saveTwice()
    {
        const TestFiles files;
        Files disk;
        disk.backups().setFolder(files.path(u"backup"_s));
        Colours colours;
        const QString path =
            files.write(u"c.xml"_s, "<color name=\"b&\xe9\">#00ff00</color>\n<color name=\"\"></color>");
        for (int times = 0; times < 2; ++times) {
            colours.catalogue.LoadColorList(Document::open(disk, path, files.folder()));
            colours.catalogue.save(disk);
            QCOMPARE(files.read(u"c.xml"_s),
                     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<colors>\r\n"
                     "<color name=\"b&\xe9\">#00ff00</color>\r\n<color name=\"\"></color>\r\n</colors>\r\n");
        }
    }

    void values()
    {
        for (const auto &[value, code] : {std::pair(0x302010u, u"#102030"_s),
                                          {255u, u"#FF0000"_s},
                                          {16711680u, u"#0000FF"_s},
                                          {0u, u"#000000"_s}}) {
            QCOMPARE(colourCode(channelsOf(value | 0xff000000)), code);
            QCOMPARE(colourValue(channelsOf(code.toLower()).value()), value);
        }
        for (const QString &code : {u"#FFF"_s, u"#1234567"_s, u"#12345G"_s, u"# 12345"_s, u"#+12345"_s})
            QVERIFY2(!channelsOf(code), qPrintable(code));

        const std::tuple<QString, QString, int> typed[] = {
            {u"255"_s, u"255"_s, 255},   {u"256"_s, u"25"_s, 25},   {u"2595"_s, u"25"_s, 25},
            {u"1x999"_s, u"1x999"_s, 1}, {QString(), QString(), 0}, {QString(100000, u'9'), u"99"_s, 99}};
        for (const auto &[text, left, value] : typed) {
            QCOMPARE(text.left(validLength(text)), left);
            QCOMPARE(channelValue(left), value);
        }
    }
};

QTEST_APPLESS_MAIN(TestColourCatalogue)
#include "tst_colourcatalogue.moc"
