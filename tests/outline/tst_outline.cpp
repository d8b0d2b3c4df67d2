#include "TextTable.h"
#include "outline/CaretPlace.h"
#include "outline/LineStarts.h"
#include "outline/Outline.h"
#include "outline/OutlineChecks.h"
#include "outline/Values.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

constexpr const char *kEnds[] = {"", "/", "!", "~"};

// A line an element: its depth in dots, name, row of a block, how it ends, its value.
QString asText(const Outline &outline)
{
    QString text;
    for (qint32 i = 0; i < qint32(outline.elements().size()); ++i) {
        const Element &element = outline.element(i);
        for (qint32 up = element.parent; up >= 0; up = outline.element(up).parent)
            text += u'.';
        text += outline.at(element.name());
        if (element.block >= 0)
            text += u"#%1"_s.arg(element.block);
        text += QLatin1String(kEnds[int(element.end)]);
        text += element.inComment ? u"c" : element.inSignal ? u"s" : u"";
        if (isValue(element.kind) && element.end != End::Self)
            text += u" {" + outline.at(element.content()) + u'}';
        text += u'\n';
    }
    for (const Range &tag : outline.strayTags())
        text += u"stray " + outline.at(tag) + u'\n';
    for (const Comment &comment : outline.comments())
        text += (comment.closed ? u"comment " : u"open comment ") + outline.at(comment.range) + u'\n';
    return text;
}

} // namespace

class TestOutline : public QObject
{
    Q_OBJECT

private slots:
    void tree_data()
    {
        textTable(
            {"text", "expected"},
            {{u"nothing", u"a < b & c", u""},
             {u"a window",
              u"<?xml?><interface><widget class=`window`><property><rect>[1,2,3,4]</rect></property>"
              u"<children><widget name=`a`/></children></widget></interface>",
              u"interface\n.widget#0\n..property\n...rect {[1,2,3,4]}\n..children\n...widget#1/\n"},
             {u"letter case", u"<WIDGET a><Img>x</IMG></Widget>", u"WIDGET#0\n.Img {x}\n"},
             {u"no block without a blank", u"<widget>\n<style\tname=`a`/></widget>", u"widget\n.style/\n"},
             {u"children in the way", u"<wid<children>get name=`x`>", u"wid#0~\n.children~\n"},
             {u"value never closed", u"<property><rect>[1,2 <font>f</font></property>",
              u"property\n.rect! {[1,2}\n.font {f}\n"},
             {u"value at the end", u"<property><rect>[1,2 ", u"property~\n.rect~ {[1,2}\n"},
             {u"value that holds elements", u"<string>a<img>b</img>c</string>",
              u"string {a<img>b</img>c}\n.img {b}\n"},
             {u"property never closed", u"<widget a><property><img>i</img><children></children></widget>",
              u"widget#0\n.property!\n..img {i}\n.children\n"},
             {u"sibling of a widget never closed", u"<children><widget a><widget b></widget></children>",
              u"children\n.widget#0!\n.widget#1\n"},
             {u"child without children", u"<widget a><widget b></widget></widget>", u"widget#0\n.widget#1\n"},
             {u"unknown elements", u"<a><b></A></b>", u"a\n.b!\nstray </b>\n"},
             {u"tag never finished", u"<widget class=`a` \n<rec\n<img>i</img>",
              u"widget#0~\n.rec~\n.img {i}\n"},
             {u"quote never closed", u"<widget a=`b>\n<img>i</img></widget>", u"widget#0\n.img {i}\n"},
             {u"bracket in a value", u"<widget a=`b>c`><img/></widget>", u"widget#0\n.img/\n"},
             {u"comments", u"<a><!-- <widget b> <img>i</img> <style c> --></a><widget d/>",
              u"a\n.widget#0/c\n.style#1/c\nwidget#2/\ncomment <!-- <widget b> <img>i</img> <style c> -->\n"},
             {u"comment never closed", u"<a></a><!-- <widget b>",
              u"a\nwidget#0/c\nopen comment <!-- <widget b>\n"},
             {u"shortest comment", u"<!--><a/>", u"a/\ncomment <!-->\n"},
             {u"signal", u"<widget a><signal><press key=`k`/><widget b></signal></widget>",
              u"widget#0\n.signal\n..press/s\n..widget#1!s\n"},
             {u"signal never closed", u"<widget a><signal><press/><property></property></widget>",
              u"widget#0\n.signal!\n..press/s\n.property\n"}});
    }
    void tree()
    {
        QFETCH(QString, text);
        const Outline outline(text);
        QTEST(asText(outline), "expected");
        QCOMPARE(twins::brokenPromise(outline), QString());
    }

