#include "checks/CheckedFiles.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QByteArray window(const QByteArray &blocks)
{
    return "<interface>\n<widget class=\"window\" name=\"w\"><rect>[0,0,100,100]</rect><children>\n" +
           blocks + "\n</children></widget></interface>";
}

// A theme without a fault; all that it names is used in style.xml.
ThemeFiles cleanTheme()
{
    return {
        {u"theme.xml"_s,
         "<theme><config>\n<file_widget>widget/widget.xml</file_widget>\n<file_image>image.xml</file_image>\n"
         "<file_color>color.xml</file_color>\n<file_font>font.xml</file_font>\n"
         "<file_i18n>i18n.xml</file_i18n>\n<name>x</name></config></theme>"},
        {u"widget/widget.xml"_s, "<interface><width>100</width><height>100</height>\n<widget "
                                 "class=\"window\" name=\"w\"/></interface>"},
        {u"image.xml"_s, "<image id=\"Pic\">pic.png</image>"},
        {u"pic.png"_s, "20x10"},
        {u"color.xml"_s, "<color name=\"Red\">#FF0000</color>"},
        {u"font.xml"_s, "<font>\n<name>F</name><file>f.ttf</file></font>"},
        {u"f.ttf"_s, "font"},
        {u"i18n.xml"_s, "<language id=\"German\">german.xml</language>"},
        {u"german.xml"_s,
         "<language name=\"German\"><font>F</font>\n<tran id=\"Hello\">Hallo</tran></language>"},
        {u"style.xml"_s, "<widget name=\"s\"><img>Pic</img><backcolor>[Red,Red,Red]</backcolor><font>F</font>"
                         "<string>Hello</string></widget>"},
        {u"widget/w.xml"_s, window("")},
    };
}

} // namespace

class tst_checks : public QObject
{
    Q_OBJECT

private slots:
    void windows_data();
    void windows();
    void files_data();
    void files();
    void oneWindowOfNewText();
    void remembersPictures();
};

