#include "stage/Hits.h"
#include "stage/RectChanges.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestStageRects : public QObject
{
    Q_OBJECT

private slots:
    // Row 0 is the window; 1 is what is written.
    void writes_data()
    {
        QTest::addColumn<QString>("rect");
        QTest::addColumn<Box>("box");
        QTest::addColumn<QString>("written"); // empty where it cannot be
        QTest::newRow("one number") << u"[10,20,30,40]"_s << Box{10, 21, 30, 40} << u"[10,21,30,40]"_s;
        QTest::newRow("blanks and signs")
            << u"[ +1 ,\t-2,03 , 4 ]"_s << Box{1, 5, 3, -4} << u"[ +1 ,\t5,03 , -4 ]"_s;
        QTest::newRow("all as they are") << u"[+1,-0,003,4]"_s << Box{1, 0, 3, 4} << u"[+1,-0,003,4]"_s;
        QTest::newRow("beyond numbers") << u"[2147483647,0,1,1]"_s << Box{1LL << 40, -(1LL << 40), 1, 1}
                                        << u"[2147483647,-2147483647,1,1]"_s;
        QTest::newRow("three") << u"[1,2,3]"_s << Box{} << QString();
        QTest::newRow("five") << u"[1,2,3,4,5]"_s << Box{} << QString();
        QTest::newRow("fraction") << u"[1,2.5,3,4]"_s << Box{} << QString();
        QTest::newRow("blank before the bracket") << u" [1,2,3,4]"_s << Box{} << QString();
        QTest::newRow("too large") << u"[2147483648,0,1,1]"_s << Box{} << QString();
    }

    void writes()
    {
        QFETCH(QString, rect);
        QFETCH(Box, box);
        QFETCH(QString, written);
        const auto text = [](const QString &own) -> QString {
            return u"<widget name=\"a\">\r\n<rect>[10,20,30,40]</rect>\r\n<children>\r\n<widget name=\"a\">"
                   "<!-- <rect>[10,20,30,40]</rect> --><rect>" +
                   own + u"</rect><rect>[10,20,30,40]</rect></widget></children></widget>\r\n";
        };
        const Outline outline(text(rect));
        const QList<TextChange> changes = rectChanges(outline, {{1, box}, {7, box}, {1, {}}});
        QCOMPARE(withChanges(outline.text(), changes), text(written.isEmpty() ? rect : written));
        QCOMPARE(changes.isEmpty(), written.isEmpty() || written == rect);
        QCOMPARE(whyFixed(outline, 1).isEmpty(), !written.isEmpty());
        QVERIFY(written.isEmpty() == whyFixed(outline, 1).contains(u"rect"));
    }

    void outermostOfNested()
    {
        const Outline outline(u"<widget a><children><widget b><children><widget c/></children></widget>"
                              "<widget d/></children></widget><widget e/><!-- <widget f> <widget g> -->"_s);
        QCOMPARE(outermost(outline, {4, 2, 1, 2, 9, -1, 3}), (QList<int>{4, 1, 3}));
        QCOMPARE(outermost(outline, {6, 3, 0, 5}), (QList<int>{6, 0, 5}));
        QCOMPARE(parentOf(outline, 2), 1);
        QCOMPARE(parentOf(outline, 4), -1);
        for (const int block : {4, 5, -1, 99})
            QVERIFY(whyFixed(outline, block).contains(u"rect"));
    }

    void hits()
    {
        const QRectF screen(0, 0, 100, 100), corner(90, 90, 20, 20), none(20, 20, 0, 10);
        const QList<Place> places = {{2, corner, corner & screen},
                                     {0, screen, screen},
                                     {1, corner, corner},
                                     {3, none, none},
                                     {4, corner, {}}};
        QCOMPARE(blocksAt(places, {95, 95}), (QList<int>{2, 1, 0}));
        QCOMPARE(blocksAt(places, {100, 95}), (QList<int>{1}));
        QCOMPARE(blocksAt(places, {20, 25}), (QList<int>{0}));
        QCOMPARE(blocksInside(places, QRectF(QPointF(110, 110), QPointF(10, 10))), (QList<int>{1, 2}));
        QCOMPARE(blocksInside(places, {0, 0, 109, 110}), (QList<int>{0}));
    }
};

QTEST_APPLESS_MAIN(TestStageRects)
#include "tst_stagerects.moc"