    // Each of these would take minutes if anything were done once for every level or every pair.
    void hugeTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("blocks");
        const auto times = [](const char *text, int count) {
            return QString::fromLatin1(text).repeated(count);
        };
        QTest::newRow("deep") << times("<widget a><rect>[1,1,5,5]</rect><children>", 100000) << 100000;
        QTest::newRow("never closed")
            << times("<widget a><property>", 100000) + times("</b>", 100000) << 100000;
        QTest::newRow("other names") << times("<a><b>", 100000) + times("</c>", 200000) << 0;
        QTest::newRow("values") << times("<rect>", 200000) + times(" ", 1000000) + u"</a>" << 0;
        QTest::newRow("quotes") << times("<a b=\"", 200000) << 0;
        QTest::newRow("comments") << times("<!-- <widget ", 200000) << 200000;
        QTest::newRow("taken out") << u"<wid" + times("<children></chil<children>dren>", 100000) + u"get "
                                   << 1;
        QTest::newRow("blanks") << times("<a", 2) + times(" ", 2000000) << 0;
    }
    void hugeTexts()
    {
        QFETCH(QString, text);
        const Outline outline(text);
        QTEST(int(outline.blocks().size()), "blocks");
        QCOMPARE(placesOnScreen(outline).size(), outline.blocks().size());
        for (qsizetype at = 0; at < text.size(); at += 50000)
            caretPlace(outline, at);
    }

    void attributes()
    {
        const Outline outline(u"<widget CLASS = \"te xt\" id=a/b  x \"\" name=\"n\" open=\"o>\n<img/>"_s);
        QStringList found;
        for (const Attribute &attribute : outline.attributesOf(0))
            found += outline.at(attribute.name) + u'=' + outline.at(attribute.value) +
                     (attribute.closed ? u"" : u"...");
        QCOMPARE(found.join(u'|'), u"CLASS=te xt|id=a/b|x=|name=n|open=o..."_s);
        QCOMPARE(outline.at(outline.attribute(0, u"class")->value), u"te xt"_s);
        QCOMPARE(outline.at(outline.nameAttribute(0)->value), u"a/b"_s);
        QVERIFY(!outline.attribute(1, u"class"));
    }

    void rects_data()
    {
        textTable({"value", "expected"}, {{u"plain", u"[1,2,3,4]", u"1 2 3 4"},
                                          {u"blanks and signs", u"[ +1, -2 ,3 , 4 ]", u"1 -2 3 4"},
                                          {u"largest", u"[2147483647,0,0,0]", u"2147483647 0 0 0"},
                                          {u"too large", u"[2147483648,0,0,0]"},
                                          {u"no brackets", u"1,2,3,4"},
                                          {u"three", u"[1,2,3]"},
                                          {u"five", u"[1,2,3,4,5]"},
                                          {u"a fraction", u"[1.5,2,3,4]"},
                                          {u"a missing one", u"[1,,3,4]"},
                                          {u"a sign alone", u"[1,-,3,4]"},
                                          {u"empty", u""},
                                          {u"a bracket alone", u"["}});
    }
    void rects()
    {
        QFETCH(QString, value);
        const Outline outline(QString(u"<rect>" + value + u"</rect>"));
        const std::optional<RectValue> rect = rectOf(outline, 0);
        QStringList numbers, written;
        if (rect) {
            numbers = {QString::number(rect->box.x), QString::number(rect->box.y),
                       QString::number(rect->box.w), QString::number(rect->box.h)};
            for (const Range &range : rect->ranges)
                written += outline.at(range).toString().remove(u'+');
        }
        QTEST(numbers.join(u' '), "expected");
        QCOMPARE(written, numbers);
    }

    void places()
    {
        const Outline outline(
            u"<widget w><property><rect>[10,20,500,400]</rect></property><children>"
            "<widget a><property><rect>[1,2,30,40]</rect></property><children>"
            "<widget b><property><rect>[3,4,5,6]</rect></property></widget></children></widget>"
            "<!-- <widget c> <rect>[1,1,1,1]</rect> --><widget "
            "d><property><rect>[]</rect></property><children>"
            "<widget e><property><rect>[1,1,1,1]</rect></property></widget></children></widget>"
            "</children></widget>"_s);
        QStringList boxes;
        for (const std::optional<Box> &box : placesOnScreen(outline))
            boxes += box ? u"%1,%2,%3,%4"_s.arg(box->x).arg(box->y).arg(box->w).arg(box->h) : u"-"_s;
        QCOMPARE(boxes.join(u' '), u"10,20,500,400 11,22,30,40 14,26,5,6 - - -"_s);
        QStringList blocks;
        for (const QChar unit : u"wabde"_s) {
            const qint32 block = outline.blockOf(
                outline.elementAt(outline.text().indexOf(QString(u"<widget " + QString(unit)))));
            blocks += QString::number(outline.element(block).block);
        }
        QCOMPARE(blocks.join(u' '), u"0 1 2 4 5"_s);
        QCOMPARE(outline.blockOf(outline.elementAt(outline.text().indexOf(u"[3,4"))), outline.blocks()[2]);
    }

    // A "^" marks the caret. The answer: what it is in, the word, the innermost element, the attribute.
    void carets_data()
    {
        textTable({"text", "expected"},
                  {{u"before everything", u"^<a>", u"Text||"},
                   {u"empty text", u"^", u"Text||"},
                   {u"bracket alone", u"<property><^\r\n</property>", u"ElementName||property"},
                   {u"element name", u"<property><re^c\n</property>", u"ElementName|rec|rec"},
                   {u"at the end of the name", u"<rect^>", u"ElementName|rect|rect"},
                   {u"behind the tag", u"<property>^</property>", u"Text||property"},
                   {u"in a tag", u"<widget a ^>", u"Tag||widget"},
                   {u"in a tag not finished", u"<widget a=`b` ^\n<img/>", u"Tag||widget"},
                   {u"attribute name", u"<widget cl^ass=`text`>", u"AttributeName|class|widget|class"},
                   {u"attribute value", u"<widget class=`te^xt`>", u"AttributeValue|text|widget|class"},
                   {u"empty attribute value", u"<widget class=`^>", u"AttributeValue||widget|class"},
                   {u"value", u"<img> pi^c </img>", u"Value|pic|img"},
                   {u"empty value", u"<img>^</img>", u"Value||img"},
                   {u"value not closed", u"<property><img>pic^\n<font>f</font></property>", u"Value|pic|img"},
                   {u"colour", u"<forecolor>[red,bl^ue,red]</forecolor>", u"Value|blue|forecolor"},
                   {u"alignment", u"<alignment>hcentre|vc^</alignment>", u"Value|vc|alignment"},
                   {u"behind a value", u"<property><img>a</img>^</property>", u"Text||property"},
                   {u"closing name", u"<img>a</im^g>", u"ClosingName|img|img"},
                   {u"closing name begun", u"<property></^\n</property>", u"ClosingName||property"},
                   {u"comment", u"<!-- <im^ -->", u"Comment||"},
                   {u"comment not closed", u"<!-- <widget a>^", u"Comment||"},
                   {u"before a comment", u"<widget a>^<!-- -->", u"Text||widget"},
                   {u"between blocks", u"<widget a></widget>^<widget b>", u"Text||"}});
    }
    void carets()
    {
        QFETCH(QString, text);
        static const char *const names[] = {"Text", "Value",         "ElementName",    "ClosingName",
                                            "Tag",  "AttributeName", "AttributeValue", "Comment"};
        const qsizetype at = text.indexOf(u'^');
        const Outline outline(text.remove(at, 1));
        const CaretPlace place = caretPlace(outline, at);
        QString found = QLatin1String(names[int(place.in)]) + u'|' + outline.at(place.word) + u'|';
        if (place.element >= 0)
            found += outline.at(outline.element(place.element).name());
        if (!place.attribute.name.isEmpty())
            found += u'|' + outline.at(place.attribute.name);
        QTEST(found, "expected");
    }

    void lines()
    {
        const LineStarts lines(u"ab\r\n\nc");
        QCOMPARE(lines.lines(), 3);
        QCOMPARE(lines.placeOf(0), (LineColumn{1, 1}));
        QCOMPARE(lines.placeOf(3), (LineColumn{1, 4}));
        QCOMPARE(lines.placeOf(4), (LineColumn{2, 1}));
        QCOMPARE(lines.placeOf(6), (LineColumn{3, 2}));
    }

    void vocabulary()
    {
        for (int i = 1; i < kKinds; ++i) {
            QCOMPARE(kindOf(nameOf(Kind(i)).toString().toUpper()), Kind(i));
            for (const Kind inner : elementsFor(Kind(i)))
                QVERIFY(mayHold(Kind(i), inner));
        }
        QCOMPARE(kindOf(u"imgx"), Kind::Other);
    }
};

QTEST_GUILESS_MAIN(TestOutline)
#include "tst_outline.moc"
