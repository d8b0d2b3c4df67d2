#include "stage/PictureTest.h"

#include "stage/forms/StageOverlay.h"

#include <QDir>
#include <QMenu>
#include <QRandomGenerator>
#include <QSignalSpy>

using namespace quillmere;
using namespace Qt::StringLiterals;

// A real mouse and real keys in the picture, and the text that comes of it.
class TestPicture : public PictureTest
{
    Q_OBJECT

private slots:
    void initTestCase() { start(); }
    void cleanupTestCase() { m_window.reset(); }

    void gestures_data()
    {
        addColumns();
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
        row("all", "ctrl key A", {}, "0 1 2 3 4 5 6 7 8 10");
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
        row("what is cut away comes back", "drag 280,140 430,140 450,140; drag 450,140 300,140 290,150",
            {u"[150,20,100,50]"_s, u"[160,30,100,50]"_s}, "3");
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

    void gestures() { check(); }

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

    // A drag is one thing at a time: P would centre the block.
    void letterMeanwhile()
    {
        open("w.xml");
        QString text = m_window->source()->text();
        take(stepsOf(u"press 120,130"_s).first());
        take(stepsOf(u"move 157,110"_s).first());
        key(Qt::Key_P);
        take(stepsOf(u"release 157,110"_s).first());
        QVERIFY(isSeen());
        QCOMPARE(m_window->source()->text(), text.replace(u"[90,110,60,60]"_s, u"[127,90,60,60]"_s));
    }

    // What a drag draws from goes with the window.
    void windowGoesMeanwhile()
    {
        open("w.xml");
        take(stepsOf(u"press 120,130"_s).first());
        take(stepsOf(u"move 157,110"_s).first());
        m_window.reset();
        start();
    }

    // The button may be let go over a question that has come up, where nobody hears of it.
    void releaseIsMissed()
    {
        open("w.xml");
        const QString text = m_window->source()->text();
        take(stepsOf(u"press 120,130"_s).first());
        take(stepsOf(u"move 150,150"_s).first());
        QTest::mouseMove(m_wb, {170, 170});
        QTRY_VERIFY(!m_picture->gestures.isUnderWay());
        take(stepsOf(u"release 180,180"_s).first());
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
        QVERIFY(isSeen());
        QStringList texts;
        QRandomGenerator random(13);
        for (int row = int(m_stage->outline().blocks().size()) - 1; row >= 0; --row) { // parents stay so long
            QVERIFY(isSeen());
            const std::optional<Place> place = m_stage->placeOf(row);
            const QRectF seen = place ? place->visible & QRectF(m_wb->rect()) : QRectF();
            const std::optional<RectValue> rect = rectOfRow(m_stage->outline(), row);
            if (seen.width() < 4 || seen.height() < 4 || !rect)
                continue;
            const QString before = m_window->source()->text();
            m_stage->select({row}, Stage::By::List);
            const QPoint from = seen.center().toPoint();
            const QPoint by(random.bounded(20, 90), random.bounded(-80, 80));
            Box box = rect->box;
            box.x += by.x();
            box.y += by.y();
            const QString expected = withChanges(before, rectChanges(m_stage->outline(), {{row, box}}));
            take({u"drag"_s, {}, {from, from + by}});
            if (const QString text = m_window->source()->text(); text != expected)
                QCOMPARE(linesOf(text, expected), linesOf(expected, text));
            texts.append(before);
        }
        while (!texts.isEmpty()) {
            key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(m_window->source()->text(), texts.takeLast());
        }
    }
};

WINDOW_TEST_MAIN(TestPicture)
#include "tst_picture.moc"
