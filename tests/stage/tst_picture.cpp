#include "app/WindowFixture.h"

#include "stage/forms/Picture.h"
#include "stage/forms/StageOverlay.h"

#include <QClipboard>
#include <QDir>
#include <QMenu>
#include <QMouseEvent>
#include <QRandomGenerator>
#include <QSignalSpy>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QByteArray block(const char *kind, const char *name, const char *rect, const QByteArray &children = {})
{
    return QByteArray("<widget class=\"") + kind + "\" style=\"default\" name=\"" + name +
           "\">\r\n<property><rect>[" + rect +
           "]</rect><backcolor>[gray,gray,gray]</backcolor></property>\r\n" +
           (children.isEmpty() ? children : "<children>" + children + "</children>") + "</widget>\r\n";
}

// "top" lies over a part of "a"; "a" and "b" stand in "group". The two named "same" have the same rect.
const QByteArray kWindow =
    "<interface>\r\n" +
    block("window", "win", "0,0,800,500",
          block("box", "group", "100,100,300,200",
                block("box", "a", "10,20,100,50") + block("box", "b", "150,20,100,50")) +
              block("box", "top", "90,110,60,60") + block("box", "odd", "500,20,100,40.5") +
              block("box", "spaced", " 500 , +100,120,60 ") + block("box", "same", "600,300,80,40") +
              block("box", "same", "600,400,80,40") + "<!-- " + block("box", "gone", "300,400,80,40") +
              " -->\r\n") +
    "</interface>\r\n";

struct Step
{
    QString what;
    Qt::KeyboardModifiers held;
    QList<QPoint> places;
    Qt::Key key = Qt::Key_unknown;
    bool isQuick = false;
};

// "click 1,2; ctrl shift drag 3,4 5,6; key Delete": one after the other. A drag goes to each of its places.
QList<Step> stepsOf(const QString &text)
{
    static const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
    QList<Step> steps;
    for (const QString &part : text.split(u';')) {
        Step step;
        for (const QString &word : part.split(u' ', Qt::SkipEmptyParts)) {
            if (word == u"ctrl")
                step.held |= Qt::ControlModifier;
            else if (word == u"shift")
                step.held |= Qt::ShiftModifier;
            else if (word == u"quick")
                step.isQuick = true;
            else if (word.contains(u','))
                step.places.append({word.section(u',', 0, 0).toInt(), word.section(u',', 1).toInt()});
            else if (step.what == u"key")
                step.key = Qt::Key(keys.keyToValue(QByteArray("Key_" + word.toUtf8()).constData()));
            else
                step.what = word;
        }
        steps.append(step);
    }
    return steps;
}

} // namespace

