#include "stage/ElementChanges.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// Lines of tests end in LF, and stand for CR LF.
QString lines(const QByteArray &text)
{
    return QString::fromUtf8(text).replace(u"\n"_s, u"\r\n"_s);
}

QString namesOf(const Outline &outline, const QList<int> &blocks)
{
    QStringList names;
    for (const int block : blocks) {
        const auto name = outline.nameAttribute(outline.blocks()[size_t(block)]);
        names.append(name ? outline.at(name->value).toString() : u"-"_s);
    }
    return names.join(u' ');
}

// With a text in it.
QByteArray boxitem(const char *name, const char *rect, const char *child)
{
    return QByteArray("<widget class=\"boxitem\" name=\"") + name + "\">\n<property>\n     <rect>[" + rect +
           "]</rect>\n</property>\n     <children>\n<widget class=\"text\" name=\"" + child +
           "\">\n     <rect>[1,2,3,4]</rect>\n</widget>\n</children>\n</widget>\n";
}

// As an opened window is written.
const QByteArray kFlat = R"(<interface>
<widget class="window" name="w">
<property>
     <rect>[0,0,1280,720]</rect>
</property>
     <children>
<widget class="text" name="a"/>
     <!-- of b -->
)" + boxitem("b", " 10,+20,30,40", "b9") +
                         R"(<widget class="text" name="A2"/>
</children>
</widget>
     <style class="s" name="title">
</style>
</interface>
)";

// As one writes by hand.
const char *const kNested = R"(<interface>
  <widget class="window" name="w">
    <signal>
      <press key="ok"/>
    </signal>
  </widget>
  <widget class="text" name="x">
    <property>
      <rect>[1,2,3,4]</rect>
      <!-- stays
   as it is -->
    </property>
  </widget> <!-- behind -->
</interface>
)";

} // namespace

