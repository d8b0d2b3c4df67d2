#include "TextTable.h"
#include "widgets/RectCommands.h"

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
        // By 0.8 on a screen of 1280 x 720.
        textTable(
            {"text", "scaled"},
            {{u"whole results stay whole", u"<rect>[35,45,500,400]</rect>", u"<rect>[28,36,400,320]</rect>"},
             {u"cut, not rounded", u"<rect>[-9,9,501,400]</rect>", u"<rect>[-7,7,400,320]</rect>"},
             {u"fractions and blanks", u"<rect>[1.5,+2,500.0, 400]</rect>", u"<rect>[1,1,400,320]</rect>"},
             {u"just wide enough", u"<rect>[0,0,125,13]</rect>", u"<rect>[0,0,100,10]</rect>"},
             {u"too narrow", u"<rect>[0,0,124,100]</rect>", u"TooSmall"},
             {u"too low", u"<rect>[0,0,500,12]</rect>", u"TooSmall"},
             {u"too wide", u"<rect>[0,0,1602,100]</rect>", u"TooLarge"},
             {u"too high", u"<rect>[0,0,100,902]</rect>", u"TooLarge"},
             {u"three numbers", u"<rect>[1,2,3]</rect>", u"Nothing"},
             {u"text", u"<rect>[a,2,300,400]</rect>", u"Nothing"},
             {u"thirty digits of x", u"<rect>[100000000000000000000000000001,2,300,400]</rect>",
              u"<rect>[80000000000000000000000000000,1,240,320]</rect>"},
             {u"thirty digits of width", u"<rect>[0,2,100000000000000000000000000000,400]</rect>",
              u"TooLarge"},
             {u"thirty digits below", u"<rect>[0,2,300,-100000000000000000000000000000]</rect>", u"TooSmall"},
             {u"any letter case", u"<rect>[0,0,1000,500]</rect><RECT>[10,20,30,40]</rect>",
              u"<rect>[0,0,800,400]</rect><rect>[8,16,24,32]</rect>"},
             {u"the screen in any letter case", u"<Rect>[0,0,2000,1200]</rect><rect>[0,0,1000,500]</rect>",
              u"TooLarge"},
             {u"none in small letters", u"<Rect>[0,0,1000,500]</rect>", u"Nothing"},
             {u"no end in small letters", u"<rect>[0,0,1000,500]</RECT>", u"Nothing"},
             {u"blanks around the brackets", u"<rect> [0,0,1000,500] </rect><rect>[10,20,30,40]</rect>",
              u"<rect> [0,0,1000,500] </rect><rect>[8,16,24,32]</rect>"}});
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
        // To the top.
        textTable(
            {"rect", "answer", "moved"},
            {{u"down", u"<rect>[10,20.9,30,40]</rect>", u"5", u"<rect>[10,25,30,40]</rect>"},
             {u"up, rounded down", u"<rect>[10,20.9,30,40]</rect>", u"-5.5", u"<rect>[10,14,30,40]</rect>"},
             {u"no number", u"<rect>[10,20,30,40]</rect>", u"5px", u"<rect>[10,20,30,40]</rect>"},
             {u"nothing", u"<rect>[10,20,30,40]</rect>", u"", u"<rect>[10,20,30,40]</rect>"},
             {u"others are no numbers", u"<rect>[x,20,<w>,100000000000000000000]</rect>", u"5",
              u"<rect>[x,25,<w>,100000000000000000000]</rect>"},
             {u"others in another letter case", u"<rect>[x,20,w,h]</rect><RECT>[X,20,W,H]</rect>", u"5",
              u"<rect>[x,25,w,h]</rect><rect>[x,25,w,h]</rect>"},
             {u"capital letters", u"<RECT>[10,20,30,40]</RECT>", u"5", u"<RECT>[10,20,30,40]</RECT>"}});
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
