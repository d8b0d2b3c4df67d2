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

    void convert_data()
    {
        // From 1280 x 720, to 1920 x 540; behind a blank, how many are kept as they are.
        textTable(
            {"text", "converted"},
            {{u"across and down", u"<rect>[10,20,30,41]</rect>", u"<rect>[15,15,45,30]</rect> 0"},
             {u"cut, not rounded", u"<rect>[-1,-5,1.5,0.9]</rect>", u"<rect>[-1,-3,2,0]</rect> 0"},
             {u"each once", u"<rect>[0,0,8,8]</rect><rect>[0,0,12,6]</rect>",
              u"<rect>[0,0,12,6]</rect><rect>[0,0,18,4]</rect> 0"},
             {u"blanks and letters", u"<RECT> [ 2, 4 ,6,8]\n</Rect>", u"<RECT> [3,3,9,6]\n</Rect> 0"},
             {u"small and large", u"<rect>[0,0,1,1]</rect><rect>[0,0,90000,7]</rect>",
              u"<rect>[0,0,1,0]</rect><rect>[0,0,135000,5]</rect> 0"},
             {u"no four numbers", u"<rect>[1,2,3]</rect><rect>[a,2,3,4]</rect><rect>1,2,3,4</rect>",
              u"<rect>[1,2,3]</rect><rect>[a,2,3,4]</rect><rect>1,2,3,4</rect> 3"},
             {u"empty, and never closed", u"<rect></rect><rect>[2,4,6,8]<rect>[2,4,6,8]</rect><rect>[2,",
              u"<rect></rect><rect>[2,4,6,8]<rect>[3,3,9,6]</rect><rect>[2, 0"}});
    }

    void convert()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, converted);
        QString after = text;
        const ConvertedRects rects = convertedRects(text, {1280, 720}, {1920, 540});
        for (auto rect = rects.changed.rbegin(); rect != rects.changed.rend(); ++rect)
            after.replace(rect->range.start, rect->range.size(), rect->after);
        QCOMPARE(after + u' ' + QString::number(rects.kept), converted);
    }

    // Window by window it is what the command on one window does, wherever no two rects meet.
    void convertAsScaled()
    {
        QString text;
        for (int i = 0; i < 200; ++i)
            text += u"<rect>[%1,%2,%3,%4]</rect>"_s.arg(i * 7 - 90).arg(i * 3).arg(1000 - i).arg(500 + i);
        QString scaled = text, converted = text;
        QCOMPARE(ScaleRects(scaled, 4, 5, u"1280"_s, u"720"_s), ScaleResult::Scaled);
        const ConvertedRects rects = convertedRects(text, {1280, 720}, {1024, 576});
        for (auto rect = rects.changed.rbegin(); rect != rects.changed.rend(); ++rect)
            converted.replace(rect->range.start, rect->range.size(), rect->after);
        QCOMPARE(converted, scaled);
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
