#include "app/WindowFixture.h"

#include "preview/forms/PreviewFrame.h"
#include "stage/forms/Rulers.h"

#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>

using namespace quillmere;

namespace {

constexpr QSize kRoom(904, 796); // of the browser in the window of the fixture

// Opens a window of the example theme, which is made for 1280 x 720.
void openExample(const Window &window)
{
    const QString theme = QStringLiteral(EXAMPLES_FOLDER "/aurora/theme");
    window.skin->openTheme(theme);
    window.skin->openDocument(theme + u"/widget/wnd_volume.xml");
}

QPointF pointOf(const Window &window, const QString &rect)
{
    const QStringList sides =
        window.js(u"(function(){var r="_s + rect + u";return r.x+' '+r.y})()").toString().split(u' ');
    return {sides.value(0).toDouble(), sides.value(1).toDouble()};
}

// Where the last div of the page stands: as the browser draws it, and as its rects say.
QPointF drawn(const Window &window)
{
    return pointOf(window, u"[...document.querySelectorAll('div')].pop().getBoundingClientRect()"_s);
}

QPointF laidOut(const Window &window)
{
    const QString sum = u"(function(){var x=0,y=0,e=[...document.querySelectorAll('div')].pop();"
                        "for(;e;e=e.offsetParent){x+=e.offsetLeft+(x?e.clientLeft:0);"
                        "y+=e.offsetTop+(y?e.clientTop:0);}return{x:x,y:y};})()"_s;
    return pointOf(window, sum);
}

bool isNear(QPointF a, QPointF b)
{
    return QLineF(a, b).length() < 1.5;
}

void turnWheel(QWidget *on, QPointF at, int notches, Qt::KeyboardModifiers keys)
{
    QWheelEvent turn(at, on->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, keys, Qt::NoScrollPhase,
                     false);
    QCoreApplication::sendEvent(on, &turn);
}

} // namespace

class TestView : public QObject
{
    Q_OBJECT

private slots:
    // What each command makes of the browser's size and of the scale; the page itself never has anything
    // added.
    void zoom()
    {
        Window window;
        openExample(window);
        auto *frame = window.find<PreviewFrame>("frmWb");
        auto *zoom = window.find<QComboBox>("cboZoom");
        const QString page = u"document.documentElement.outerHTML"_s;
        const QString before = window.js(page).toString();
        QVERIFY(before.contains(u"<div"));
        const auto key = [&](QKeyCombination keys) {
            return
                [&window, keys] { QTest::keyClick(window.skin.get(), keys.key(), keys.keyboardModifiers()); };
        };
        const auto choose = [&](const QString &text) { return [zoom, text] { zoom->setCurrentText(text); }; };
        const auto resize = [&](QSize size) { return [&window, size] { window.skin->resize(size); }; };
        const struct
        {
            std::function<void()> act;
            QSize browser;
            QString shown;
            double scale;
        } steps[] = {
            {[] {}, kRoom, u"Fit"_s, 904 / 1280.0},
            {key(Qt::CTRL | Qt::Key_Plus), kRoom, u"75 %"_s, 0.75},
            {key(Qt::CTRL | Qt::Key_0), QSize(1280, 796), u"100 %"_s, 1},
            {key(Qt::CTRL | Qt::Key_Plus), kRoom, u"125 %"_s, 1.25},
            {choose(u"400 %"_s), kRoom, u"400 %"_s, 4},
            {resize(QSize(1300, 800)), QSize(804, 696), u"400 %"_s, 4},
            {[&] { frame->setZoom(1.1); }, QSize(804, 696), u"110 %"_s, 1.1},
            {key(Qt::CTRL | Qt::Key_Minus), QSize(1280, 720), u"100 %"_s, 1},
            {key(Qt::CTRL | Qt::Key_9), QSize(804, 696), u"Fit"_s, 804 / 1280.0},
            {resize(QSize(1400, 900)), kRoom, u"Fit"_s, 904 / 1280.0},
            {[&] { window.choose("mnuWwbZ1"); }, QSize(1024, 576), u"100 %"_s, 1},
            {choose(u"Fit"_s), kRoom, u"Fit"_s, 904 / 1024.0},
            {[&] { window.choose("mnuWwbZ2"); }, QSize(1280, 720), u"100 %"_s, 1},
            {resize(QSize(1401, 900)), QSize(905, 796), u"Fit"_s, 905 / 1280.0},
            {choose(u"10 %"_s), QSize(905, 796), u"10 %"_s, 0.1},
            {key(Qt::CTRL | Qt::Key_Minus), QSize(905, 796), u"10 %"_s, 0.1},
            {choose(u"800 %"_s), QSize(905, 796), u"800 %"_s, 8},
            {key(Qt::CTRL | Qt::Key_Plus), QSize(905, 796), u"800 %"_s, 8},
        };
        for (const auto &[act, browser, shown, scale] : steps) {
            act();
            QCOMPARE(frame->wb->size(), browser);
            QCOMPARE(zoom->currentText(), shown);
            QCOMPARE(frame->zoom(), scale);
            QTRY_VERIFY(isNear(drawn(window), frame->fromPage(laidOut(window))));
            QVERIFY(isNear(frame->toPage(drawn(window)) * scale, laidOut(window) * scale));
            QCOMPARE(window.js(page).toString(), before);
        }
    }