// What stands in the window from line 3 on, and what is found in it.
void tst_checks::windows_data()
{
    QTest::addColumn<QByteArray>("blocks");
    QTest::addColumn<QString>("found"); // "LINE RULE NAME", by "|"

    const auto row = [](const char *name, const char *blocks, const char *found) {
        QTest::newRow(name) << QByteArray(blocks) << QString::fromLatin1(found);
    };
    row("names",
        "<widget name=\"a\">\n<img> Pic </img><font>F</font><backcolor>[ Red ,#00ff00,gui_trans]</backcolor>"
        "<img></img><forecolor></forecolor></widget>",
        "");
    row("unknown",
        "<widget>\n<img>No</img>\n<unfocus_img>Nor</unfocus_img>\n<t_img>Not</t_img>\n"
        "<backcolor>[Red,Blue,#12345]</backcolor>\n<font>G</font></widget>",
        "4 unknown-image No|5 unknown-image Nor|6 unknown-image Not|7 unknown-colour Blue|"
        "7 unknown-colour #12345|8 unknown-font G");
    row("letters",
        "<widget><img>pic</img>\n<backcolor>[red,OSD_trans,Red]</backcolor>\n<font>f</font></widget>",
        "3 letter-case pic|4 letter-case red|4 letter-case OSD_trans|5 letter-case f");
    row("in comments",
        "<!-- <widget name=\"a\"><img>No</img><rect>[1]</rect></widget> -->"
        "<signal><press key=\"1\"/></signal>",
        "");
    row("rects", "<widget name=\"a\"><rect>[ 1 , +2,-0, 4 ]</rect></widget>", "");
    row("bad rects",
        "<widget name=\"a\">\n<rect>[1,2,3]</rect></widget><widget name=\"b\">\n<rect></rect></widget>"
        "<widget name=\"c\">\n<rect>[1,2,3,4.5]</rect></widget><widget name=\"d\">\n<rect/></widget>",
        "4 bad-rect a|5 bad-rect b|6 bad-rect c|7 bad-rect d");
    row("unclosed", "<widget name=\"a\">\n<property>\n<img>Pic</img></widget>",
        "4 unclosed-element property");
    row("closed twice", "<widget name=\"a\">\n</property></widget>", "4 unclosed-element property");
    row("half typed", "<widget name=\"a\"><rect>[1,2\n<!-- x -->", "");
    row("comment", "<!-- closed -->\n<!-- not", "4 unclosed-comment ");
    row("blocks",
        "<widget name=\"a\"/>\n<widget name=\"A\"/><widget/><widget name=\"\"/><widget name=\"\"/>\n"
        "<widget name=\"a\"/>",
        "5 duplicate-block a");
    row("inside",
        "<widget name=\"a\"><rect>[10,10,90,90]</rect><children>\n<widget name=\"b\">"
        "<rect>[0,0,90,90]</rect></widget></children></widget>",
        "");
    row("outside",
        "<widget name=\"a\"><rect>[10,10,50,50]</rect><children>\n<widget name=\"b\">"
        "<rect>[0,0,51,50]</rect></widget>\n<widget name=\"c\"><rect>[0,-1,5,5]</rect></widget>"
        "</children></widget>\n<widget name=\"d\"><rect>[95,0,500,5]</rect></widget>",
        "4 outside-parent b|5 outside-parent c|6 outside-parent d");
    row("pictures",
        "<widget name=\"a\"><rect>[0,0,18,8]</rect><img>Pic</img></widget>\n<widget name=\"b\">"
        "<rect>[0,0,9,9]</rect><mode>multiple</mode><img>Pic</img><t_img>Pic</t_img></widget>",
        "");
    row("large pictures",
        "<widget name=\"a\"><rect>[0,0,17,10]</rect>\n<img>Pic</img></widget><widget name=\"b\">"
        "<rect>[0,0,20,7]</rect><imgs><mode>single</mode>\n<img>Pic</img></imgs></widget>",
        "4 picture-size a|5 picture-size b");
    row("colours",
        "<widget name=\"a\">\n<backcolor>[Red,Red]</backcolor>\n<forecolor>Red</forecolor></widget>",
        "4 colour-list a|5 colour-list a");
    row("modes",
        "<widget name=\"a\"><mode>single</mode><img>Pic</img><l_img></l_img></widget>"
        "<widget name=\"b\"><mode>multiple</mode><rb_img>Pic</rb_img></widget>",
        "");
    row("wrong modes",
        "<widget name=\"a\">\n<mode>single</mode><l_img>Pic</l_img></widget>"
        "<widget name=\"b\"><imgs>\n<mode>multiple</mode><img>Pic</img></imgs></widget>",
        "4 mode a|5 mode b");
    row("key colours",
        "<widget class=\"boxitem\" name=\"a\"><forecolor>[gui_trans,Red,Red]</forecolor></widget>\n"
        "<widget class=\"button\" name=\"b\"><string>1</string>\n"
        "<forecolor>[Red,gui_trans,Red]</forecolor></widget>",
        "5 key-colour gui_trans");
    row("strings", "<widget><string>Hello</string></widget><widget><string>20:15 %</string></widget>", "");
    row("untranslated",
        "<widget><string>Hello</string></widget>\n<widget><string>One</string></widget>\n"
        "<widget><string>Two</string></widget><widget><string>One</string></widget>",
        "4 untranslated German");
}

void tst_checks::windows()
{
    QFETCH(QByteArray, blocks);
    QFETCH(QString, found);

    ThemeFiles theme = cleanTheme();
    QCOMPARE(problemsOf(theme), QStringList());
    theme[u"widget/w.xml"_s] = window(blocks);
    QStringList expected;
    for (const QString &line : found.split(u'|', Qt::SkipEmptyParts))
        expected.append(u"widget/w.xml:" + line);
    // An unfinished window is a text without its end.
    if (QLatin1String(QTest::currentDataTag()) == QLatin1String("half typed"))
        theme[u"widget/w.xml"_s].chop(int(qstrlen("\n</children></widget></interface>")));
    QCOMPARE(problemsOf(theme), expected);
}

