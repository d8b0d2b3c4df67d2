#include "stage/Snapping.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString textOf(const Box &box)
{
    return u"%1,%2,%3,%4"_s.arg(box.x).arg(box.y).arg(box.w).arg(box.h);
}

// "x: from..to" or "y: from..to", with "=distance" where there is one.
QString textOf(const Guide &guide)
{
    const QLineF &line = guide.line;
    const bool stands = line.x1() == line.x2();
    QString text = stands ? u"x%1: %2..%3"_s.arg(line.x1()).arg(line.y1()).arg(line.y2())
                          : u"y%1: %2..%3"_s.arg(line.y1()).arg(line.x1()).arg(line.x2());
    if (guide.distance >= 0)
        text += u" =%1 at %2,%3"_s.arg(guide.distance).arg(guide.text.x()).arg(guide.text.y());
    return text;
}

QString textOf(const QList<Guide> &guides)
{
    QStringList lines;
    for (const Guide &guide : guides)
        lines.append(textOf(guide));
    return lines.join(u"; ");
}

// A panel at 100,100 in a screen of 1280 x 720, with a block of 50 x 20 at `rect` in it and others beside.
Outline panel(const QString &rect, const QStringList &others)
{
    QString text = u"<widget class=\"window\"><rect>[0,0,1280,720]</rect><children>"
                   "<widget name=\"panel\"><rect>[100,100,601,401]</rect><children><widget w><rect>["_s +
                   rect + u"]</rect></widget>";
    for (const QString &other : others)
        text += u"<widget w><rect>["_s + other + u"]</rect></widget>";
    return Outline(text + u"</children></widget></children></widget>");
}

constexpr int kBlock = 2; // its row

} // namespace

class TestStageSnapping : public QObject
{
    Q_OBJECT

private slots:
    void moves_data()
    {
        QTest::addColumn<QStringList>("others");
        QTest::addColumn<QPointF>("by");
        QTest::addColumn<QString>("box"); // of a block that was at 10,10
        QTest::addColumn<QString>("guides");
        const auto row = [](const char *name, const QStringList &others, QPointF by, const QString &box,
                            const QString &guides) { QTest::newRow(name) << others << by << box << guides; };
        row("nothing is near", {}, {70.4, 90.6}, u"80,101,50,20"_s, QString());
        row("side of a sibling", {u"200,210,133,30"_s}, {184, 90}, u"200,100,50,20"_s,
            u"x300: 200..340 =90 at 300,265"_s);
        row("just in reach", {u"200,210,33,30"_s}, {196, 90}, u"200,100,50,20"_s,
            u"x300: 200..340 =90 at 300,265"_s);
        row("just out of reach", {u"200,210,33,30"_s}, {197, 90}, u"207,100,50,20"_s, QString());
        row("the nearer of two", {u"200,210,33,30"_s, u"196,310,33,30"_s}, {187, 90}, u"196,100,50,20"_s,
            u"x296: 200..440 =190 at 296,315"_s);
        row("middle", {u"101,210,50,70"_s}, {92, 90}, u"101,100,50,20"_s,
            u"x201: 200..380 =90 at 201,265; x251: 200..380 =90 at 251,265; x226: 200..380 =90 at 226,265"_s);
        row("inside of the parent", {}, {-7, 375}, u"0,381,50,20"_s,
            u"x100: 100..501 =381 at 100,290.5; y501: 100..701 =551 at 425.5,501"_s);
        row("title-safe area", {}, {-50, 90}, u"-36,100,50,20"_s, u"x64: 36..684 =164 at 64,118"_s);
        row("between two", {u"200,10,20,20"_s, u"401,10,20,20"_s}, {277, 0}, u"285,10,50,20"_s,
            u"y120: 320..385 =65 at 352.5,120; y120: 435..501 =66 at 468,120; "
            "y110: 300..521 =65 at 352.5,110; y130: 300..521 =65 at 352.5,130; "
            "y120: 300..521 =65 at 352.5,120"_s);
        row("as far as the two before", {u"200,0,20,100"_s, u"251,-20,20,120"_s}, {288, 4}, u"302,14,50,20"_s,
            u"y124: 371..402 =31 at 386.5,124; y124: 320..351 =31 at 335.5,124"_s);
    }

