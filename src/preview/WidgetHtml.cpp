#include "preview/WidgetHtml.h"

#include "markup/Matching.h"
#include "markup/WidgetDocument.h"
#include "markup/mndIni.h"

#include <array>

namespace quillmere {

namespace {

struct FontRow
{
    QString marker; // "<font>NAME</font>"
    QString size;
    QString style;
    bool isDefault = false;
};

QList<FontRow> fontRows(const QList<ListRows::Row> &lvFont)
{
    QList<FontRow> fonts;
    for (const ListRows::Row &row : lvFont) {
        const QString name = row.sub(1);
        fonts.append({u"<font>" + name + u"</font>", row.sub(3), row.sub(4), name == u"font_prog"});
    }
    return fonts;
}

// Draws block after block. The members below the line hold what a block hands on to the next: a block that
// does not set one of them is drawn with what the block before it left there.
class Renderer
{
public:
    Renderer(const ImageLookup &lookup, const QList<ListRows::Row> &lvFont)
        : m_getImg(lookup), m_fonts(fontRows(lvFont))
    {
    }

    ListRows::Row draw(QStringView source);
    QString page() const;
    void reserve(qsizetype size)
    {
        m_css.reserve(size);
        m_body.reserve(2 * size);
    }

private:
    void readRect();
    void readColours();
    void images();
    void place();
    void alignment();
    void font();
    void toDiv(const QString &text);
    bool has(QStringView marker) const { return containsIgnoringCase(m_block, marker); }
    QStringView field(QStringView opening, QStringView closing) const
    {
        return SplitFieldView(m_block, opening, closing, 1, 0);
    }
    void rule(std::initializer_list<QStringView> declarations);

    const ImageLookup &m_getImg;
    const QList<FontRow> m_fonts;
    QString m_css;
    QString m_body;
    QString m_block;
    QString m_name;

