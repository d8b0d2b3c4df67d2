#include "naming/Candidates.h"
#include "naming/Completion.h"

#include "files/TestFiles.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// A theme in which texts hold a font and a string, and images a picture.
class SmallTheme
{
public:
    SmallTheme()
    {
        files.write(
            u"theme/theme.xml"_s,
            "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image></config>");
        files.write(u"theme/image.xml"_s,
                    "<image id=\"Logo\">l.png</image><image id=\"art_logo\">a.png</image>");
        files.write(u"theme/widget.xml"_s, "<widget class=\"window\" name=\"main\"/>");
        files.write(
            u"theme/main.xml"_s,
            "<widget class=\"window\" name=\"main\"><property><rect>[0,0,9,9]</rect></property><children>"
            "<widget class=\"text\"><property><string>a</string><font>f</font></property></widget>"
            "<widget class=\"text\"><property><font>f</font></property></widget>"
            "<widget class=\"clock\"><property><!-- <state>hide</state> --></property></widget>");
        ThemeSources sources;
        sources.folder = files.path(u"theme"_s);
        index = *ThemeIndex::build(sources);
    }
    TestFiles files;
    ThemeIndex index;
};

} // namespace

class tst_Completion : public QObject
{
    Q_OBJECT

private slots:
    void takes_data();
    void takes();
    void offersElementsByUse();
    void counts();
    void narrows();
};

void tst_Completion::takes_data()
{
    QTest::addColumn<QString>("text"); // "|" is the caret
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("taken"); // empty where nothing is to be offered
    const auto row = [](const char *name, const char *text, const char *entry, const char *taken) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(entry)
                            << QString::fromUtf8(taken);
    };
    row("value", "<img>lo|x</img>", "Logo", "<img>Logo|</img>");
    row("blank value", "<img> | </img>", "Logo", "<img> Logo| </img>");
    row("open", "<property><img>lo|\r\n <rect>[1]</rect>", "Logo",
        "<property><img>Logo</img>|\r\n <rect>[1]</rect>");
    row("open, text behind", "<img>lo| x\r\nmore <b>", "Logo", "<img>Logo</img>|\r\nmore <b>");
    row("open, closing begun", "<img>lo|</im", "Logo", "<img>Logo|</im");
    row("open in letters", "<Img>|", "Logo", "<Img>Logo</Img>|");
    row("tag without an end", "<img\r\n|</img>", "", "");
    row("self-closing tag", "<i|/>", "img", "");
    row("comment", "<!-- <img>| -->", "", "");
    row("open comment", "<!-- <widget class=\"|", "", "");
    row("signal", "<signal><img>|</img></signal>", "", "");
    row("in a signal", "<widget ><signal>|</signal>", "", "");
    row("rect", "<rect>[|]</rect>", "", "");
    row("colour", "<backcolor>[red, |,x]</backcolor>", "blue", "<backcolor>[red, blue|,x]</backcolor>");
    row("colour without brackets", "<forecolor>|</forecolor>", "red", "<forecolor>[red|]</forecolor>");
    row("first colour, open", "<forecolor>[r|", "red", "<forecolor>[red|]</forecolor>");
    row("third colour, open", "<forecolor>[a,b,r|]\r\n", "red", "<forecolor>[a,b,red]</forecolor>|\r\n");
    row("colour with more behind", "<forecolor>[r|,b", "red", "<forecolor>[red|,b");
    row("before the list", "<forecolor>|[r]</forecolor>", "", "");
    row("behind the list", "<forecolor>[r]|</forecolor>", "", "");
    row("mode", "<mode>s|", "single", "<mode>single</mode>|");
    row("alignment", "<alignment>|", "hcentre", "<alignment>hcentre|</alignment>");
    row("second word", "<alignment>left|v|</alignment>", "vcentre", "<alignment>left|vcentre|</alignment>");
    row("string over lines", "<string>a\r\nb|</string>", "s", "<string>s|</string>");

    row("element", "<property>\r\n <|\r\n</property>", "img", "<property>\r\n <img>|</img>\r\n</property>");
    row("element begun", "<property><i| <rect>[1]</rect>", "img", "<property><img>|</img> <rect>[1]</rect>");
    row("element with bracket", "<property><im|>", "img", "<property><img>|</img>");
    row("list", "<property><b|", "backcolor", "<property><backcolor>[|]</backcolor>");
    row("block", "<children><w|", "widget", "<children><widget class=\"|\" name=\"\"></widget>");
    row("closed further on", "<widget a>\r\n<prop|\r\n<img>a</img></property></widget>", "property",
        "<widget a>\r\n<property>|\r\n<img>a</img></property></widget>");
    row("name of a closed one", "<property><i|mg>a</img>", "rect", "<property><rect|>a</img>");
    row("with attributes", "<children><w| class=\"a\">", "widget", "<children><widget| class=\"a\">");
    row("behind an open value", "<property><img>a<|", "rect", "<property><img>a<rect>[|]</rect>");
    row("between elements", "<property>im|</property>", "img", "<property><img>|</img></property>");
    row("closing", "<a><property>x</pr|", "property", "<a><property>x</property>|");
    row("in an unknown one", "<thing>x <|", "", "");

    row("class", "<widget class=\"te|\">", "text", "<widget class=\"text|\">");
    row("class, no quote", "<widget class=\"te|\r\n<property>", "text",
        "<widget class=\"text\"|\r\n<property>");
    row("class before another", "<widget class=\"| name=\"a\">", "text",
        "<widget class=\"text\"| name=\"a\">");
    row("class without quotes", "<widget class=te|>", "text", "<widget class=\"text\"|>");
    row("class of no block", "<img class=\"|\">", "", "");
    row("another attribute", "<widget name=\"|\">", "", "");
    row("name of a window", "<widget class=\"window\" name=\"|\"/>", "", "");
    row("catalogue: window", "<widget class=\"window\" style=\"a\" name=\"ma|x\"/>", "main",
        "<widget class=\"window\" style=\"a\" name=\"main|\"/>");
    row("catalogue: before the class", "<widget name=\"|\" class=\"window\"/>", "main",
        "<widget name=\"main|\" class=\"window\"/>");
    row("catalogue: block", "<widget class=\"text\" name=\"|\"/>", "", "");
    row("attribute", "<widget na|>", "name", "<widget name=\"|\">");
    row("attribute with a value", "<widget na|=\"a\">", "name", "<widget name|=\"a\">");
}