    void moves()
    {
        QFETCH(QStringList, others);
        QFETCH(QPointF, by);
        QFETCH(QString, box);
        QFETCH(QString, guides);
        SnapTargets targets;
        targets.screen = QSize(1280, 720);
        const Snapping snapping(panel(u"10,10,50,20"_s, others), {kBlock}, targets);
        const Snapped snapped = snapping.moved(by, 6);
        QCOMPARE(textOf(snapped.boxes.value(0).box), box);
        QCOMPARE(textOf(snapped.guides), guides);
        const Box free = snapping.moved(by, 0).boxes.value(0).box;
        QCOMPARE(textOf(free), textOf(Box{10 + qRound(by.x()), 10 + qRound(by.y()), 50, 20}));
    }

    void sizes_data()
    {
        QTest::addColumn<Qt::Edges>("edges");
        QTest::addColumn<QPointF>("by");
        QTest::addColumn<bool>("keep");
        QTest::addColumn<QString>("box"); // of one that was 200,100 large, 100 x 50
        const auto row = [](const char *name, Qt::Edges edges, QPointF by, bool keep, const QString &box) {
            QTest::newRow(name) << edges << by << keep << box;
        };
        row("right, to a side", Qt::RightEdge, {46, 9}, false, u"200,100,150,50"_s);
        row("bottom", Qt::BottomEdge, {46, 19}, false, u"200,100,100,69"_s);
        row("corner", Qt::LeftEdge | Qt::TopEdge, {-20, 19}, false, u"180,119,120,31"_s);
        row("no further than nothing", Qt::LeftEdge | Qt::TopEdge, {220, 119}, false, u"300,150,0,0"_s);
        row("as wide as high", Qt::RightEdge | Qt::BottomEdge, {20, 5}, true, u"200,100,120,60"_s);
        row("from the left", Qt::LeftEdge | Qt::TopEdge, {-3, -15}, true, u"170,85,130,65"_s);
        row("one side of both", Qt::RightEdge, {20, 5}, true, u"200,95,120,60"_s);
        row("in proportion to a side", Qt::RightEdge | Qt::BottomEdge, {45, 5}, true, u"200,100,150,75"_s);
    }

    void sizes()
    {
        QFETCH(Qt::Edges, edges);
        QFETCH(QPointF, by);
        QFETCH(bool, keep);
        const Snapping snapping(panel(u"200,100,100,50"_s, {u"350,300,37,37"_s}), {kBlock});
        QTEST(textOf(snapping.sized(edges, by, 6, keep).boxes.value(0).box), "box");
    }

    void grid()
    {
        SnapTargets targets;
        targets.grid = 16;
        const Outline outline = panel(u"200,100,100,50"_s, {u"320,300,37,37"_s});
        const Snapping snapping(outline, {kBlock}, targets);
        QCOMPARE(textOf(snapping.moved({7, -100}, 6).boxes[0].box), u"208,0,100,50"_s);
        QCOMPARE(textOf(snapping.moved({-307, 8}, 6, true).boxes[0].box), u"-112,100,100,50"_s);
        QCOMPARE(textOf(snapping.sized(Qt::RightEdge, {7, 0}, 6).boxes[0].box), u"200,100,112,50"_s);
        QCOMPARE(textOf(snapping.sized(Qt::TopEdge, {7, -14}, 6).boxes[0].box), u"200,80,100,70"_s);
        QCOMPARE(textOf(snapping.moved({21, 0}, 6).boxes[0].box), u"220,96,100,50"_s); // a side is nearer
    }

    // All go the same way, what stands in another goes with it, and the fixed stays.
    void several()
    {
        const Outline outline = panel(u"200,100,100,50"_s, {u"350,300,37,37"_s, u"1,2"_s});
        const auto rows = [&](const QList<int> &blocks, const SnapTargets &targets = {}) {
            QStringList boxes;
            for (const BlockBox &box : Snapping(outline, blocks, targets).moved({46, 33}, 6).boxes)
                boxes.append(QString::number(box.block) + u": " + textOf(box.box));
            return boxes.join(u"; ");
        };
        QCOMPARE(rows({4, 2, 3}), u"2: 246,133,100,50; 3: 396,333,37,37"_s);
        QCOMPARE(rows({2, 1, 3}), u"1: 146,133,601,401"_s);
        QCOMPARE(rows({2}), u"2: 250,133,100,50"_s);
        SnapTargets targets;
        targets.hidden = {3, 77};
        QCOMPARE(rows({2}, targets), u"2: 251,133,100,50"_s); // the middle of the panel
        targets.columns = {342, 900};
        QCOMPARE(rows({2}, targets), u"2: 242,133,100,50"_s);
        QCOMPARE(rows({4, 17}), QString());
    }
};

QTEST_APPLESS_MAIN(TestStageSnapping)
#include "tst_stagesnapping.moc"