// A real mouse and real keys in the picture, and the text that comes of it.
class TestPicture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QSettings().clear();
        m_window = std::make_unique<Window>();
        m_stage = m_window->skin->findChild<Stage *>();
        m_picture = m_window->skin->findChild<Picture *>();
        m_wb = m_window->find<WebBrowser>("wb");
        m_window->write("theme/theme.xml", "<theme><config></config></theme>");
        m_window->write("theme/w.xml", kWindow);
        m_window->openTheme();
        m_window->turnTo(8);
        m_window->choose("mnuWwbZ2"); // at 100 %
    }
    void cleanupTestCase() { m_window.reset(); }

    void init() { m_picture->gestures.snaps = false; }

    void gestures_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QStringList>(
            "changes");                        // what stands in the text, what stands there in the end, ...
        QTest::addColumn<QString>("selected"); // rows
        const auto row = [](const char *name, const char *steps, const QStringList &changes,
                            const char *selected) {
            QTest::newRow(name) << QString::fromLatin1(steps) << changes << QString::fromLatin1(selected);
        };
        const QString top = u"[90,110,60,60]"_s, group = u"[100,100,300,200]"_s;
        row("click", "click 120,130", {}, "4");
        row("what lies below", "click 120,130; click 121,129; click 120,130", {}, "1");
        row("and again what is seen",
            "click 120,130; click 120,130; click 120,130; click 120,130; click 120,130", {}, "4");
        row("the two clicks of a double click go no further", "click 120,130; quick click 120,130", {}, "4");
        row("another place begins a round", "click 120,130; click 120,130; click 140,150", {}, "4");
        row("Esc ends the round", "click 120,130; click 120,130; key Escape; click 120,130", {}, "4");
        row("beside everything", "click 120,130; click 900,560", {}, "");
        row("parent", "click 280,140; ctrl shift click 280,140", {}, "1");
        row("parent's parent", "click 280,140; ctrl shift click 280,140; ctrl shift click 280,140", {}, "0");
        row("add, and take away",
            "click 280,140; ctrl click 120,130; shift click 550,130; ctrl click 280,140", {}, "4 6");
        row("what is in a comment", "click 330,420", {}, "0");
        row("band", "drag 595,295 690,450", {}, "7 8");
        row("band on a block selected", "click 300,250; shift drag 108,108 360,180", {}, "2 3");
        row("a band holds all or nothing", "drag 610,395 690,450", {}, "");
        row("all", "ctrl key A", {}, "0 1 2 3 4 5 6 7 8");
        row("Tab round", "shift key Tab; key Tab; key Tab", {}, "1");

        row("move", "drag 120,130 157,110", {top, u"[127,90,60,60]"_s}, "4");
        row("there and further", "drag 120,130 300,300 100,90 121,131", {top, u"[91,111,60,60]"_s}, "4");
        row("and back", "drag 120,130 300,300 120,130", {}, "4");
        row("a hand that trembles", "drag 120,130 122,131", {}, "4");
        row("what is selected, whatever lies above", "click 300,250; drag 120,130 140,140",
            {group, u"[120,110,300,200]"_s}, "1");
        row("no child moves twice", "click 300,250; ctrl click 280,140; drag 280,140 290,165",
            {group, u"[110,125,300,200]"_s}, "1 3");
        row("several", "click 120,130; shift click 640,420; drag 640,420 650,440",
            {top, u"[100,130,60,60]"_s, u"[600,400,80,40]"_s, u"[610,420,80,40]"_s}, "4 8");
        row("blanks and equal numbers stay", "drag 550,130 550,150", {u"+100"_s, u"120"_s}, "6");
        row("only its own", "drag 640,420 660,440", {u"[600,400,80,40]"_s, u"[620,420,80,40]"_s}, "8");
        row("no whole number", "drag 550,30 600,90", {}, "5");
        row("the ground is the window's", "click 50,450; drag 50,450 60,470",
            {u"[0,0,800,500]"_s, u"[10,20,800,500]"_s}, "0");

        row("size", "click 640,420; drag 680,440 700,470", {u"[600,400,80,40]"_s, u"[600,400,100,70]"_s},
            "8");
        row("left edge", "click 640,420; drag 600,420 590,480", {u"[600,400,80,40]"_s, u"[590,400,90,40]"_s},
            "8");
        row("never negative", "click 640,420; drag 600,400 900,430",
            {u"[600,400,80,40]"_s, u"[680,430,0,10]"_s}, "8");
        row("handles come first", "click 280,140; drag 250,145 230,145",
            {u"[150,20,100,50]"_s, u"[130,20,120,50]"_s}, "3");

        row("Esc puts all back", "press 120,130; move 200,200; key Escape; move 300,300; release 300,300", {},
            "4");
        row("and the next is a drag again",
            "press 120,130; move 200,200; key Escape; release 300,300; drag 120,130 157,110",
            {top, u"[127,90,60,60]"_s}, "4");
        row("one step", "drag 120,130 300,300 157,110; ctrl key Z", {}, "4");
        row("and forward", "drag 120,130 157,110; ctrl key Z; ctrl key Y", {top, u"[127,90,60,60]"_s}, "4");

        row("arrows", "click 120,130; key Right; key Up; shift key Left", {top, u"[81,109,60,60]"_s}, "4");
        row("arrows that size", "click 120,130; ctrl key Right; ctrl shift key Up",
            {top, u"[90,110,61,50]"_s}, "4");
        row("a run is one step", "click 120,130; key Right; ctrl key Down; shift key Left; ctrl key Z", {},
            "4");
        row("the step before a run stays", "drag 120,130 157,110; key Right; key Right; ctrl key Z",
            {top, u"[127,90,60,60]"_s}, "4");
        row("each block its run", "click 120,130; key Right; key Tab; key Tab; key Right; ctrl key Z",
            {top, u"[91,110,60,60]"_s}, "6");
    }

    void gestures()
    {
        QFETCH(const QString, steps);
        QFETCH(const QStringList, changes);
        QFETCH(const QString, selected);
        open("w.xml");
        const QString before = m_window->source()->text();
        QString expected = before;
        for (qsizetype i = 0; i < changes.size(); i += 2) {
            // Where a text stands more than once it is the first one.
            const qsizetype at = expected.indexOf(changes[i]);
            QVERIFY2(at >= 0, qPrintable(changes[i]));
            expected.replace(at, changes[i].size(), changes[i + 1]);
        }
        for (const Step &step : stepsOf(steps)) {
            take(step);
            QTRY_VERIFY(m_stage->places() || step.what == u"press" || step.what == u"move");
        }
        QCOMPARE(linesOf(m_window->source()->text(), before), linesOf(expected, before));
        QCOMPARE(m_window->source()->text(), expected);
        QCOMPARE(rows(), selected);
        if (!steps.contains(u"key Z"))
            QCOMPARE(m_window->source()->document()->isUndoAvailable(), !changes.isEmpty());
    }

    // Nobody waits for the browser: what comes too early is done when it can be.
    void hasty()
    {
        m_window->openDocument("theme/w.xml");
        for (const Step &step : stepsOf(u"drag 120,130 157,110; key Delete; click 280,140; key Right"_s))
            take(step);
        QTRY_VERIFY(m_window->source()->text().contains(u"[151,20,100,50]"_s));
        QVERIFY(!m_window->source()->text().contains(u"\"top\""_s));
    }

    // A gesture that began in another text writes nothing.
    void textChangesMeanwhile()
    {
        open("w.xml");
        take(stepsOf(u"press 120,130"_s).first());
        take(stepsOf(u"move 150,150"_s).first());
        QString text = m_window->source()->text();
        m_window->source()->rewrite(text.replace(u"\"top\""_s, u"\"other\""_s));
        take(stepsOf(u"move 170,170"_s).first());
        take(stepsOf(u"release 170,170"_s).first());
        QTRY_VERIFY(m_stage->places());
        QCOMPARE(m_window->source()->text(), text);
    }

    // While it drags, the page and the outline are where the mouse is, and the list keeps its ticks.
    void followsTheMouse()
    {
        open("w.xml");
        auto *list = m_window->find<QAbstractItemView>("lvBlock");
        list->model()->setData(list->model()->index(6, 0), Qt::Checked, Qt::CheckStateRole);
        const QString text = m_window->source()->text();
        for (const char *step : {"press 120,130", "move 140,150", "move 160,170"})
            take(stepsOf(QString::fromLatin1(step)).first());
        QTRY_COMPARE(m_window->style(u"top"_s, u"left"_s), u"130px"_s);
        QCOMPARE(m_window->style(u"spaced"_s, u"display"_s), u"none"_s);
        QCOMPARE(m_picture->overlay->sketch().selected.first().topLeft(),
                 QPointF(131, 151)); // a pixel is the border of the window
        QVERIFY(m_picture->overlay->sketch().label.startsWith(u"130, 150, 60, 60"_s));
        QCOMPARE(m_window->source()->text(), text);
        key(Qt::Key_Escape);
        QTRY_COMPARE(m_window->style(u"top"_s, u"left"_s), u"90px"_s);
        QCOMPARE(m_window->style(u"spaced"_s, u"display"_s), u"none"_s);
        take(stepsOf(u"release 160,170"_s).first());
        take(stepsOf(u"click 550,130"_s).first()); // hidden: it cannot be hit
        QTRY_COMPARE(rows(), u"0"_s);
    }

    void contextMenu()
    {
        open("w.xml");
        QContextMenuEvent event(QContextMenuEvent::Mouse, {120, 130}, m_wb->mapToGlobal(QPoint(120, 130)));
        QApplication::sendEvent(m_wb, &event);
        QTRY_VERIFY(QApplication::activePopupWidget());
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QStringList items;
        for (const QAction *action : menu->actions())
            items.append(action->text());
        QCOMPARE(items.join(u'|'),
                 u"\"top\"  box|\"a\"  box|\"group\"  box|\"win\"  window||&Properties|&Go to "
                 "Source|&Copy|&Duplicate|&Hide"_s);
        QCOMPARE(rows(), u"4"_s);
        menu->actions().at(1)->trigger();
        QCOMPARE(rows(), u"2"_s);
        menu->close();
    }

    void doubleClickOpens()
    {
        open("w.xml");
        const QSignalSpy opened(m_picture, &Picture::blockOpened);
        for (const char *step : {"click 120,130", "click 120,130", "double 120,130"})
            take(stepsOf(QString::fromLatin1(step)).first());
        QTRY_COMPARE(opened.size(), 1);
        QCOMPARE(opened.first().first().toInt(), 4);
    }

    void badInput_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("huge") << block("box", "x", "-1000000000,0,2000000000,1000000000");
        QTest::newRow("negative size") << block("box", "x", "10,10,-40,-50");
        QTest::newRow("broken") << QByteArray("<widget class=\"box name=\"><rect>[1,2,3,4]</rec<widget <");
        QTest::newRow("quotes") << block("box", "x'&quot;)]}</div>", "10,10,100,100") +
                                       block("box", "", "50,50,100,100");
        QByteArray many;
        for (int i = 0; i < 3000; ++i)
            many += "<widget class=\"box\"><property><rect>[20,20,100,100]</rect></property></widget>";
        QTest::newRow("on one spot") << many;
    }

    void badInput()
    {
        QFETCH(const QByteArray, text);
        m_window->write("theme/bad.xml", "<interface>" + text + "</interface>");
        m_window->openDocument("theme/bad.xml");
        for (const Step &step :
             stepsOf(u"click 60,60; drag 60,60 90,90; click 80,80; key Right; ctrl key A; drag 60,60 120,80;"
                     "click 60,60; drag 10,10 200,200; ctrl key Z; ctrl key Z; ctrl key Z; ctrl key Z"_s))
            take(step);
        m_window->js(u"1"_s); // whatever became of it, the browser and the window live
        open("w.xml");
        take(stepsOf(u"click 120,130"_s).first());
        QTRY_COMPARE(rows(), u"4"_s);
    }

    void examples_data()
    {
        QTest::addColumn<QString>("file");
        const QDir folder(QStringLiteral(EXAMPLES_FOLDER "/aurora/theme/widget"));
        for (const QString &file : folder.entryList({u"wnd_*.xml"_s}))
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }

    // Each block of each example window goes where the mouse does, and back.
    void examples()
    {
        QFETCH(const QString, file);
        m_window->skin->openDocument(file, QString());
        QTRY_VERIFY(m_stage->places());
        const QString before = m_window->source()->text();
        QRandomGenerator random(13);
        const QList<Place> places = *m_stage->places();
        for (const Place &place : places) {
            const QRectF seen = place.visible & QRectF(m_wb->rect());
            const std::optional<RectValue> rect = rectOfRow(m_stage->outline(), place.block);
            if (seen.width() < 4 || seen.height() < 4 || !rect)
                continue;
            m_stage->select({place.block}, Stage::By::List);
            const QPoint from = seen.center().toPoint();
            const QPoint by(random.bounded(20, 90), random.bounded(-80, 80));
            Box box = rect->box;
            box.x += by.x();
            box.y += by.y();
            const QString expected =
                withChanges(before, rectChanges(m_stage->outline(), {{place.block, box}}));
            take({u"drag"_s, {}, {from, from + by}});
            QCOMPARE(linesOf(m_window->source()->text(), before), linesOf(expected, before));
            QCOMPARE(m_window->source()->text(), expected);
            key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(m_window->source()->text(), before);
            QTRY_VERIFY(m_stage->places());
        }
    }

