#include "stage/PictureTest.h"

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// A block that was inserted, the first of its kind.
QString made(const QString &kind, const QStringList &properties)
{
    return u"<widget class=\"%1\" style=\"default\" name=\"%2\">\r\n<property>\r\n     %3\r\n"
           "</property>\r\n</widget>\r\n"_s.arg(kind, kind + u'1', properties.join(u"\r\n     "));
}

} // namespace

// What the picture's keys do to whole elements, and what Esc ends.
class TestPictureElements : public PictureTest
{
    Q_OBJECT

private slots:
    void initTestCase() { start(); }
    void cleanupTestCase() { m_window.reset(); }

    void elements_data()
    {
        addColumns();
        const QString top = u"[90,110,60,60]"_s;
        const QString topBlock = shown("box", "top", "[90,110,60,60]");
        const QString odd = shown("box", "odd", "[500,20,100,40.5]");
        const QString spaced = shown("box", "spaced", "[ 500 , +100,120,60 ]");
        const QString last = shown("box", "pic", "[700,20,60,40]",
                                   "     <imgs>     <mode>single</mode>     <img>p</img></imgs>");
        row("to the front", "click 550,30; key PageUp", {odd, {}, spaced, spaced + odd}, "6");
        row("to the back", "click 550,130; key PageDown", {odd, {}, spaced, spaced + odd}, "5");
        row("already in front", "click 720,40; key PageUp", {}, "10");
        row("delete", "click 120,130; key Delete", {topBlock, {}}, "");
        row("cut and paste", "click 120,130; ctrl key X; ctrl key V", {topBlock, {}, last, last + topBlock},
            "10");
        row("copy and paste", "click 120,130; ctrl key C; ctrl key V",
            {topBlock, topBlock + shown("box", "top2", "[90,110,60,60]")}, "5");
        row("duplicate", "click 120,130; ctrl key D",
            {topBlock, topBlock + shown("box", "top2", "[98,118,60,60]")}, "5");
        row("duplicating is one step", "click 120,130; ctrl key D; ctrl key Z", {}, "4");
        const QString colours = u"<backcolor>[gray,gray,gray]</backcolor>\r\n     "
                                "<forecolor>[#ffffff,#ffffff,#ffffff]</forecolor>"_s;
        const QString picture = u"<imgs>\r\n     <mode>single</mode>\r\n     <img></img>\r\n</imgs>"_s;
        const QString button =
            made(u"button"_s, {u"<string>Button</string>"_s, u"<rect>[320,225,160,50]</rect>"_s, colours,
                               u"<alignment>hcentre|vcentre</alignment>"_s, picture});
        row("draw a block", "choose mnuInsert(0); drag 650,200 750,240",
            {last, last + made(u"text"_s, {u"<string>Text</string>"_s, u"<rect>[650,200,100,40]</rect>"_s,
                                           colours, u"<alignment>vcentre</alignment>"_s})},
            "11");
        row("in the block selected", "click 300,250; choose mnuInsert(4); drag 340,260 300,250",
            {u"</children></widget>\r\n" + topBlock,
             made(u"progbar"_s, {u"<rect>[200,150,40,10]</rect>"_s, colours, picture}) +
                 u"</children></widget>\r\n" + topBlock},
            "4");
        row("put a block into the middle", "choose mnuInsert(3); key Return", {last, last + button}, "11");
        row("of the block selected, and no larger", "click 280,140; choose mnuInsert(2); key Enter",
            {u"</widget>\r\n</children></widget>\r\n" + topBlock,
             u"     <children>\r\n"_s +
                 made(u"boxitem"_s, {u"<rect>[0,0,100,50]</rect>"_s, colours, picture}) +
                 u"</children>\r\n</widget>\r\n</children></widget>\r\n" + topBlock},
            "4");
        row("that is one step", "choose mnuInsert(3); key Return; ctrl key Z", {}, "10");
        row("Enter alone", "click 120,130; key Return", {}, "4");
        row("distribute", "click 120,130; ctrl click 550,130; ctrl click 720,40; key D",
            {u"[ 500 ,"_s, u"[ 365 ,"_s}, "4 6 10");
        row("distribute down", "click 120,130; ctrl click 280,140; ctrl click 720,40; key V",
            {top, u"[90,60,60,60]"_s}, "4 3 10");
        row("as its picture", "click 720,40; key F", {u"[700,20,60,40]"_s, u"[700,20,32,24]"_s}, "10");

        row("Esc ends a band first", "click 120,130; press 50,450; move 700,480; key Escape; release 700,480",
            {}, "4");
        row("a block that waits for its place, too",
            "click 120,130; choose mnuInsert(0); key Escape; drag 120,130 157,110",
            {top, u"[127,90,60,60]"_s}, "4");
        row("then the selection", "click 120,130; choose mnuInsert(0); key Escape; key Escape", {}, "");
        row("from the list",
            "click 120,130; focus lvBlock; choose mnuInsert(0); focus lvBlock; key Escape; drag 120,130 "
            "157,110",
            {top, u"[127,90,60,60]"_s}, "4");
        row("then the selection, from the list",
            "click 120,130; choose mnuInsert(0); focus lvBlock; key Escape; key Escape", {}, "");
    }

    void elements() { check(); }

    // Elements go as text, into another window and out of the program.
    void clipboard()
    {
        m_window->write("theme/v.xml",
                        "<interface>\r\n" + block("window", "top", "0,0,800,500") + "</interface>\r\n");
        open("w.xml");
        for (const Step &step : stepsOf(u"click 280,140; ctrl key X"_s))
            take(step);
        const QString b = shown("box", "b", "[150,20,100,50]");
        QCOMPARE(QApplication::clipboard()->text(), b.chopped(2));
        QVERIFY(!m_window->source()->text().contains(b));
        open("v.xml");
        const QString before = m_window->source()->text();
        key(Qt::Key_V, Qt::ControlModifier);
        const QString end = u"</widget>\r\n</interface>"_s;
        QVERIFY(before.contains(end));
        QCOMPARE(m_window->source()->text(),
                 QString(before).replace(end, u"     <children>\r\n"_s + b + u"</children>\r\n" + end));
        QTRY_COMPARE(rows(), u"1"_s);
        key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_window->source()->text(), before);
    }
};

WINDOW_TEST_MAIN(TestPictureElements)
#include "tst_pictureelements.moc"