class TestStageElements : public QObject
{
    Q_OBJECT

private:
    static void compare(const QString &text, const Edited &edited, const QString &after,
                        const QString &selected)
    {
        const QString changed = withChanges(text, edited.changes);
        QCOMPARE(changed, after);
        QCOMPARE(namesOf(Outline(changed), edited.selection), selected);
    }

private slots:
    // What is looked for in the window, and what stands in its place afterwards.
    void deletes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("blocks");
        QTest::addColumn<QString>("gone");
        QTest::addColumn<QString>("stays");
        const auto row = [](const char *name, const QString &text, const QList<int> &blocks,
                            const QByteArray &gone, const char *stays) {
            QTest::newRow(name) << text << blocks << lines(gone) << lines(stays);
        };
        row("its line", lines(kFlat), {1}, "<widget class=\"text\" name=\"a\"/>\n", "");
        row("with what stands in it", lines(kFlat), {3, 2, 4},
            boxitem("b", " 10,+20,30,40", "b9") + "<widget class=\"text\" name=\"A2\"/>\n", "");
        row("indented", lines(kFlat), {5}, "     <style class=\"s\" name=\"title\">\n</style>\n", "");
        row("not alone on its last line", lines(kNested), {1},
            R"(<widget class="text" name="x">
    <property>
      <rect>[1,2,3,4]</rect>
      <!-- stays
   as it is -->
    </property>
  </widget>)",
            "");
        row("two on one line", u"<p>\n\t<widget a/> <widget b/> \r</p>"_s, {1, 0},
            "\t<widget a/> <widget b/> \r", "");
        row("one of two on a line", u"<p>\n<widget a/><widget b/>\n</p>"_s, {1}, "<widget b/>", "");
        row("no closing tag", u"<p><widget a><widget b/></p>"_s, {0, 1}, "<widget b/>", "");
        row("in a comment", u"<p><!-- <widget a/> --></p>"_s, {0}, "", "");
        row("the last line", u"<p/>\n<widget a/>"_s, {0, 0, 7, -1}, "<widget a/>", "");
    }

    void deletes()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, blocks);
        QFETCH(QString, gone);
        QFETCH(QString, stays);
        gone.replace(u" \r\n"_s, u" \r"_s);
        const qsizetype at = text.indexOf(gone);
        QVERIFY(at >= 0);
        compare(text, deleted(Outline(text), blocks), QString(text).replace(at, gone.size(), stays), {});
    }

    void duplicates()
    {
        const QString text = lines(kFlat);
        QString after = text;
        after.replace(lines("</children>\n</widget>\n<widget class=\"text\" name=\"A2\"/>\n"),
                      lines("</children>\n</widget>\n" + boxitem("b2", " 18,28,30,40", "b10") +
                            "<widget class=\"text\" name=\"A2\"/>\n"));
        after.replace(lines("</style>\n"),
                      lines("</style>\n     <style class=\"s\" name=\"title2\">\n</style>\n"));
        after.replace(lines("name=\"a\"/>\n"), lines("name=\"a\"/>\n<widget class=\"text\" name=\"a3\"/>\n"));
        compare(text, duplicated(Outline(text), {5, 2, 3, 1}), after, u"title2 b2 a3"_s);

        const QString dense =
            u"<p><widget name=\"n09\"><rect>[2147483647,0,1,1]</rect></widget><widget/></p>"_s;
        compare(dense, duplicated(Outline(dense), {0}),
                u"<p><widget name=\"n09\"><rect>[2147483647,0,1,1]</rect></widget>"
                "<widget name=\"n10\"><rect>[2147483647,8,1,1]</rect></widget><widget/></p>"_s,
                u"n10"_s);
    }

    void movesAmongSiblings_data()
    {
        QTest::addColumn<QString>("blocks");
        QTest::addColumn<QString>("front"); // names of all blocks
        QTest::addColumn<QString>("back");
        const auto row = [](const char *blocks, const char *front, const char *back) {
            QTest::newRow(blocks) << QString::fromLatin1(blocks) << QString::fromLatin1(front)
                                  << QString::fromLatin1(back);
        };
        row("a", "b b1 b2 a c c1 d", "a b b1 b2 c c1 d");
        row("d", "a b b1 b2 c c1 d", "a b b1 b2 d c c1");
        row("c a", "b b1 b2 a d c c1", "a c c1 b b1 b2 d");
        row("b c", "a d b b1 b2 c c1", "b b1 b2 c c1 a d");
        row("d c b a", "a b b1 b2 c c1 d", "a b b1 b2 c c1 d");
        row("b1 c1", "a b b2 b1 c c1 d", "a b b1 b2 c c1 d");
        row("b2 a", "b b1 b2 a c c1 d", "a b b2 b1 c c1 d");
        row("c b2", "a b b1 b2 d c c1", "a c c1 b b1 b2 d");
    }

    void movesAmongSiblings()
    {
        QFETCH(QString, blocks);
        QFETCH(QString, front);
        QFETCH(QString, back);
        const QString text =
            u"<p>\n<widget name=\"a\"/><!-- 1 -->\n  <widget name=\"b\"><widget name=\"b1\"/>"
            "<widget name=\"b2\"></widget></widget><!-- <widget name=\"x\"> -->\n\n"
            "<widget name=\"c\"><widget name=\"c1\"/>\n</widget><widget name=\"d\"/>\n</p>"_s;
        const Outline before(text);
        const auto all = [](const Outline &outline) {
            QList<int> rows;
            for (int row = 0; row < int(outline.blocks().size()); ++row)
                rows.append(row);
            return namesOf(outline, rows).remove(u"x "_s);
        };
        QList<int> rows;
        for (const QString &name : blocks.split(u' '))
            rows.append(
                int(QStringList{u"a"_s, u"b"_s, u"b1"_s, u"b2"_s, u"x"_s, u"c"_s, u"c1"_s, u"d"_s}.indexOf(
                    name)));
        for (const auto &[toward, wanted] : {std::pair(Toward::Front, front), {Toward::Back, back}}) {
            const Edited edited = moved(before, rows, toward);
            const Outline after(withChanges(text, edited.changes));
            QCOMPARE(all(after), wanted);
            QCOMPARE(namesOf(after, edited.selection), blocks);
            QVERIFY(edited.changes.isEmpty() == (wanted == all(before)));
        }
    }

    void movesLines()
    {
        const QString text = lines("<p>\n  <widget a/>\n\n  <!-- b -->\n<widget b>\n</widget> \n</p>\n");
        compare(text, moved(Outline(text), {0}, Toward::Front),
                lines("<p>\n<widget b>\n</widget>\n\n  <!-- b -->\n  <widget a/> \n</p>\n"), u"-"_s);
    }

    void copies()
    {
        const Outline flat(lines(kFlat));
        QCOMPARE(copied(flat, {3, 1}), lines("<widget class=\"text\" name=\"a\"/>\n"
                                             "<widget class=\"text\" name=\"b9\">\n"
                                             "     <rect>[1,2,3,4]</rect>\n</widget>"));
        QCOMPARE(copied(Outline(QString::fromUtf8(kNested)), {1}),
                 QString::fromUtf8("<widget class=\"text\" name=\"x\">\n  <property>\n    <rect>[1,2,3,4]"
                                   "</rect>\n    <!-- stays\n   as it is -->\n  </property>\n</widget>"));
        QCOMPARE(copied(flat, {}), QString());
    }

    void pastes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("blocks");
        QTest::addColumn<QString>("clip");
        QTest::addColumn<QString>("before"); // what it comes behind
        QTest::addColumn<QString>("comes");
        QTest::addColumn<QString>("selected");
        const auto row = [](const char *name, const QString &text, const QList<int> &blocks,
                            const QByteArray &clip, const char *before, const char *comes,
                            const QString &selected) {
            QTest::newRow(name) << text << blocks << QString::fromUtf8(clip) << lines(before) << lines(comes)
                                << selected;
        };
        const QByteArray one = "<widget name=\"n\"/>";
        const QByteArray whole = "junk <img>x</img>\n    <widget name=\"n\">\n        <property>\n"
                                 "            <rect>[1,2,3,4]</rect>\n        </property>\n    </widget>\n"
                                 "    <!-- and -->\n    <widget name=\"b\"/> more";
        row("window", lines(kFlat), {0}, one, "name=\"A2\"/>\n", "<widget name=\"n\"/>\n", u"n"_s);
        row("nothing selected", lines(kFlat), {}, one, "name=\"A2\"/>\n", "<widget name=\"n\"/>\n", u"n"_s);
        row("has children", lines(kFlat), {2}, one, "4]</rect>\n</widget>\n", "<widget name=\"n\"/>\n",
            u"n"_s);
        row("has none", lines(kFlat), {1}, one, "name=\"a\"/>\n", "<widget name=\"n\"/>\n", u"n"_s);
        row("the last of several", lines(kFlat), {3, 1}, one, "4]</rect>\n</widget>\n",
            "<widget name=\"n\"/>\n", u"n"_s);
        row("nested text into a flat one", lines(kFlat), {1}, whole, "name=\"a\"/>\n",
            "<widget name=\"n\">\n<property>\n     <rect>[1,2,3,4]</rect>\n</property>\n</widget>\n"
            "<!-- and -->\n<widget name=\"b2\"/>\n",
            u"n b2"_s);
        row("nested text without children", lines(kNested), {0}, whole, "</signal>\n",
            "    <children>\n      <widget name=\"n\">\n          <property>\n"
            "              <rect>[1,2,3,4]</rect>\n          </property>\n      </widget>\n"
            "      <!-- and -->\n      <widget name=\"b\"/>\n    </children>\n",
            u"n b"_s);
        row("flat text into a nested one", lines(kNested), {0},
            "<widget name=\"n\">\n<property>\n     <rect>[1]</rect>\n</property>\n</widget>", "</signal>\n",
            "    <children>\n      <widget name=\"n\">\n        <property>\n          <rect>[1]</rect>\n"
            "        </property>\n      </widget>\n    </children>\n",
            u"n"_s);
        row("names that are taken", lines(kFlat), {1},
            "<widget name=\"A\"><widget name=\"a\"/></widget><style name=\"a3\"/><widget name=\"TITLE\"/>",
            "name=\"a\"/>\n",
            "<widget name=\"A4\"><widget name=\"a5\"/></widget>\n<style name=\"a3\"/>\n"
            "<widget name=\"TITLE2\"/>\n",
            u"A4 a3 TITLE2"_s);
        row("no element", lines(kFlat), {1}, "<rect>[1,2,3,4]</rect> <widget > <!-- <widget a/> -->", "", "",
            {});
        row("all on one line", u"<p><widget class=\"Window\"><widget a/></widget></p>"_s, {0}, one,
            "<widget a/>", "<widget name=\"n\"/>", u"n"_s);
        row("children on one line", u"<p>\n<widget a><children></children></widget></p>"_s, {0}, one,
            "<children>", "\n<widget name=\"n\"/>\n", u"n"_s);
        row("no block", u"<interface>\r\n</interface>"_s, {}, one, "<interface>\n", "<widget name=\"n\"/>\n",
            u"n"_s);
        row("no text", {}, {}, one, "", "<widget name=\"n\"/>", u"n"_s);
    }

    void pastes()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, blocks);
        QFETCH(QString, clip);
        QFETCH(QString, before);
        QFETCH(QString, comes);
        QFETCH(QString, selected);
        if (text.contains(u'\n') && !text.contains(u'\r')) {
            before.remove(u'\r');
            comes.remove(u'\r');
        }
        QVERIFY(text.contains(before));
        QString after = text;
        after.insert(text.indexOf(before) + before.size(), comes);
        compare(text, pasted(Outline(text), blocks, clip), after, selected);
    }

    void selfClosedParents()
    {
        const QString text = lines("<widget class=\"window\" name=\"w\" />\n");
        compare(text, pasted(Outline(text), {0}, u"<widget name=\"W\"/>"_s),
                lines("<widget class=\"window\" name=\"w\">\n     <children>\n<widget name=\"W2\"/>\n"
                      "</children>\n</widget>\n"),
                u"W2"_s);
        const QString empty = u"<Widget name=\"w\">\n     <children/>\n</Widget>\n"_s;
        compare(empty, pasted(Outline(empty), {0}, u"<widget name=\"n\"/>\r\n"_s),
                u"<Widget name=\"w\">\n     <children>\n<widget name=\"n\"/>\n</children>\n</Widget>\n"_s,
                u"n"_s);
    }

    void inserts()
    {
        const QString text = lines(kFlat);
        QString after = text;
        after.insert(text.indexOf(u"</children>\r\n</widget>\r\n<widget"_s),
                     lines(R"(<widget class="button" style="default" name="button1">
<property>
     <string>Button</string>
     <rect>[5,-6,2147483647,8]</rect>
     <backcolor>[gui_trans,gui_trans,gui_trans]</backcolor>
     <forecolor>[#ffffff,#ffffff,#ffffff]</forecolor>
     <alignment>hcentre|vcentre</alignment>
     <imgs>
     <mode>single</mode>
     <img></img>
</imgs>
</property>
</widget>
)"));
        const Outline outline(text);
        QCOMPARE(parentForNew(outline, {2, 1}), 2);
        QCOMPARE(parentForNew(outline, {}), 0);
        compare(text, inserted(outline, NewBlock::Button, 2, {5, -6, 1LL << 40, 8}), after, u"button1"_s);

        const QString nested =
            lines("<interface>\n\t<widget class=\"window\" name=\"Text1\">\n\t\t<property>\n"
                  "\t\t\t<backcolor>[red]</backcolor>\n\t\t\t<forecolor>[green]</forecolor>"
                  "\n\t\t\t<font> small </font>\n\t\t</property>\n\t</widget>\n</interface>");
        QString filled = nested;
        filled.insert(nested.indexOf(u"\t</widget>"),
                      lines("\t\t<children>\n"
                            "\t\t\t<widget class=\"text\" style=\"default\" name=\"text2\">\n"
                            "\t\t\t\t<property>\n"
                            "\t\t\t\t\t<string>Text</string>\n"
                            "\t\t\t\t\t<rect>[1,2,3,4]</rect>\n"
                            "\t\t\t\t\t<backcolor>[gui_trans,gui_trans,gui_trans]</backcolor>\n"
                            "\t\t\t\t\t<forecolor>[green]</forecolor>\n"
                            "\t\t\t\t\t<font>small</font>\n"
                            "\t\t\t\t\t<alignment>vcentre</alignment>\n"
                            "\t\t\t\t</property>\n\t\t\t</widget>\n\t\t</children>\n"));
        compare(nested, inserted(Outline(nested), NewBlock::Text, -1, {1, 2, 3, 4}), filled, u"text2"_s);
        QVERIFY(inserted(Outline(u"<style a/>"_s), NewBlock::Text, -1, {}).changes.isEmpty());
    }

    void placesOfNewBlocks_data()
    {
        QTest::addColumn<QString>("parent"); // its rect
        QTest::addColumn<NewBlock>("kind");
        QTest::addColumn<QString>("rect");
        QTest::newRow("all on the screen") << u"0,0,1000,600"_s << NewBlock::Text << u"350,280,300,40"_s;
        QTest::newRow("out at the right") << u"1200,0,300,100"_s << NewBlock::Button << u"0,25,80,50"_s;
        QTest::newRow("out at the left and below")
            << u"-100,600,400,300"_s << NewBlock::Boxitem << u"100,0,300,120"_s;
        QTest::newRow("not to be seen") << u"2000,0,400,300"_s << NewBlock::Image << u"100,75,200,150"_s;
        QTest::newRow("no room") << u"10,10,-4,0"_s << NewBlock::Progbar << u"-152,-12,300,24"_s;
        QTest::newRow("no rect") << u"1,2"_s << NewBlock::Text << u"490,340,300,40"_s;
    }

    void placesOfNewBlocks()
    {
        QFETCH(QString, parent);
        QFETCH(NewBlock, kind);
        const Outline outline(u"<widget class=\"window\"><rect>[" + parent + u"]</rect></widget>");
        const Box box = placeForNew(outline, kind, 0, QSize(1280, 720));
        QTEST(u"%1,%2,%3,%4"_s.arg(box.x).arg(box.y).arg(box.w).arg(box.h), "rect");
    }
};

QTEST_APPLESS_MAIN(TestStageElements)
#include "tst_stageelements.moc"
