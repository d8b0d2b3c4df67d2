#include "WindowFixture.h"

#include "controls/DragLine.h"

using namespace quillmere;

namespace {

QRect placeOf(const Window &window, const char *name)
{
    return window.find<QWidget>(name)->geometry();
}

void drag(QWidget *line, QPoint by)
{
    const QPoint from = line->rect().center();
    QTest::mousePress(line, Qt::LeftButton, {}, from);
    QTest::mouseMove(line, from + by); // in two steps: the line goes along
    QTest::mouseRelease(line, Qt::LeftButton, {}, line->rect().center());
}

} // namespace

class TestWorkRoom : public QObject
{
    Q_OBJECT

private slots:
    void columns()
    {
        Window window;
        auto *line = window.find<DragLine>("columnLine");
        const QRect strip = placeOf(window, "TabStrip4"), preview = placeOf(window, "frmWb");
        QVERIFY(line->geometry().center().x() >= strip.right() - 4);
        drag(line, {100, 0});
        QCOMPARE(placeOf(window, "TabStrip4"), strip.adjusted(0, 0, 100, 0));
        QCOMPARE(placeOf(window, "frmWb"), preview.adjusted(100, 0, 0, 0));
        QCOMPARE(placeOf(window, "frYt(8)").width(), 448 + 100);
        drag(line, {-5000, 0});
        QCOMPARE(placeOf(window, "TabStrip4").width(), 344);
        drag(line, {5000, 0});
        QCOMPARE(placeOf(window, "frmWb").width(), 320);
        QTest::mouseDClick(line, Qt::LeftButton);
        QCOMPARE(placeOf(window, "frmWb"), preview);

        drag(line, {60, 0});
        window.start();
        window.skin->showFirst();
        window.skin->resize(1400, 900);
        QCOMPARE(placeOf(window, "TabStrip4"), strip.adjusted(0, 0, 60, 0));
    }

    void wideSource()
    {
        Window window;
        const QRect strip = placeOf(window, "TabStrip4");
        QTest::keyClick(window.skin.get(), Qt::Key_F9);
        QCOMPARE(window.find<QTabBar>("TabStrip4")->currentIndex(), 8);
        QCOMPARE(placeOf(window, "frmWb").width(), 700);
        window.turnTo(0);
        QTest::keyClick(window.skin.get(), Qt::Key_F9);
        QCOMPARE(placeOf(window, "TabStrip4"), strip);
        QCOMPARE(window.find<QTabBar>("TabStrip4")->currentIndex(), 0);
    }

    void previewAlone()
    {
        Window window;
        const auto *strip = window.find<QWidget>("TabStrip4"), *first = window.find<QWidget>("frYt(0)");
        const QRect preview = placeOf(window, "frmWb");
        for (const bool byTab : {false, true}) {
            window.find<QWidget>("Dir1")->setFocus();
            QTest::keyClick(window.skin.get(), Qt::Key_F11);
            QVERIFY(!strip->isVisible() && !first->isVisible());
            QCOMPARE(placeOf(window, "frmWb").width(), 1400 - 16);
            QVERIFY(QApplication::focusWidget() && QApplication::focusWidget()->isVisible());
            if (byTab)
                window.turnTo(2);
            else
                QTest::keyClick(window.skin.get(), Qt::Key_Escape);
            QVERIFY(strip->isVisible());
            QCOMPARE(first->isVisible(), !byTab);
            QCOMPARE(window.find<QWidget>("frYt(2)")->isVisible(), byTab);
            QCOMPARE(placeOf(window, "frmWb"), preview);
            QVERIFY(!window.find<QAction>("mnuPreviewAlone")->isChecked());
        }
        // Where the tabs would not fit it does.
        window.skin->resize(900, 500);
        const QRect page(QPoint(), window.find<QWidget>("pageScroll")->size());
        for (int turn = 0; turn < 2; ++turn) {
            QTest::keyClick(window.skin.get(), Qt::Key_F11);
            QTRY_COMPARE(page.contains(window.find<QWidget>("frmWb")->geometry()), turn == 0);
        }
    }

    void blocksAndSource()
    {
        Window window;
        window.turnTo(8);
        auto *line = window.find<DragLine>("blockLine");
        const QRect list = placeOf(window, "lvBlock"), text = placeOf(window, "txtSnippet");
        drag(line, {0, 50});
        QCOMPARE(placeOf(window, "lvBlock"), list.adjusted(0, 0, 0, 50));
        QCOMPARE(placeOf(window, "txtSnippet"), text.adjusted(0, 50, 0, 0));
        drag(line, {0, -5000});
        QVERIFY(placeOf(window, "lvBlock").height() > 50);
        window.start();
        window.turnTo(8);
        QVERIFY(placeOf(window, "lvBlock").height() < list.height());
        QTest::mouseDClick(window.find<DragLine>("blockLine"), Qt::LeftButton);
        QCOMPARE(placeOf(window, "txtSnippet"), text);
    }
};

WINDOW_TEST_MAIN(TestWorkRoom)
#include "tst_workroom.moc"