// Changed or added files, nothing for one that goes, and what is found.
void tst_checks::files_data()
{
    QTest::addColumn<ThemeFiles>("changed");
    QTest::addColumn<QString>("found");

    const auto row = [](const char *name, const ThemeFiles &changed, const char *found) {
        QTest::newRow(name) << changed << QString::fromLatin1(found);
    };
    const auto f = [](const char *name) { return QString::fromLatin1(name); };
    ThemeFiles theme = cleanTheme();
    row("entries",
        {{f("theme.xml"), theme[f("theme.xml")] + "<config>" /* a second one does not count */},
         {f("f.ttf"), "other"}},
        "");
    row("all in one folder",
        {{f("theme.xml"), QByteArray(theme[f("theme.xml")])
                              .replace("widget/widget.xml", "windows.xml")
                              .replace("<name>", "<file_keymap>keys.xml</file_keymap><name>")},
         {f("windows.xml"), "<width>9</width>"},
         {f("keys.xml"), "keys"}},
        "");
    row("missing entries",
        {{f("theme.xml"), QByteArray(theme[f("theme.xml")])
                              .replace("<name>", "<file_keymap>keys.xml</file_keymap>\n"
                                                 "<file_x>Image.XML</file_x><name>")}},
        "theme.xml:7 theme-config file_keymap|theme.xml:8 letter-case file_x");
    row("languages",
        {{f("i18n.xml"), "<language id=\"German\">German.xml</language>\n"
                         "<language id=\"No\">no.xml</language>"}},
        "i18n.xml:1 letter-case German|i18n.xml:2 theme-config No");
    row("images",
        {{f("image.xml"), "<image id=\"Pic\">pic.png</image>\n<image id=\"Gone\">gone.png</image>\n"
                          "<image id=\"Big\">PIC.png</image>\n<image id=\"Bad\">bad.png</image>\n"
                          "<image id=\"Pic\">pic.png</image>"},
         {f("bad.png"), "no picture"},
         {f("style.xml"), theme[f("style.xml")] + "<widget name=\"t\"><img>Gone</img><l_img>Big</l_img>"
                                                  "<r_img>Bad</r_img></widget>"}},
        "image.xml:2 missing-image-file Gone|image.xml:3 letter-case Big|image.xml:3 same-picture Big|"
        "image.xml:4 unreadable-picture Bad|image.xml:5 duplicate-id Pic");
    row("outside", {{f("image.xml"), "<image id=\"Pic\">../out.png</image>"}, {f("../out.png"), "5x5"}},
        "image.xml:1 unreadable-picture Pic");
    row("fonts",
        {{f("font.xml"), "<font><name>F</name><file>F.ttf</file></font>\n"
                         "<font><name>G</name><file>g.ttf</file></font>\n"
                         "<font><name>H</name></font>"},
         {f("german.xml"), "<language name=\"German\">\n<font>g</font>\n"
                           "<tran id=\"Hello\">Hallo</tran></language>"}},
        "font.xml:1 letter-case F|font.xml:2 missing-font-file G|font.xml:3 missing-font-file H|"
        "font.xml:3 unused-font H|german.xml:2 letter-case g");
    row("documents",
        {{f("widget/widget.xml"), "<width>9</width>\n<widget class=\"window\" name=\"W\"/>\n"
                                  "<widget class=\"window\" name=\"v\"/>\n"
                                  "<widget class=\"window\" name=\"v\"/>"},
         {f("widget/draft.xml"), "<widget>\n<img>No</img><string>Draft</string></widget>"}},
        "widget/draft.xml:1 unlisted-document draft.xml|widget/draft.xml:2 unknown-image No|"
        "widget/widget.xml:2 letter-case W|widget/widget.xml:3 missing-document v|"
        "widget/widget.xml:4 missing-document v|widget/widget.xml:4 duplicate-id v");
    row("unused",
        {{f("image.xml"), "<image id=\"Pic\">pic.png</image>\n<image id=\"pIC\">b.png</image>"},
         {f("b.png"), "1x1"},
         {f("color.xml"), "<color name=\"Red\">#FF0000</color>\n<color name=\"osd_trans\">#F</color>\n"
                          "<color name=\"Rot\">#ff0000</color>"},
         {f("german.xml"), "<language name=\"German\"><tran id=\"Hello\">Hallo</tran>\n"
                           "<tran id=\"Bye\">Ade</tran></language>"}},
        "color.xml:3 unused-colour Rot|color.xml:3 same-colour Rot|german.xml:2 unused-string Bye|"
        "image.xml:2 unused-image pIC");
    row("meant",
        {{f("style.xml"), "<widget name=\"s\"><img>PIC</img><backcolor>[Red,Red,Red]</backcolor>"
                          "<font>F</font><string>Hello</string></widget>"}},
        "style.xml:1 letter-case PIC");
}