    // ---
    QString m_x, m_y, m_w, m_h;
    QString m_back, m_fore;
    QString m_fontSize, m_fontStyle;
};

void Renderer::rule(std::initializer_list<QStringView> declarations)
{
    m_css += u'#';
    m_css += m_name;
    m_css += u'{';
    for (QStringView part : declarations)
        m_css += part;
    m_css += u"}\r\n";
}

void Renderer::readRect()
{
    const QList<QStringView> parts = splitExact(field(u"<rect>[", u"]</rect>"), u",");
    if (parts.size() < 4)
        return;
    m_x = parts[0].toString();
    m_y = parts[1].toString();
    m_w = parts[2].toString();
    m_h = parts[3].toString();
}

void Renderer::readColours()
{
    const QList<QStringView> back = splitExact(field(u"<backcolor>[", u"]</backcolor>"), u",");
    if (back.size() >= 3)
        m_back = back[0].toString();
    const QList<QStringView> fore = splitExact(field(u"<forecolor>[", u"]</forecolor>"), u",");
    if (fore.size() >= 2)
        m_fore = fore[0].toString();
}

void Renderer::images()
{
    static constexpr std::array<std::array<QStringView, 2>, 8> frame = {{{u"<t_img>", u"</t_img>"},
                                                                         {u"<b_img>", u"</b_img>"},
                                                                         {u"<l_img>", u"</l_img>"},
                                                                         {u"<r_img>", u"</r_img>"},
                                                                         {u"<lt_img>", u"</lt_img>"},
                                                                         {u"<rt_img>", u"</rt_img>"},
                                                                         {u"<lb_img>", u"</lb_img>"},
                                                                         {u"<rb_img>", u"</rb_img>"}}};
    if (indexOfIgnoringCase(m_block, u"<imgs") < 1)
        return;
    rule({u"background-color:", m_back, u";"});
    if (has(u"<mode>single</mode>")) {
        const QString image = m_getImg(field(u"<img>", u"</img>").toString());
        rule({u"background:", m_back, u" url('", image, u"') left top no-repeat;"});
    } else if (has(u"<mode>multiple</mode>")) {
        // The receiver draws these eight pictures around the widget; the preview looks them up and shows
        // none.
        for (const auto &[opening, closing] : frame) {
            if (has(opening))
                m_getImg(field(opening, closing).toString());
        }
    }
}

void Renderer::place()
{
    rule({u"position:absolute;left:", m_x, u";top:", m_y, u";width:", m_w, u";height:", m_h,
          u";background-color:", m_back, u";color:", m_fore, u";"});
    if (has(u"<unfocus_img>"))
        rule({u"background:url('", field(u"<unfocus_img>", u"</unfocus_img>"), u"') no-repeat left top;"});
}

void Renderer::alignment()
{
    const bool centred = has(u"hcentre");
    if (centred)
        rule({u"text-align: center;"});
    if (has(u"vcentre"))
        rule({u"height:", m_h, u"px;line-height:", m_h, u"px;"});
    if (centred)
        rule({u"text-align: center;"}); // pages have always had this rule twice
}

void Renderer::font()
{
    if (!has(u"class=\"text\""))
        return;
    const bool named = has(u"<font>");
    for (const FontRow &row : m_fonts) {
        if (row.isDefault) {
            m_fontSize = row.size;
            m_fontStyle = row.style;
        }
        if (named && has(row.marker)) {
            rule({u"font-size: ", row.size, u"px;font-style:", row.style, u";"});
            return;
        }
    }
    rule({u"font-size: ", m_fontSize, u"px;font-style:", m_fontStyle, u";"});
}

void Renderer::toDiv(const QString &text)
{
    const QString spans = u"<span class=\"nama\">" + m_name + u"</span><span class=\"string\">" + text +
                          u"</span><span class=\"posisi\">" + m_x + u" , " + m_y +
                          u"</span><span class=\"ukuran\">" + m_w + u" , " + m_h + u"</span>";
    m_block.prepend(u"<div ");
    replaceIgnoringCase(m_block, u"<property>", QString(spans + u"<!--"));
    replaceIgnoringCase(m_block, u"</property>", u"-->");
    replaceIgnoringCase(m_block, u"/>", u"></div>");
    m_body += m_block;
}

ListRows::Row Renderer::draw(QStringView source)
{
    m_block = source.toString();
    m_name = field(u"id=\"", u"\"").toString();
    const QString style = u"style=\"" + field(u"style=\"", u"\"") + u'"';
    replaceIgnoringCase(m_block, style, u"style=\"default\"");
    const QString text = field(u"<string>", u"</string>").toString();
    ListRows::Row row{field(u"class=\"", u"\"").toString(), {m_name}};
    readRect();
    readColours();
    images();
    place();
    alignment();
    font();
    toDiv(text);
    return row;
}

QString Renderer::page() const
{
    QString page = u"<html><head><title>Tes Skin</title><style>" + m_css +
                   u"\r\n<!--stye--></style></head><body>" + m_body + u"<body></html>";
    replaceIgnoringCase(page, u":osd_trans", u":transparent;");
    replaceIgnoringCase(page, u":gui_trans", u":transparent");
    return page;
}

} // namespace

WidgetPage drawWidgets(const QString &markup, const ImageLookup &GetImg, const QList<ListRows::Row> &lvFont)
{
    const WidgetBlocks cut = cutBlocks(markup);
    Renderer renderer(GetImg, lvFont);
    renderer.reserve(cut.text.size());
    QList<ListRows::Row> rows;
    rows.reserve(cut.blocks.size());
    for (QStringView block : cut.blocks)
        rows.append(renderer.draw(block));
    return {renderer.page(), std::move(rows)};
}

QString BuildWidgetHtml(const QString &markup, const ImageLookup &GetImg, const ListRows &lvFont,
                        ListRows &lvBlock)
{
    WidgetPage page = drawWidgets(markup, GetImg, lvFont.rows());
    lvBlock.assign(std::move(page.blocks));
    return page.html;
}

} // namespace quillmere
