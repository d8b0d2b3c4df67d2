#include "widgets/WidgetDocument.h"

#include <QTest>

using namespace quillmere;

class TestWidgetDocument : public QObject
{
    Q_OBJECT

private slots:
    void cuts_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const char *document, const QString &blocks) {
            QTest::newRow(name) << QString::fromLatin1(document) << blocks.split(u'|', Qt::SkipEmptyParts);
        };
        row("empty", "", {});
        row("no widget", "<interface><widgets></widget></interface>", {});
        row("nested, a style, other letters",
            "<interface><Widget a><children><widget b/></CHILDREN></WIDGET><Style c>",
            QStringLiteral("a>|b/></div>|c>"));
        row("names", "<widget name=\"a\" Name=\"b\" rename=\"c\"\tname=\"d\">",
            QStringLiteral("id=\"a\" id=\"b\" rename=\"c\"\tname=\"d\">"));
        row("signals", "<widget a><SIGNAL>s</signal><signals>", QStringLiteral("a><!--s--><signals>"));
        row("comments stay", "<widget a><!-- <widget b --><signal>", QStringLiteral("a><!-- |b --><!--"));
        row("made by what goes away", "<wid<children>get a</wid</children>get><st</Children>yle b",
            QStringLiteral("a</div>|b"));
        row("not looked at again", "<widget a<chi<children>ldren>", QStringLiteral("a<children>"));
        QTest::newRow("nothing between") << QStringLiteral("<widget <widget ") << QStringList{{}, {}};
    }

    void cuts()
    {
        QFETCH(QString, document);
        const WidgetBlocks cut = cutBlocks(document);
        QStringList blocks;
        for (const QStringView block : cut.blocks)
            blocks += block.toString();
        QTEST(blocks, "blocks");
    }

    void findsLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("position");
        const auto row = [](const char *name, const char *text, const char *block, int position) {
            QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(block) << position;
        };
        row("first line", "  <widget name=\"a\">\r\n", "a", 0);
        row("third line", "x\r\n\r\n  name=\"ok\"\r\nok", "OK", 5);
        row("earlier in another's text", "x\r\n<string>an okay</string>\r\nname=\"ok\"", "ok", 3);
        row("behind a line feed alone", "x\r\ny\nok", "ok", 3);
        row("at the start of a line", "x\r\nok", "ok", 3);
        row("name with a line break", "xy\r\nok", "\nok", 4);
        row("name that begins with a line break", "x\r\ny\r\nok", "\r\nok", 3);
        row("absent", "x\r\ny", "ok", 0);
        row("empty name", "x\r\ny", "", 0);
        row("empty text", "", "ok", 0);
    }

    void findsLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QTEST(int(lineOfBlock(text, name)), "position");
    }
};

QTEST_APPLESS_MAIN(TestWidgetDocument)
#include "tst_widgetdocument.moc"
