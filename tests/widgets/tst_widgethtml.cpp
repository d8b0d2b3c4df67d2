#include "widgets/LiteralRenderer.h"

#include <QTest>

using namespace quillmere;

class TestWidgetHtml : public QObject
{
    Q_OBJECT

private:
    // "name size style", separated by commas.
    static void setFonts(ListRows &lvFont, const QString &fonts)
    {
        lvFont.clear();
        for (const QString &font : fonts.split(u',', Qt::SkipEmptyParts)) {
            const QStringList parts = font.split(u' ');
            lvFont.add(QString(), {parts.value(0), QStringLiteral("file"), parts.value(1), parts.value(2)});
        }
    }

    // An image catalogue that knows every name in small letters and writes down what it was asked.
    static ImageLookup lookup(QStringList &asked)
    {
        return [&asked](const QString &id) {
            asked += id;
            return id == id.toLower() && !id.isEmpty() ? QString(u"/i/" + id + u".png") : QString();
        };
    }

    static QString lines(const QList<ListRows::Row> &rows)
    {
        QStringList list;
        for (const ListRows::Row &row : rows)
            list += row.text + u'|' + row.subItems.join(u'|') + (row.checked ? u"|ticked" : u"");
        return list.join(u',');
    }

    using S = QStringView;

    // Markup is full of double quotes; here back quotes stand for them.
    static QString quoted(S text) { return text.toString().replace(u'`', u'"'); }

