#include "TextTable.h"
#include "markup/WidgetDocument.h"
#include "preview/PreviewPage.h"
#include "rows/ListRows.h"
#include "source/SavedText.h"

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestPreviewPage : public QObject
{
    Q_OBJECT

private slots:
    void builds_data()
    {
        // A letter an item in menu order, "-" where not checked; at last Fixed. "[" and "]" stand for what is
        // in every style sheet before and behind the rule of Overflow.
        textTable(
            {"checked", "html", "page", "ticked"},
            {{u"only overflow", u"O------", u"<!--stye-->",
              u"[div{overflow:hidden;}].nama{display:none;}.image span{display:none;}.string{display:none;}"
              u".posisi{display:none;}.ukuran{display:none;}"},
             {u"everything", u"ONITSP-", u"a<!--Stye-->b</style>", u"a[div{overflow:hidden;}]b</style>"},
             {u"name and position", u"-N---P-", u"<!--stye-->",
              u"[].image span{display:none;}.string{display:none;}.ukuran{display:none;}"},
             {u"image, string, size", u"--ITS--", u"<!--stye-->",
              u"[].nama{display:none;}.posisi{display:none;}#b{display:none;}#a c{display:none;}", u"b,a c"},
             {u"fixed", u"O-----F", u"a</STYLE>", u"abody{overflow:hidden;}</style>"},
             {u"key colours", u"-NITSP-", u"#00FF00;#ff00ff #FF00FF00 #00ff0<!--stye-->",
              u"transparent;transparent transparent00 #00ff0[]transparent{display:none;}", u"00ff00"},
             {u"position and size", u"----SP-", u"</span><span class=`ukuran`>2</SPAN><Span class=`ukuran`>",
              u"</span> , <span class=`ukuran`>2</span> , <span class=`ukuran`>"},
             {u"position alone", u"-----P-", u"</span><span class=`ukuran`>",
              u"</span><span class=`ukuran`>"}});
    }

    void builds()
    {
        QFETCH(QString, checked);
        QFETCH(QString, html);
        QFETCH(QString, page);
        QFETCH(QString, ticked);
        page.replace(u'[', u"body{background-color:#fff;}.window{margin:0;}div{font-size:16px;margin:0;"
                           "padding:0;font-family:arial;}"_s);
        page.replace(u']', u"div{border:1px solid #000000;}.image{border:1px solid #FF0000;}"
                           ".text{border:1px solid #0000FF;}.progbar{border:1px solid #106c00;}"
                           ".window{border:1px solid #c0c0c0;}.button{border:1px solid #710d71;}"
                           ".boxitem{border:1px solid #152f81;}"_s);
        ListRows lvBlock(QStringList(2), ListRows::Checks::Yes);
        lvBlock.add(u"text"_s, {u"shown"_s});
        for (const QString &name : ticked.split(u',', Qt::SkipEmptyParts)) {
            lvBlock.add(u"text"_s, {name});
            lvBlock.setChecked(lvBlock.count() - 1, true);
        }
        ViewOptions options;
        for (size_t item = 0; item < options.shown.size(); ++item)
            options.shown[item] = checked[qsizetype(item)] != u'-';
        options.fixed = checked.back() != u'-';
        QCOMPARE(BuildPreviewPage(html, options, u"16"_s, lvBlock), page);
    }

    void screens()
    {
        // The width of every size leads back to its screen, with the margin or without.
        for (const int margin : {0, 600}) {
            const TwipSize small = browserSize(Screen::S1024x576, margin == 0);
            const TwipSize large = browserSize(Screen::S1280x720, margin == 0);
            QCOMPARE(std::pair(small.width, small.height), std::pair(15360 + margin, 8640 + margin));
            QCOMPARE(std::pair(large.width, large.height), std::pair(19200 + margin, 10800 + margin));
            QCOMPARE(screenOfWidth(small.width), Screen::S1024x576);
            QCOMPARE(screenOfWidth(large.width), Screen::S1280x720);
        }
        const auto isLarge = [](const char *width, const char *height) {
            return screenOfTheme(QString::fromLatin1(width), QString::fromLatin1(height)) ==
                   Screen::S1280x720;
        };
        QVERIFY(isLarge(" 1280\r\n", "\t720 "));
        QVERIFY(!isLarge("1280", "576") && !isLarge("12800", "7200") && !isLarge("1024", "720"));
    }

    void savesText()
    {
        QCOMPARE(textToSave(u"a\r\n\r\nb\nc\r\r\n"_s), u"a\n\nb\nc\n\r\n"_s);
        QCOMPARE(textToSave(u"<w CLASS = \"Text\" class= \"TEXT\">"_s),
                 u"<w class=\"text\" class= \"TEXT\">\r\n"_s);
        QCOMPARE(textToSave(u"Class = \r\"TEXT\"<Str\ring></STRING><string> </string>"_s),
                 u"class=\"text\"<string/><string> </string>\r\n"_s);
    }

    void cutsBlocks()
    {
        const auto blocks = [](const char *document) {
            QString each;
            const WidgetBlocks cut = cutBlocks(QString::fromLatin1(document));
            for (const QStringView block : cut.blocks)
                each += u'|' + block;
            return each;
        };
        QCOMPARE(blocks("<interface><widgets></widget></interface>"), QString());
        QCOMPARE(blocks("<widget name=\"a\" Name=\"b\" rename=\"c\"\tname=\"d\"><Style e>"),
                 u"|id=\"a\" id=\"b\" rename=\"c\"\tname=\"d\">|e>"_s);
        QCOMPARE(blocks("<widget a><!-- <widget <SIGNAL>s</signal><signals>"),
                 u"|a><!-- |<!--s--><signals>"_s);
        QCOMPARE(blocks("<wid<children>get a</wid</children>get><st</Children>yle b<chi<children>ldren>"),
                 u"|a</div>|b<children>"_s);
    }

    void findsLineOfBlock()
    {
        QCOMPARE(lineOfBlock(u"  <widget name=\"a\">\r\n", u"a"), 0);
        QCOMPARE(lineOfBlock(u"x\r\n\r\n  name=\"ok\"\r\nok", u"OK"), 5);
        QCOMPARE(lineOfBlock(u"x\r\ny\nok", u"ok"), 3);
        QCOMPARE(lineOfBlock(u"xy\r\nok", u"\nok"), 4);
        QCOMPARE(lineOfBlock(u"x\r\ny\r\nok", u"\r\nok"), 3);
        QCOMPARE(lineOfBlock(u"x\r\ny", u"ok") + lineOfBlock(u"x\r\ny", u"") + lineOfBlock(u"", u"ok"), 0);
    }
};

QTEST_APPLESS_MAIN(TestPreviewPage)
#include "tst_previewpage.moc"
