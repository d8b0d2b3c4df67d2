#include "widgets/RectCommands.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString nameOf(ScaleResult result)
{
    static const char *names[] = {"Nothing", "TooLarge", "TooSmall", ""};
    return QLatin1String(names[int(result)]);
}

} // namespace

class TestRectCommands : public QObject
{
    Q_OBJECT

private slots:
    void scale_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("scaled"); // by 0.8 on a screen of 1280 x 720
        const auto one = [](const char *name, const char *rect, const char *scaled) {
            const QString outcome = QLatin1String(scaled);
            QTest::newRow(name) << QString(QLatin1String("<rect>") + QLatin1String(rect) +
                                           QLatin1String("</rect>"))
                                << (outcome.startsWith(u'[') ? QString(u"<rect>" + outcome + u"</rect>")
                                                             : outcome);
        };
        one("whole results stay whole", "[35,45,500,400]", "[28,36,400,320]");
        one("cut, not rounded", "[-9,9,501,400]", "[-7,7,400,320]");
        one("fractions and blanks", "[1.5,+2,500.0, 400]", "[1,1,400,320]");
        one("just wide enough", "[0,0,125,13]", "[0,0,100,10]");
        one("too narrow", "[0,0,124,100]", "TooSmall");
        one("too low", "[0,0,500,12]", "TooSmall");
        one("too wide", "[0,0,1602,100]", "TooLarge");
        one("too high", "[0,0,100,902]", "TooLarge");
        one("three numbers", "[1,2,3]", "Nothing");
        one("text", "[a,2,300,400]", "Nothing");
        one("thirty digits of x", "[100000000000000000000000000001,2,300,400]",
            "[80000000000000000000000000000,1,240,320]");
        one("thirty digits of width", "[0,2,100000000000000000000000000000,400]", "TooLarge");
        one("thirty digits below", "[0,2,300,-100000000000000000000000000000]", "TooSmall");
        QTest::newRow("any letter case") << "<rect>[0,0,1000,500]</rect><RECT>[10,20,30,40]</rect>"
                                         << "<rect>[0,0,800,400]</rect><rect>[8,16,24,32]</rect>";
        QTest::newRow("the screen in any letter case")
            << "<Rect>[0,0,2000,1200]</rect><rect>[0,0,1000,500]</rect>"
            << "TooLarge";
        QTest::newRow("none in small letters") << "<Rect>[0,0,1000,500]</rect>"
                                               << "Nothing";
        QTest::newRow("no end in small letters") << "<rect>[0,0,1000,500]</RECT>"
                                                 << "Nothing";
        QTest::newRow("blanks around the brackets")
            << "<rect> [0,0,1000,500] </rect><rect>[10,20,30,40]</rect>"
            << "<rect> [0,0,1000,500] </rect><rect>[8,16,24,32]</rect>";
    }

    void scale()
    {
        QFETCH(QString, text);
        QFETCH(const QString, scaled);
        const QString before = text;
        const ScaleResult result = ScaleRects(text, 4, 5, u"1280"_s, u"720"_s);
        QCOMPARE(result == ScaleResult::Scaled ? text : nameOf(result), scaled);
        QVERIFY((text == before) == (result != ScaleResult::Scaled));
        QCOMPARE(ScaleRects(text, 4, 5, u"wide"_s, u"720"_s), ScaleResult::Nothing);
    }

    void move_data()
    {
        QTest::addColumn<QString>("rect");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("moved"); // to the top
        const auto row = [](const char *name, const char *rect, const char *answer, const char *moved) {
            QTest::newRow(name) << rect << answer << moved;
        };
        row("down", "<rect>[10,20.9,30,40]</rect>", "5", "<rect>[10,25,30,40]</rect>");
        row("up, rounded down", "<rect>[10,20.9,30,40]</rect>", "-5.5", "<rect>[10,14,30,40]</rect>");
        row("no number", "<rect>[10,20,30,40]</rect>", "5px", "<rect>[10,20,30,40]</rect>");
        row("nothing", "<rect>[10,20,30,40]</rect>", "", "<rect>[10,20,30,40]</rect>");
        row("others are no numbers", "<rect>[x,20,<w>,100000000000000000000]</rect>", "5",
            "<rect>[x,25,<w>,100000000000000000000]</rect>");
        row("others in another letter case", "<rect>[x,20,w,h]</rect><RECT>[X,20,W,H]</rect>", "5",
            "<rect>[x,25,w,h]</rect><rect>[x,25,w,h]</rect>");
        row("capital letters", "<RECT>[10,20,30,40]</RECT>", "5", "<RECT>[10,20,30,40]</RECT>");
    }

    void move()
    {
        QFETCH(QString, rect);
        QFETCH(const QString, answer);
        QFETCH(const QString, moved);
        qint64 distance = 0;
        if (wholeNumber(answer, distance))
            MoveRects(rect, Axis::Top, distance);
        QCOMPARE(rect, moved);
    }
};

QTEST_APPLESS_MAIN(TestRectCommands)

#include "tst_rectcommands.moc"
