#include "stage/Arrange.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString block(const QString &rect, const QString &inner = {})
{
    return u"<widget w><rect>["_s + rect + u"]</rect>" + inner + u"</widget>";
}

QString rectsOf(const Outline &outline)
{
    QStringList rects;
    for (const qint32 element : outline.blocks())
        rects.append(outline.at(outline.element(outline.property(element, Kind::Rect)).content())
                         .chopped(1)
                         .sliced(1)
                         .toString());
    return rects.join(u' ');
}

} // namespace

class TestStageArrange : public QObject
{
    Q_OBJECT

private slots:
    // 0 is the window, 1 and 5 are panels, 2, 3 and 4 stand in the first one, 6 in the second.
    void arranges_data()
    {
        QTest::addColumn<Arrange>("command");
        QTest::addColumn<QList<int>>("blocks");
        QTest::addColumn<QString>("changed"); // the rects, "." for one that stays
        const auto row = [](const char *name, Arrange command, const QList<int> &blocks,
                            const QString &changed) { QTest::newRow(name) << command << blocks << changed; };
        using A = Arrange;
        row("left", A::AlignLeft, {3, 2}, u". . 70,20,100,30 . . . ."_s);
        row("left, other parent", A::AlignLeft, {6, 2, 3}, u". . 515,20,100,30 515,50,15,30 . . ."_s);
        row("centre, half a pixel", A::AlignCentre, {2, 3}, u". . . 52,50,15,30 . . ."_s);
        row("right", A::AlignRight, {2, 3}, u". . . 95,50,15,30 . . ."_s);
        row("top", A::AlignTop, {2, 6}, u". . . . . . 15,-180,5,5"_s);
        row("middle", A::AlignMiddle, {3, 2}, u". . 10,50,100,30 . . . ."_s);
        row("bottom", A::AlignBottom, {1, 5}, u". . . . . 600,250,300,50 ."_s);
        row("to its parent", A::AlignLeft, {1, 2, 5}, u". . 0,20,100,30 . . 100,300,300,50 ."_s);
        row("its parent stays", A::AlignLeft, {2, 1}, u". . . . . . ."_s);
        row("what stands in one goes with it", A::AlignTop, {1, 6, 5}, u". . . . . 600,100,300,50 ."_s);
        row("first cannot be read", A::AlignLeft, {4, 3, 2}, u". . 70,20,100,30 . . . ."_s);
        row("width", A::SameWidth, {2, 3, 4, 6}, u". . . 70,50,100,30 . . 15,20,100,5"_s);
        row("size", A::SameSize, {6, 5, 3}, u". . . 70,50,5,5 . 600,300,5,5 ."_s);
        row("in parent", A::CentreInParent, {0, 2, 6, 4}, u". . 50,85,100,30 . . . 147,22,5,5"_s);
        row("distribute two", A::DistributeH, {2, 3}, u". . . . . . ."_s);
        row("distribute", A::DistributeH, {6, 3, 2}, u". . . 305,50,15,30 . . ."_s);
        row("distribute down", A::DistributeV, {2, 3, 6, 3}, u". . . 70,120,15,30 . . ."_s);
        row("picture", A::FitToPicture, {0, 5, 6, 3, 4}, u". . . 70,50,64,48 . . 15,20,7,8"_s);
    }

    void arranges()
    {
        QFETCH(Arrange, command);
        QFETCH(QList<int>, blocks);
        QFETCH(QString, changed);
        const QString picture =
            u"<imgs><mode>single</mode><img> p </img><unfocus_img>q</unfocus_img></imgs>"_s;
        const QString frame = u"<mode>Multiple</mode><img>p</img>"_s;
        const Outline outline(
            block(u"0,0,1280,720"_s,
                  u"<img>none</img>"_s +
                      block(u"100,100,200,200"_s, u"<children>" + block(u"10,20,100,30"_s) +
                                                      block(u"70,50,15,30"_s, picture) + block(u"7,8,9"_s) +
                                                      u"</children>") +
                      block(u"600,300,300,50"_s,
                            QString(frame + block(u"15,20,5,5"_s, u"<unfocus_img>r</unfocus_img>"_s)))));
        const PictureSize sizeOf = [](const QString &name) {
            return name == u"p" ? QSize(64, 48) : name == u"r" ? QSize(7, 8) : QSize();
        };
        QStringList wanted = rectsOf(outline).split(u' ');
        const QStringList rects = changed.split(u' ');
        for (qsizetype i = 0; i < rects.size(); ++i) {
            if (rects[i] != u".")
                wanted[i] = rects[i];
        }
        const QList<BlockBox> boxes = arranged(command, outline, blocks, sizeOf);
        QCOMPARE(rectsOf(Outline(withChanges(outline.text(), rectChanges(outline, boxes)))),
                 wanted.join(u' '));
        QVERIFY(boxes.isEmpty() || arrangeable(outline, blocks, sizeOf).contains(command));
        QVERIFY(!arrangeable(outline, {blocks.first(), 99}).contains(command) ||
                command == Arrange::CentreInParent);
    }

    // However many, the gaps differ by a pixel at most, and overlaps become equal too.
    void distributesEvenly()
    {
        for (const int last : {50, 1000, 1003}) {
            QString text;
            QList<int> blocks;
            for (const int x : {last, 3, 30, 31, 700, 90, 7}) {
                text += block(u"%1,0,%2,9"_s.arg(x).arg(x % 8 + 10));
                blocks.append(int(blocks.size()));
            }
            const Outline before(text);
            const Outline after(
                withChanges(text, rectChanges(before, arranged(Arrange::DistributeH, before, blocks))));
            QList<Box> boxes;
            for (const int row : blocks)
                boxes.append(rectOfRow(after, row)->box);
            std::sort(boxes.begin(), boxes.end(), [](const Box &a, const Box &b) { return a.x < b.x; });
            qint64 least = 1 << 20, most = -least;
            for (qsizetype i = 1; i < boxes.size(); ++i) {
                const qint64 gap = boxes[i].x - boxes[i - 1].x - boxes[i - 1].w;
                least = std::min(least, gap);
                most = std::max(most, gap);
            }
            QVERIFY2(most - least <= 1, qPrintable(rectsOf(after)));
            QCOMPARE(boxes.first().x, 3);
            QCOMPARE(boxes.last().x, std::max(700, last));
        }
    }
};

QTEST_APPLESS_MAIN(TestStageArrange)
#include "tst_stagearrange.moc"
