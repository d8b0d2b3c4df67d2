#include "platform/ListRows.h"
#include "widgets/PreviewPage.h"
#include "widgets/SavedText.h"

#include <QTest>

using namespace quillmere;
using S = QStringView;

class TestPreviewPage : public QObject
{
    Q_OBJECT

private slots:
    void builds_data()
    {
        QTest::addColumn<QString>(
            "checked"); // a letter an item in menu order, "-" where not checked; at last Fixed
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("ticked");
        const auto row = [](const char *name, S checked, S html, S page, S ticked = u"") {
            QTest::newRow(name) << checked.toString() << html.toString() << page.toString()
                                << ticked.toString();
        };
        const auto sheet = [](S overflow, S hidden) {
            return QStringLiteral(
                       "body{background-color:#fff;}.window{margin:0;}div{font-size:16px;margin:0;padding:0;"
                       "font-family:arial;}%1div{border:1px solid #000000;}.image{border:1px solid #FF0000;}"
                       ".text{border:1px solid #0000FF;}.progbar{border:1px solid #106c00;}"
                       ".window{border:1px solid #c0c0c0;}.button{border:1px solid #710d71;}"
                       ".boxitem{border:1px solid #152f81;}%2")
                .arg(overflow, hidden);
        };
        row("only overflow", u"O------", u"<!--stye-->",
            sheet(u"div{overflow:hidden;}",
                  u".nama{display:none;}.image span{display:none;}.string{display:none;}"
                  u".posisi{display:none;}.ukuran{display:none;}"));
        row("everything", u"ONITSP-", u"a<!--Stye-->b</style>",
            QString(u"a" + sheet(u"div{overflow:hidden;}", u"") + u"b</style>"));
        row("name and position", u"-N---P-", u"<!--stye-->",
            sheet(u"", u".image span{display:none;}.string{display:none;}.ukuran{display:none;}"));
        row("image, string and size; ticked blocks", u"--ITS--", u"<!--stye-->",
            sheet(u"", u".nama{display:none;}.posisi{display:none;}#b{display:none;}#a c{display:none;}"),
            u"b,a c");
        row("fixed", u"-NITSPF", u"#a{}<!--stye--></STYLE></style>",
            QString(u"#a{}" + sheet(u"", u"") +
                    u"body{overflow:hidden;}</style>body{overflow:hidden;}</style>"));
        row("key colours, no marker", u"O-----F", u"#00FF00;#ff00ff #FF00FF00 #00ff0</style>",
            u"transparent;transparent transparent00 #00ff0body{overflow:hidden;}</style>", u"b");
        row("key colour as a block's name", u"-NITSP-", u"<!--stye-->",
            sheet(u"", u"transparent{display:none;}"), u"00ff00");
        static constexpr S spans =
            u"1</span><span class=\"ukuran\">2</SPAN><Span class=\"ukuran\">3</span> <span>";
        row("position and size", u"----SP-", spans,
            u"1</span> , <span class=\"ukuran\">2</span> , <span class=\"ukuran\">3</span> <span>");
        row("position alone", u"-----P-", spans, spans);
        row("size alone", u"----S--", spans, spans);
    }

    void builds()
    {
        QFETCH(QString, checked);
        QFETCH(QString, html);
        QFETCH(QString, ticked);
        ListRows lvBlock(QStringList(2), ListRows::Checks::Yes);
        lvBlock.add(QStringLiteral("text"), {QStringLiteral("shown")});
        for (const QString &name : ticked.split(u',', Qt::SkipEmptyParts)) {
            lvBlock.add(QStringLiteral("text"), {name});
            lvBlock.setChecked(lvBlock.count() - 1, true);
        }
        ViewOptions options;
        for (size_t item = 0; item < options.shown.size(); ++item)
            options.shown[item] = checked[qsizetype(item)] != u'-';
        options.fixed = checked.back() != u'-';
        QTEST(BuildPreviewPage(html, options, QStringLiteral("16"), lvBlock), "page");
    }

    void sizesOfTheBrowser()
    {
        // The width of every size leads back to its screen, with the margin or without.
        for (const bool fixed : {true, false}) {
            const int margin = fixed ? 0 : 600;
            const TwipSize small = browserSize(Screen::S1024x576, fixed);
            const TwipSize large = browserSize(Screen::S1280x720, fixed);
            QCOMPARE(std::pair(small.width, small.height), std::pair(15360 + margin, 8640 + margin));
            QCOMPARE(std::pair(large.width, large.height), std::pair(19200 + margin, 10800 + margin));
            QCOMPARE(screenOfWidth(small.width), Screen::S1024x576);
            QCOMPARE(screenOfWidth(large.width), Screen::S1280x720);
        }
    }

    void screenOfTheThemesSize_data()
    {
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("height");
        QTest::addColumn<bool>("large");
        const auto row = [](const char *name, S width, S height, bool large) {
            QTest::newRow(name) << width.toString() << height.toString() << large;
        };
        row("large", u"1280", u"720", true);
        row("large among blanks", u" 1280\r\n", u"\t720 ", true);
        row("one of the two", u"1280", u"576", false);
        row("longer numbers", u"12800", u"7200", false);
        row("not given", u"", u"", false);
    }

    void screenOfTheThemesSize()
    {
        QFETCH(QString, width);
        QFETCH(QString, height);
        QFETCH(bool, large);
        QCOMPARE(screenOfTheme(width, height), large ? Screen::S1280x720 : Screen::S1024x576);
    }

    void savesText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("saved");
        const auto row = [](const char *name, S text, S saved) {
            QTest::newRow(name) << text.toString() << saved.toString();
        };
        row("line ends", u"a\r\n\r\n\r\nb\nc\r\r\n", u"a\n\n\nb\nc\n\r\n");
        row("text class", u"<w CLASS = \"Text\" class= \"TEXT\">", u"<w class=\"text\" class= \"TEXT\">\r\n");
        row("broken by a carriage return", u"Class = \r\"TEXT\"<str\ring></string>",
            u"class=\"text\"<string/>\r\n");
        row("empty strings", u"<String></STRING><string> </string><string/>",
            u"<string/><string> </string><string/>\r\n");
    }

    void savesText()
    {
        QFETCH(QString, text);
        QTEST(textToSave(text), "saved");
    }
};

QTEST_APPLESS_MAIN(TestPreviewPage)
#include "tst_previewpage.moc"
