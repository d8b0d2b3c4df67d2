#include "TextTable.h"
#include "preview/WidgetHtml.h"

using namespace quillmere;
using namespace Qt::StringLiterals;
using S = QStringView;

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
            lvFont.add(QString(), {parts.value(0), u"file"_s, parts.value(1), parts.value(2)});
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

    ListRows m_fonts{QStringList(5)};
    ListRows m_blocks{QStringList(2), ListRows::Checks::Yes};

private slots:
    // For what the slow form and the quick one might both have wrong. In the rules, one a line, "@" stands
    // for those that place a block, and "~" for the same with nothing set.
    void draws_data()
    {
        static constexpr S carried =
            u" <rect>[1,2,3,4]</rect><backcolor>[r,g,b]</backcolor><forecolor>[x,y]</forecolor>"
            u"<div <rect>[7,8,9]</rect><backcolor>[z,z]</backcolor><forecolor>[z]</forecolor>"
            u"<div <Rect>[7,8,9,0]</Rect><Backcolor>[z,z,z]<forecolor>[x,]</forecolor>";
        static constexpr S frame = u"a<imgs><mode>multiple</mode><rb_img>h</rb_img><lb_img>g</"
                                   u"lb_img><rt_img>f</rt_img><lt_img>e</lt_img>"
                                   u"<r_img>d</r_img><l_img>c</l_img><b_img>b</b_img><t_img>a</t_img>";
        static constexpr S single =
            u"a<imgs><img>p</img><Mode>Single</Mode><t_img>q<unfocus_img>P</unfocus_img>VCentre hcentre";
        textTable(
            {"block", "css", "body", "rows", "asked"},
            {{u"a window and its child",
              u" class=`window` style=`s` name=`w 1`><property><rect>[1,2,3,4]</rect><backcolor>[r,g,b]"
              u"</backcolor><forecolor>[x,y]</forecolor></property><children>"
              u"<STYLE class=`box` STYLE=`S` Name=`n`/></Children><signal>s</signal></widget>",
              u"#w 1@#n@",
              u" class=`window` style=`default` id=`w 1`><span class=`nama`>w 1</span><span class=`string`>"
              u"</span><span class=`posisi`>1 , 2</span><span class=`ukuran`>3 , 4</span><!--"
              u"<rect>[1,2,3,4]</rect><backcolor>[r,g,b]</backcolor><forecolor>[x,y]</forecolor>-->"
              u"<div class=`box` STYLE=`S` id=`n`></div><!--s--></div>",
              u"window|w 1,box|n"},
             {u"too few parts carry over", carried.toString().replace(u"<div"_s, u"<widget"_s), u"#@#@#@",
              carried, u"|,|,|"},
             {u"frame of eight pictures", frame, u"#{background-color:;}\n#~", frame, u"|",
              u"a,b,c,d,e,f,g,h"},
             {u"one picture, centred", single,
              u"#{background-color:;}\n#{background: url('/i/p.png') left top "
              u"no-repeat;}\n#~#{background:url('P') "
              u"no-repeat left top;}\n#{text-align: center;}\n#{height:px;line-height:px;}\n#{text-align: "
              u"center;}\n",
              single, u"|", u"p"},
             {u"font, then the last default", u"Class=`Text`<Font>F2</Font><widget CLASS=`text`",
              u"#~#{font-size: 30px;font-style:bold;}\n#~#{font-size: 17px;font-style:;}\n",
              u"Class=`Text`<Font>F2</Font><div CLASS=`text`", u"|,|"}});
    }

    void draws()
    {
        QFETCH(QString, block);
        QFETCH(QString, css);
        QFETCH(QString, body);
        setFonts(m_fonts, u"font_prog 16 italic,f1 20 normal,f2 30 bold,f2 31 thin,font_prog 17"_s);
        css.replace(u'@', u"{position:absolute;left:1;top:2;width:3;height:4;"
                          "background-color:r;color:x;}\n"_s);
        css.replace(u'~', u"{position:absolute;left:;top:;width:;height:;background-color:;color:;}\n"_s);
        css.replace(u'\n', u"\r\n"_s);
        // The second time nothing is left of the first: no value, no row, no tick.
        for (int time = 0; time < 2; ++time) {
            QStringList asked;
            const QString page =
                BuildWidgetHtml(u"id=`n` <widgets><Widget " + block, lookup(asked), m_fonts, m_blocks);
            QCOMPARE(page, QString(u"<html><head><title>Tes Skin</title><style>" + css +
                                   u"\r\n<!--stye--></style></head><body><div " + body + u"<body></html>"));
            QTEST(lines(m_blocks.rows()), "rows");
            QTEST(asked.join(u','), "asked");
            m_blocks.setChecked(0, true);
        }
    }
};

QTEST_APPLESS_MAIN(TestWidgetHtml)
#include "tst_widgethtml.moc"
