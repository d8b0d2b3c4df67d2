#include "app/WindowFixture.h"

#include <qtestspontaneevent.h>

using namespace quillmere;

namespace {

void openTheme(const Window &window, QSize screen)
{
    window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
    window.write("theme/widget.xml",
                 u"<interface><width>%1</width><height>%2</height></interface>"_s.arg(screen.width())
                     .arg(screen.height())
                     .toLatin1());
    window.openTheme();
}

} // namespace

// Where everything is in a window of any size.
class TestLayout : public QObject
{
    Q_OBJECT

private slots:
    void layout_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSize>("laidOutAs"); // the window whose layout shows
        QTest::newRow("large") << QSize(1600, 1000) << QSize(1600, 1000);
        QTest::newRow("just large enough") << QSize(801, 601) << QSize(801, 601);
        QTest::newRow("too narrow") << QSize(800, 900) << QSize(1400, 900);
        QTest::newRow("too low") << QSize(1500, 600) << QSize(1400, 900);
    }

    void layout()
    {
        QFETCH(const QSize, window);
        QFETCH(const QSize, laidOutAs);
        const Window on;
        on.skin->resize(window);
        const int H = laidOutAs.height() - 80;
        const int W = laidOutAs.width() - 480;
        const int F = H - 24;
        QCOMPARE(on.find<QWidget>("frmWb")->size(), QSize(W, H));
        QCOMPARE(on.find<QWidget>("wb")->size(), QSize(W - 16, H - 24));
        QCOMPARE(on.find<QWidget>("TabStrip4")->height(), H + 16);
        for (int i = 0; i < 9; ++i) {
            const auto *frame = on.find<QWidget>(qPrintable(u"frYt(%1)"_s.arg(i)));
            QCOMPARE(frame->pos(), QPoint(16, 40));
            QCOMPARE(frame->height(), F);
        }
        const std::tuple<const char *, const char *, int> lists[] = {
            {"Dir1", "lvTheme", 60},     {"LvWidget", "lvWidgetDel", 84}, {"lvImage", nullptr, 60},
            {"lvColor", "Picture2", 60}, {"LvBhs", nullptr, 188},         {"lvFont", "Frame1", 72},
            {"lvKeyMap", "Frame2", 64},  {"txtSnippet", nullptr, 248}};
        for (const auto &[list, companion, less] : lists) {
            const int beside = companion ? on.find<QWidget>(companion)->height() : 0;
            QVERIFY2(on.find<QWidget>(list)->height() == F - beside - less, list);
        }
    }

    // Whatever the size, everything comes into sight, by scrolling and by the keyboard.
    void smallWindow()
    {
        const Window window;
        const auto *scroll = window.find<QScrollArea>("pageScroll");
        window.skin->resize(801, 601);
        window.skin->resize(800, 600);
        QCOMPARE(scroll->horizontalScrollBar()->maximum() + scroll->verticalScrollBar()->maximum(), 0);
        for (const QSize size : {QSize(341, 256), QSize(800, 200)}) {
            window.skin->resize(size);
            QCOMPARE(window.skin->size(), size);
            for (const char *corner : {"frmWb", "TabStrip4"}) {
                const QRect place = window.find<QWidget>(corner)->geometry();
                scroll->horizontalScrollBar()->setValue(scroll->horizontalScrollBar()->maximum());
                scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
                const QPoint end = scroll->widget()->mapTo(scroll, place.bottomRight());
                QVERIFY(scroll->viewport()->geometry().right() >= end.x());
                QVERIFY(scroll->viewport()->geometry().bottom() >= end.y());
            }
            for (int tab = 0; tab < 60; ++tab) {
                QTest::keyClick(window.skin.get(), Qt::Key_Tab);
                const QWidget *now = QApplication::focusWidget();
                if (!scroll->widget()->isAncestorOf(now))
                    continue;
                const QRect place(now->mapTo(scroll->viewport(), QPoint()), now->size());
                QVERIFY2(scroll->viewport()->rect().intersects(place), qPrintable(now->objectName()));
            }
        }
    }

    // Whatever the font of the system: every tab stands in the strip, which does not grow.
    void largeLetters()
    {
        const Window window;
        const auto *strip = window.find<QTabBar>("TabStrip4");
        const QFont before = QApplication::font();
        for (const int points : {9, 16}) {
            QApplication::setFont(QFont(before.family(), points));
            QTRY_VERIFY(strip->tabRect(strip->count() - 1).right() < strip->width());
            QVERIFY(strip->tabRect(0).left() >= 0 && strip->tabRect(0).width() > 20);
        }
        QApplication::setFont(before);
    }

    // A window manager that gives the window its size late does not take the screen of the theme away.
    void settlesOnTheScreenOfTheTheme()
    {
        for (const QSize screen : {QSize(1280, 720), QSize(1024, 576)}) {
            Window window;
            window.skin->resize(1800, 900);
            openTheme(window, screen);
            QResizeEvent resized(window.skin->size(), QSize());
            QSpontaneKeyEvent::setSpontaneous(&resized);
            qApp->notify(window.skin.get(), &resized);
            QCOMPARE(window.find<QWidget>("wb")->size(), screen);
        }
    }

    void sizes()
    {
        Window window;
        const auto *wb = window.find<QWidget>("wb");
        window.skin->resize(1800, 900);
        openTheme(window, QSize(1280, 720));
        QCOMPARE(wb->size(), QSize(1280, 720));
        window.choose("mnuWwbZ3");
        QCOMPARE(wb->size(), QSize(1320, 760));
        window.choose("mnuWwbZ1");
        QCOMPARE(wb->size(), QSize(1064, 616));
        window.choose("mnuWwbZ3");
        QCOMPARE(wb->size(), QSize(1024, 576));
        window.choose("mnuWwbZ2");
        QCOMPARE(wb->size(), QSize(1280, 720));
    }
};

WINDOW_TEST_MAIN(TestLayout)
#include "tst_layout.moc"