    ListRows m_fonts{QStringList(5)};
    ListRows m_blocks{QStringList(2), ListRows::Checks::Yes};

private slots:
    void draws_data()
    {
        QTest::addColumn<QString>("markup");
        QTest::addColumn<QString>("css"); // one rule a line
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("fonts");
        const auto row = [](const char *name, S markup, S css, S body, S rows, S asked = u"", S fonts = u"") {
            QTest::newRow(name) << quoted(markup) << css.toString() << quoted(body) << rows.toString()
                                << asked.toString() << fonts.toString();
        };
        // A block n that goes into the page as it is, with rules before and behind the one that places it.
        const auto block = [&row](const char *name, S text, S before, S behind, S asked = u"",
                                  S fonts = u"") {
            const QString css =
                before + u"#n{position:absolute;left:;top:;width:;height:;background-color:;color:;}\n" +
                behind;
            row(name, QString(u"<widget id=`n` " + text), css, QString(u"<div id=`n` " + text), u"|n", asked,
                fonts);
        };
        // A block n and a block m that comes out with the same values.
        const auto carries = [&row](const char *name, S n, S m, S rect, S colours) {
            const QString place = u"{position:absolute;" + rect + colours + u"}\n";
            row(name, QString(u"<widget id=`n`" + n + u"><widget id=`m`" + m + u'>'),
                QString(u"#n" + place + u"#m" + place),
                QString(u"<div id=`n`" + n + u"><div id=`m`" + m + u'>'), u"|n,|m");
        };

        row("nothing to draw", u"<interface>id=`n` <widgets></interface>", u"", u"", u"");
        row("empty", u"", u"", u"", u"");
        row("a window and its child",
            u"<?xml?><Widget class=`window` style=`s` name=`w 1`><property><rect>[1,2,3,4]</rect>"
            u"<backcolor>[r,g,b]</backcolor><forecolor>[x,y]</forecolor></property><children>"
            u"<STYLE class=`box` STYLE=`S` Name=`n`/></Children><signal>s</signal></widget>",
            u"#w 1{position:absolute;left:1;top:2;width:3;height:4;background-color:r;color:x;}\n"
            u"#n{position:absolute;left:1;top:2;width:3;height:4;background-color:r;color:x;}\n",
            u"<div class=`window` style=`default` id=`w 1`><span class=`nama`>w 1</span>"
            u"<span class=`string`></span><span class=`posisi`>1 , 2</span><span class=`ukuran`>3 , 4"
            u"</span><!--<rect>[1,2,3,4]</rect><backcolor>[r,g,b]</backcolor><forecolor>[x,y]"
            u"</forecolor>--><div class=`box` STYLE=`S` id=`n`></div><!--s--></div>",
            u"window|w 1,box|n");
        row("string with markup in it, no name behind a name",
            u"<widget id=`n`><widget style=`A` Style=`a`><string>a/><Property></string></PROPERTY>",
            u"#n{position:absolute;left:;top:;width:;height:;background-color:;color:;}\n"
            u"#{position:absolute;left:;top:;width:;height:;background-color:;color:;}\n",
            u"<div id=`n`><div style=`default` style=`default`><string>a></div><span class=`nama`></span>"
            u"<span class=`string`>a></div><Property></span><span class=`posisi`> , </span>"
            u"<span class=`ukuran`> , </span><!--</string>-->",
            u"|n,|");

        static constexpr S rect = u"<rect>[1,2,3,4]</rect>", placed = u"left:1;top:2;width:3;height:4;";
        static constexpr S unplaced = u"left:;top:;width:;height:;";
        static constexpr S colours = u"<backcolor>[r,g,b]</backcolor><forecolor>[x,y]</forecolor>";
        static constexpr S coloured = u"background-color:r;color:x;";
        static constexpr S uncoloured = u"background-color:;color:;";
        carries("rect missing", rect, u"", placed, uncoloured);
        carries("rect of three parts", rect, u"<rect>[7,8,9]</rect>", placed, uncoloured);
        carries("rect in other letters", rect, u"<Rect>[7,8,9,10]</Rect>", placed, uncoloured);
        carries("rect of five parts", u"<rect>[ 1,-2,,4,5]</rect>", u"", u"left: 1;top:-2;width:;height:4;",
                uncoloured);
        carries("one colour", colours, u"<backcolor>[z]</backcolor><forecolor>[z]</forecolor>", unplaced,
                coloured);
        carries("two colours", colours, u"<backcolor>[z,z]</backcolor><forecolor>[x,]</forecolor>", unplaced,
                coloured);
        carries("transparent colours",
                u"<backcolor>[Osd_Trans,g,b]</backcolor><forecolor>[GUI_trans,y]</forecolor>", u"", unplaced,
                u"background-color:transparent;;color:transparent;");

        block("one picture", u"<imgs><img>p</img><Mode>Single</Mode><mode>multiple</mode><t_img>q",
              u"#n{background-color:;}\n#n{background: url('/i/p.png') left top no-repeat;}\n", u"", u"p");
        block("unknown picture", u"<IMGS><img>P</img><mode>single</mode>",
              u"#n{background-color:;}\n#n{background: url('') left top no-repeat;}\n", u"", u"P");
        block("frame of eight pictures",
              u"<imgs><mode>multiple</mode><rb_img>h</rb_img><lb_img>g</lb_img><rt_img>f</rt_img><lt_img>e"
              u"</lt_img><r_img>d</r_img><l_img>c</l_img><b_img>b</b_img><t_img>a</t_img>",
              u"#n{background-color:;}\n", u"", u"a,b,c,d,e,f,g,h");
        block("frame in other letters", u"<imgs><mode>multiple</mode><L_IMG>a</L_IMG><r_img>b",
              u"#n{background-color:;}\n", u"", u",b");
        row("pictures at the very start", u"<widget <imgs><img>p</img><mode>single</mode>",
            u"#{position:absolute;left:;top:;width:;height:;background-color:;color:;}\n",
            u"<div <imgs><img>p</img><mode>single</mode>", u"|");
        block("picture without focus", u"<unfocus_img>P</unfocus_img>", u"",
              u"#n{background:url('P') no-repeat left top;}\n");
        block("centred twice", u"VCentre hcentre", u"",
              u"#n{text-align: center;}\n#n{height:px;line-height:px;}\n#n{text-align: center;}\n");

        static constexpr S f2 = u"Class=`Text`><Font>F2</Font>";
        block("font", f2, u"", u"#n{font-size: 30px;font-style:bold;}\n", u"",
              u"f1 20 normal,f2 30 bold,f2 31 thin");
        block("last default font", f2, u"", u"#n{font-size: 17px;font-style:bold;}\n", u"",
              u"font_prog 16 italic,f1 20 normal,font_prog 17 bold");
        block("no font named", u"CLASS=`text`", u"", u"#n{font-size: 16px;font-style:italic;}\n", u"",
              u"font_prog 16 italic");
        block("no default font", f2, u"", u"#n{font-size: px;font-style:;}\n", u"", u"Font_Prog 16 italic");
        block("fonts are for texts", u"Class=`image`><font>f2</font>", u"", u"", u"", u"f2 30 bold");
    }