    // The point under the pointer stays; what was typed since is shown the same way; the picture can be moved
    // as far as it goes.
    void wheelAndDrag()
    {
        Window window;
        openExample(window);
        const auto *frame = window.find<PreviewFrame>("frmWb");
        QWidget *wb = frame->wb;
        window.choose("mnuWwbZ2");
        QVERIFY(!drawn(window).isNull());
        const QPointF at(500, 300);
        turnWheel(wb->focusProxy(), at, 3, Qt::ControlModifier);
        QCOMPARE(frame->zoom(), 2.0);
        QVERIFY(isNear(frame->toPage(at), at));
        turnWheel(wb->focusProxy(), at, -2, Qt::NoModifier);
        turnWheel(wb->focusProxy(), at, 1, Qt::ShiftModifier);
        QVERIFY(isNear(frame->toPage(at), at + QPointF(-30, 60)));

        window.turnTo(8);
        window.source()->setText(QString(window.source()->text()).replace(u"<mode>"_s, u"<Mode>"_s));
        QTRY_VERIFY(isNear(drawn(window), frame->fromPage(laidOut(window))));

        const auto drag = [&](Qt::MouseButton button) {
            const QPointF before = frame->toPage({});
            QTest::mousePress(wb, button, {}, {300, 300});
            QTest::mouseMove(wb, {280, 260});
            QTest::mouseRelease(wb, button, {}, {280, 260});
            return frame->toPage({}) - before;
        };
        QCOMPARE(drag(Qt::MiddleButton), QPointF(10, 20));
        QCOMPARE(drag(Qt::LeftButton), QPointF());
        QTest::keyPress(wb, Qt::Key_Space);
        QCOMPARE(drag(Qt::LeftButton), QPointF(10, 20));
        QTest::keyRelease(wb, Qt::Key_Space);
        QCOMPARE(drag(Qt::LeftButton), QPointF());
        for (int i = 0; i < 100; ++i)
            turnWheel(wb, at, -1, Qt::NoModifier);
        QCOMPARE(qRound(frame->toPage(QPointF(0, 796)).y()), 720 + 7); // above it stands a scroll bar
    }

    // Guides are dragged out of the rulers, moved, and dragged back, and each window has its own.
    void rulers()
    {
        Window window;
        openExample(window);
        window.choose("mnuWwbZ2");
        const QSize before = window.find<QWidget>("wb")->size();
        window.choose("mnuRulers");
        QVERIFY(!drawn(window).isNull());
        QCOMPARE(window.find<QWidget>("wb")->size(), before);
        const auto *rulers = window.find<Rulers>("rulers");
        auto *wb = window.find<QWidget>("wb");
        const auto drag = [wb](QWidget *from, QPoint to) {
            const auto end = [&] { return from->mapFromGlobal(wb->mapToGlobal(to)); }; // a guide moves along
            QTest::mousePress(from, Qt::LeftButton, {}, {2, 2});
            QTest::mouseMove(from, end());
            QTest::mouseRelease(from, Qt::LeftButton, {}, end());
        };
        drag(window.find<QWidget>("ruler(1)"), {100, 50});
        drag(window.find<QWidget>("ruler(0)"), {100, 50});
        QCOMPARE(rulers->columns(), QList<qint64>{100});
        QCOMPARE(rulers->rows(), QList<qint64>{50});
        window.find<QComboBox>("cboZoom")->setCurrentText(u"50 %"_s);
        drag(window.find<QWidget>("rulerGuide"), {100, 50});
        QCOMPARE(rulers->columns(), QList<qint64>{200});

        const QString other = QStringLiteral(EXAMPLES_FOLDER "/aurora/theme/widget/wnd_radio.xml");
        window.skin->openDocument(other);
        QTRY_COMPARE(rulers->columns(), QList<qint64>());
        openExample(window);
        QTRY_COMPARE(rulers->columns(), QList<qint64>{200});
        drag(window.find<QWidget>("rulerGuide"), {-5, 50});
        QCOMPARE(rulers->columns(), QList<qint64>());
        window.choose("mnuRulers");
        QCOMPARE(rulers->rows(), QList<qint64>());
    }

    // Without "Fixed" all of a window can be scrolled to, also where the screen chosen is smaller.
    void beyondTheScreen()
    {
        Window window;
        openExample(window);
        const auto *area = window.find<QAbstractScrollArea>("previewScroll");
        const auto isAllThere = [area, wb = window.find<QWidget>("wb")] {
            const QSize seen = area->viewport()->size().boundedTo(wb->size());
            return area->horizontalScrollBar()->maximum() + seen.width() >= 1278 &&
                   area->verticalScrollBar()->maximum() + seen.height() >= 718;
        };
        for (const char *command : {"mnuWwbZ3", "mnuWwbZ2", "mnuWwbZ1"}) {
            window.choose(command);
            QTRY_VERIFY2(isAllThere(), command);
        }
    }

    void pointerAndColour()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_color>c.xml</file_color></config>");
        window.write("theme/c.xml", "<color name=\"paper\">#FFFFFF</color>");
        window.openTheme();
        window.skin->resize(1600, 900);
        auto *wb = window.find<QWidget>("wb");
        window.js(u"0"_s);
        QTest::mouseMove(wb, {300, 40});
        QCOMPARE(window.find<QLabel>("lblPointer")->text(), u"300, 40"_s);
        QTRY_COMPARE(window.find<QLabel>("lblPixel")->text(), u"#ffffff paper"_s);
        QTest::mouseClick(window.find<QLabel>("lblPixel"), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"#ffffff"_s);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(wb, &leave);
        QCOMPARE(window.find<QLabel>("lblPointer")->text(), QString());
    }
};

WINDOW_TEST_MAIN(TestView)
#include "tst_view.moc"