void tst_checks::files()
{
    QFETCH(ThemeFiles, changed);
    QFETCH(QString, found);

    ThemeFiles theme = cleanTheme();
    for (auto file = changed.cbegin(); file != changed.cend(); ++file)
        theme[file.key()] = *file;
    QCOMPARE(problemsOf(theme), found.split(u'|', Qt::SkipEmptyParts));
}

// A window that is being edited is checked alone, and says what the whole theme says of the same text.
void tst_checks::oneWindowOfNewText()
{
    const TestFiles files;
    const ThemeFiles theme = cleanTheme();
    for (auto file = theme.cbegin(); file != theme.cend(); ++file)
        files.write(u"theme/"_s + file.key(), *file);
    ThemeSources sources;
    sources.folder = files.path(u"theme"_s);
    PictureStore pictures(readTextPicture);
    const auto index = ThemeIndex::build(sources);
    const auto checked = checkTheme(sources, *index, pictures);

    const QString path = files.path(u"theme/widget/w.xml"_s);
    const QString text = QString::fromLatin1(window("<widget name=\"a\"><rect>[0,0,5,5]</rect>"
                                                    "<string>New</string>\r\n  <img>Pic</img></widget>"));
    const QList<Problem> alone =
        checkWindow(Outline(text), index->files().at(index->numbersOf(path).first()), *index, checked->facts);
    sources.texts.insert(path, text);
    const auto again = checkTheme(sources, *ThemeIndex::build(sources), pictures);
    QCOMPARE(alone.size(), 2);
    QCOMPARE(again->problems.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(alone[i].message(), again->problems[i].message());
        QCOMPARE(alone[i].range, again->problems[i].range);
        QCOMPARE(alone[i].line, 3 + i);
    }
    QCOMPARE(alone[1].column, 3);
    QCOMPARE(alone[1].range.in(text), u"<img>Pic</img>");
}

void tst_checks::remembersPictures()
{
    const TestFiles files;
    files.write(u"a.png"_s, "3x4");
    int reads = 0;
    PictureStore store([&reads](const QByteArray &bytes) {
        ++reads;
        return readTextPicture(bytes);
    });
    const QStringList paths = {files.path(u"a.png"_s)};
    QCOMPARE(store.facts(paths, files.folder(), {}).first().size, QSize(3, 4));
    store.facts(paths, files.folder(), {});
    QCOMPARE(reads, 1);
    files.write(u"a.png"_s, "30x40");
    QCOMPARE(store.facts(paths, files.folder(), {}).first().size, QSize(30, 40));
}

QTEST_GUILESS_MAIN(tst_checks)
#include "tst_checks.moc"