    void draws()
    {
        QFETCH(QString, markup);
        QFETCH(QString, css);
        QFETCH(QString, body);
        QFETCH(QString, fonts);
        setFonts(m_fonts, fonts);
        const QString page = u"<html><head><title>Tes Skin</title><style>" +
                             css.replace(u'\n', QStringLiteral("\r\n")) +
                             u"\r\n<!--stye--></style></head><body>" + body + u"<body></html>";
        // The second time nothing is left of the first: no value, no row, no tick.
        for (int time = 0; time < 2; ++time) {
            QStringList asked;
            QCOMPARE(BuildWidgetHtml(markup, lookup(asked), m_fonts, m_blocks), page);
            QTEST(lines(m_blocks.rows()), "rows");
            QTEST(asked.join(u','), "asked");
            for (int block = 0; block < m_blocks.count(); ++block)
                m_blocks.setChecked(block, true);
        }
    }

    void drawsRandomTextLikeItsSteps_data()
    {
        QTest::addColumn<QString>("fonts");
        QTest::newRow("no fonts") << QString();
        QTest::newRow("default first") << QStringLiteral("font_prog 16 italic,f 20 normal,font_prog 17 bold");
        QTest::newRow("default last") << QStringLiteral("g 20 normal,F 21 thin,h,font_prog 16 italic");
        QTest::newRow("no default") << QStringLiteral("g 20 normal, 8 small,Font_Prog 9 thin");
    }

    void drawsRandomTextLikeItsSteps()
    {
        // Blocks are opened often, or most texts would be one long block.
        static constexpr S openings =
            u"<widget name=`a`|<widget class=`text` name=`b`|<Style Name=`C'[x]`|<WIDGET id=`d`|"
            u"<widget <imgs>|<widget ";
        static const QStringList tokens = [] {
            static constexpr S loose =
                u"</widget>|</WIDGET>|<children>|</Children>|<chi<children>ldren>|na<signal>|</signal>|"
                u"<wid</children>get | name=`e`| name=|id=`|`|>|/>|<|,| class=`text`| CLASS=`Text`| style=`|"
                u" class=`image`| style=`s`| Style=`S`| style=``|<string>t/></string>|<string><property>|"
                u"<string></property></String>|<string/>|<property>|</property>|<PROPERTY>|</Property>|"
                u"<rect>[|]</rect>|<imgs>|<IMGS "
                u"x>|<mode>single</mode>|<mode>multiple</mode>|<img>|<unfocus_img/>|"
                u"<mode>Multiple</MODE>|hcentre|HCentre|VCentre|<font>font_prog</font>|<font></font>|"
                u":osd_trans|:Gui_Trans|<!--|\r\n| \u017Ftyle=`S`|\u0416\u0436";
            QStringList list = quoted(loose).split(u'|');
            for (const char16_t *name :
                 {u"rect", u"backcolor", u"forecolor", u"Rect", u"BackColor", u"ForeColor"}) {
                for (const char16_t *value :
                     {u"", u"1", u"2,3", u"4,5,6", u"7,8,9,10", u"OSD_trans,,Gui_trans,1,2"})
                    list += u'<' + S(name) + u">[" + S(value) + u"]</" + S(name).toString().toLower() + u'>';
            }
            for (const char16_t *name :
                 {u"img", u"t_img", u"b_img", u"l_img", u"r_img", u"lt_img", u"rt_img", u"lb_img", u"rb_img",
                  u"unfocus_img", u"font", u"string", u"L_Img", u"Unfocus_img", u"Font"}) {
                for (const QChar value : {u'f', u'G'})
                    list += u'<' + S(name) + u'>' + value + u"</" + S(name) + u'>';
            }
            return list;
        }();
        QFETCH(QString, fonts);
        setFonts(m_fonts, fonts);
        QRandomGenerator random(7);
        for (int round = 0; round < 2500; ++round) {
            QString markup = twins::randomText(random, tokens, random.bounded(3));
            for (int block = random.bounded(5); block > 0; --block) {
                markup += twins::randomText(random, quoted(openings).split(u'|'), 1);
                markup += twins::randomText(random, tokens, random.bounded(30));
            }
            QStringList asked, expectedAsked;
            QList<ListRows::Row> rows;
            const QString expected = twins::buildWidgetHtml(markup, lookup(expectedAsked), m_fonts, rows);
            const QString actual = BuildWidgetHtml(markup, lookup(asked), m_fonts, m_blocks);
            const auto report = [&] {
                return twins::shown(QStringList{markup, actual, expected}.join(u'\n'));
            };
            QVERIFY2(actual == expected, qPrintable(report()));
            QVERIFY2(lines(m_blocks.rows()) == lines(rows), qPrintable(report()));
            QVERIFY2(asked == expectedAsked, qPrintable(report()));
        }
    }
};

QTEST_APPLESS_MAIN(TestWidgetHtml)
#include "tst_widgethtml.moc"