void tst_Completion::takes()
{
    QFETCH(QString, text);
    QFETCH(QString, entry);
    QFETCH(QString, taken);
    const qsizetype caret = text.lastIndexOf(u'|');
    text.remove(caret, 1);
    const Outline outline(text);
    const bool isCatalogue = QByteArray(QTest::currentDataTag()).startsWith("catalogue");
    const Completion found =
        completionAt(outline, caret, nullptr, isCatalogue ? FileRole::WindowCatalogue : FileRole::Window);
    if (taken.isEmpty() && entry.isEmpty()) {
        QCOMPARE(found.of, Completion::Of::Nothing);
        return;
    }
    QVERIFY(found.of != Completion::Of::Nothing);
    if (found.of != Completion::Of::Name)
        QCOMPARE(found.entries.contains(entry), !taken.isEmpty());
    if (taken.isEmpty())
        return;
    const TakenEntry change = takeEntry(outline, found, entry);
    QString result = text;
    result.replace(change.range.start, change.range.size(), change.text);
    QCOMPARE(result.insert(change.caret, u'|'), taken);
}

void tst_Completion::offersElementsByUse()
{
    const SmallTheme theme;
    const auto offered = [&](const char *text) {
        const QString all = QString::fromUtf8(text);
        return completionAt(Outline(all), all.size(), &theme.index).entries;
    };
    QCOMPARE(offered("<widget class=\"text\"><property><").first(3),
             QStringList({u"font"_s, u"string"_s, u"imgs"_s}));
    QCOMPARE(offered("<widget class=\"window\"><property><").first(), u"rect"_s);
    QCOMPARE(offered("<widget class=\"clock\"><property><").first(), u"imgs"_s);
    // What is there already goes last, and what may come again does not.
    QCOMPARE(offered("<property><imgs><mode>single</mode><!-- <img> --><").last(), u"mode"_s);
    QCOMPARE(offered("<imgs><img>a</img><mode>single</mode><").last(2), QStringList({u"mode"_s, u"img"_s}));
    QCOMPARE(offered("<imgs><mode").first(), u"mode"_s);
    QCOMPARE(offered("<children><widget/><").first(), u"widget"_s);
    QCOMPARE(offered("<widget class=\"").first(3), QStringList({u"text"_s, u"clock"_s, u"window"_s}));
}

void tst_Completion::counts()
{
    SmallTheme theme;
    const QString path = theme.files.path(u"theme/main.xml"_s);
    const QString text = u"text"_s;
    const qint64 images = theme.index.stamp(NameKind::Image);
    const ThemeIndex before = theme.index;
    theme.index.update(path, u"<widget class=\"text\"><img>a</img></widget>"_s);
    QCOMPARE(theme.index.elementsIn(text, Kind::Font), 0);
    QCOMPARE(theme.index.elementsIn(text, Kind::Img), 1);
    QCOMPARE(theme.index.classes(), QStringList(text));
    QCOMPARE(before.elementsIn(text, Kind::Font), 2);
    QCOMPARE(theme.index.stamp(NameKind::Image), images);
    theme.index.update(theme.files.path(u"theme/image.xml"_s), u"<image id=\"a\">l.png</image>"_s);
    QVERIFY(theme.index.stamp(NameKind::Image) != images);
    QCOMPARE(before.stamp(NameKind::Image), images);
}

void tst_Completion::narrows()
{
    const Candidates names({u"art_logo"_s, u"Logo"_s, u"LOGO_big"_s, u"other"_s});
    QCOMPARE(names.matching(u"lo"), std::vector<qint32>({1, 2, 0}));
    QCOMPARE(names.matching(u"").size(), size_t(4));
    QVERIFY(names.matching(u"x").empty());
}

QTEST_GUILESS_MAIN(tst_Completion)
#include "tst_completion.moc"