private:
    void open(const char *name)
    {
        m_window->skin->openDocument(m_window->path(QByteArray("theme/"_ba + name).constData()));
        QTRY_VERIFY(m_stage->places());
    }
    // The lines of a text that another one does not have.
    static QString linesOf(const QString &text, const QString &other)
    {
        QStringList lines = text.split(u'\n');
        const QStringList known = other.split(u'\n');
        QString different;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (lines[i] != known.value(i))
                different += QString::number(i) + lines[i].simplified() + u'\n';
        }
        return different;
    }
    QString rows() const
    {
        QStringList rows;
        for (const int row : m_stage->selection())
            rows.append(QString::number(row));
        return rows.join(u' ');
    }
    void mouse(QEvent::Type type, QPoint at, Qt::KeyboardModifiers held, Qt::MouseButton button)
    {
        QMouseEvent event(type, at, m_wb->mapToGlobal(at), button, Qt::LeftButton, held);
        event.setTimestamp(m_time);
        QApplication::sendEvent(m_wb, &event);
    }
    void key(Qt::Key code, Qt::KeyboardModifiers held = {}) { QTest::keyClick(m_wb, code, held); }
    void take(const Step &step)
    {
        m_time += step.what == u"click" && !step.isQuick ? 2 * QApplication::doubleClickInterval() : 10;
        if (step.what == u"key") {
            key(step.key, step.held);
            return;
        }
        const QPoint first = step.places.first(), last = step.places.last();
        if (step.what == u"double")
            mouse(QEvent::MouseButtonDblClick, first, step.held, Qt::LeftButton);
        const bool isWhole = step.what == u"click" || step.what == u"drag";
        if (isWhole || step.what == u"press")
            mouse(QEvent::MouseButtonPress, first, step.held, Qt::LeftButton);
        if (isWhole || step.what == u"move") {
            for (const QPoint place : step.places.mid(step.what == u"move" ? 0 : 1))
                mouse(QEvent::MouseMove, place, step.held, Qt::NoButton);
        }
        if (isWhole || step.what == u"release" || step.what == u"double")
            mouse(QEvent::MouseButtonRelease, last, step.held, Qt::LeftButton);
    }

    std::unique_ptr<Window> m_window;
    Stage *m_stage = nullptr;
    Picture *m_picture = nullptr;
    WebBrowser *m_wb = nullptr;
    quint64 m_time = 1000;
};

WINDOW_TEST_MAIN(TestPicture)
#include "tst_picture.moc"
