#include "preview/WidgetHtml.h"

#include "markup/MarkerSet.h"
#include "markup/Matching.h"
#include "markup/WidgetDocument.h"
#include "preview/BlockScan.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillmere {

namespace {

using B = BlockScan;

// One text written at its end again and again. A QString would look at each piece whether it is shared.
class Writer
{
public:
    explicit Writer(qsizetype capacity)
        : m_text(capacity, Qt::Uninitialized), m_units(reinterpret_cast<char16_t *>(m_text.data()))
    {
    }

    qsizetype size() const { return m_size; }
    void put(QStringView piece)
    {
        if (piece.size() > m_text.size() - m_size)
            grow(piece.size());
        std::copy_n(piece.utf16(), piece.size(), m_units + m_size);
        m_size += piece.size();
    }
    // Replaces markers in what was put since the size was `from`.
    void replaceSince(qsizetype from, const MarkerReplacement &replacement);
    QStringView written() const { return QStringView(m_units, m_size); }
    QString take();

private:
    void grow(qsizetype by)
    {
        m_text.resize(std::max(m_size + by, m_text.size() + m_text.size() / 2));
        m_units = reinterpret_cast<char16_t *>(m_text.data());
    }

    QString m_text;
    char16_t *m_units;
    qsizetype m_size = 0;
};

void Writer::replaceSince(qsizetype from, const MarkerReplacement &replacement)
{
    const QStringView text = written().sliced(from);
    const auto hits = replacement.find(text);
    if (hits.empty())
        return;
    const QString replaced = replacement.applied(text, hits);
    m_size = from;
    put(replaced);
}

QString Writer::take()
{
    m_text.truncate(m_size);
    m_text.squeeze();
    return std::move(m_text);
}

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

// Up to `most` parts of a list divided by commas; the last one ends at the next comma all the same.
template <size_t most>
size_t partsOf(QStringView list, std::array<QStringView, most> &parts)
{
    size_t count = 0;
    for (qsizetype from = 0; count < most && from <= list.size() && !list.isEmpty();) {
        const qsizetype end = std::find(list.begin() + from, list.end(), u',') - list.begin();
        parts[count++] = list.sliced(from, end - from);
        from = end + 1;
    }
    return count;
}

// Draws block after block. The members below the line hold what a block hands on to the next: a block that
// does not set one of them is drawn with what the block before it left there.
class Renderer
{
public:
    Renderer(const ImageLookup &lookup, const QList<ListRows::Row> &lvFont, qsizetype size)
        : m_getImg(lookup), m_fonts(fontRows(lvFont)), m_page(4 * size + 1000), m_body(2 * size)
    {
        m_page.put(u"<html><head><title>Tes Skin</title><style>");
    }

    // The block must stay where it is until the page is made.
    ListRows::Row draw(QStringView block);
    // The page of all blocks; the last thing asked for.
    QString page();

private:
    void readRect();
    void readColours();
    void images();
    void place();
    void alignment();
    void font();
    void toDiv();
    void spans();
    void putValue(QStringView value);
    bool namesFont(const FontRow &row) const;
    bool has(B::Marker marker) const { return m_scan.has(marker); }
    QString picture(B::Marker marker) const { return m_getImg(m_scan.value(marker).toString()); }
    void rule(std::initializer_list<QStringView> declarations);

    const ImageLookup &m_getImg;
    const QList<FontRow> m_fonts;
    Writer m_page; // until the last block its rules alone
    Writer m_body;
    BlockScan m_scan;
    QStringView m_name, m_string;
    bool m_styleIsChanged = false;    // in what is scanned
    std::vector<QString> m_rewritten; // blocks whose values are in use

    // ---
    QStringView m_x, m_y, m_w, m_h;
    QStringView m_back, m_fore;
    QStringView m_fontSize, m_fontStyle;
};

void Renderer::rule(std::initializer_list<QStringView> declarations)
{
    m_page.put(u"#");
    m_page.put(m_name);
    m_page.put(u"{");
    for (const QStringView part : declarations)
        m_page.put(part);
    m_page.put(u"}\r\n");
}

void Renderer::readRect()
{
    std::array<QStringView, 4> parts;
    if (partsOf(m_scan.value(B::Rect), parts) < parts.size())
        return;
    m_x = parts[0];
    m_y = parts[1];
    m_w = parts[2];
    m_h = parts[3];
}

void Renderer::readColours()
{
    std::array<QStringView, 3> back;
    if (partsOf(m_scan.value(B::BackColor), back) == back.size())
        m_back = back[0];
    std::array<QStringView, 2> fore;
    if (partsOf(m_scan.value(B::ForeColor), fore) == fore.size())
        m_fore = fore[0];
}

void Renderer::images()
{
    if (m_scan.positionOf(B::Imgs) < 1)
        return;
    rule({u"background-color:", m_back, u";"});
    if (has(B::SingleMode)) {
        const QString image = picture(B::Img);
        rule({u"background:", m_back, u" url('", image, u"') left top no-repeat;"});
    } else if (has(B::MultipleMode)) {
        // The receiver draws these eight pictures around the widget; the preview looks them up and shows
        // none.
        for (const B::Marker side : {B::TopImg, B::BottomImg, B::LeftImg, B::RightImg, B::LeftTopImg,
                                     B::RightTopImg, B::LeftBottomImg, B::RightBottomImg}) {
            if (has(side))
                picture(side);
        }
    }
}

void Renderer::place()
{
    rule({u"position:absolute;left:", m_x, u";top:", m_y, u";width:", m_w, u";height:", m_h,
          u";background-color:", m_back, u";color:", m_fore, u";"});
    if (has(B::UnfocusImg))
        rule({u"background:url('", m_scan.value(B::UnfocusImg), u"') no-repeat left top;"});
}

void Renderer::alignment()
{
    if (has(B::HCentre))
        rule({u"text-align: center;"});
    if (has(B::VCentre))
        rule({u"height:", m_h, u"px;line-height:", m_h, u"px;"});
    if (has(B::HCentre))
        rule({u"text-align: center;"}); // pages have always had this rule twice
}

bool Renderer::namesFont(const FontRow &row) const
{
    const auto standsAt = [&](qsizetype position) {
        return matchesIgnoringCase(m_scan.block(), position, row.marker);
    };
    return std::ranges::any_of(m_scan.fonts(), standsAt);
}

void Renderer::font()
{
    if (!has(B::TextClass))
        return;
    for (const FontRow &row : m_fonts) {
        if (row.isDefault) {
            m_fontSize = row.size;
            m_fontStyle = row.style;
        }
        if (namesFont(row)) {
            rule({u"font-size: ", row.size, u"px;font-style:", row.style, u";"});
            return;
        }
    }
    rule({u"font-size: ", m_fontSize, u"px;font-style:", m_fontStyle, u";"});
}

// What is put into the block is itself rewritten as the block is.
void Renderer::putValue(QStringView value)
{
    if (std::find(value.begin(), value.end(), u'/') == value.end()) {
        m_body.put(value);
        return;
    }
    QString text = value.toString();
    replaceIgnoringCase(text, u"</property>", u"-->");
    replaceIgnoringCase(text, u"/>", u"></div>");
    m_body.put(text);
}

void Renderer::spans()
{
    m_body.put(u"<span class=\"nama\">");
    putValue(m_name);
    m_body.put(u"</span><span class=\"string\">");
    putValue(m_string);
    m_body.put(u"</span><span class=\"posisi\">");
    putValue(m_x);
    m_body.put(u" , ");
    putValue(m_y);
    m_body.put(u"</span><span class=\"ukuran\">");
    putValue(m_w);
    m_body.put(u" , ");
    putValue(m_h);
    m_body.put(u"</span>");
}

void Renderer::toDiv()
{
    const QStringView block = m_scan.block();
    qsizetype done = 0;
    m_body.put(u"<div ");
    for (const B::Change &change : m_scan.changes()) {
        if (change.marker == B::Style && m_styleIsChanged)
            continue;
        m_body.put(block.sliced(done, change.position - done));
        done = change.position + change.size;
        if (change.marker == B::Property)
            spans();
        m_body.put(change.marker == B::Property      ? u"<!--"
                   : change.marker == B::PropertyEnd ? u"-->"
                   : change.marker == B::ElementEnd  ? QStringView(u"></div>")
                                                     : QStringView(u"style=\"default\""));
    }
    m_body.put(block.sliced(done));
}

ListRows::Row Renderer::draw(QStringView block)
{
    // The colours that the receiver does not draw. Every ":" is followed by a value of the same block.
    static const MarkerReplacement colours(
        {{u":osd_trans", u":transparent;"}, {u":gui_trans", u":transparent"}});
    const qsizetype rules = m_page.size();
    const qsizetype divs = m_body.size();
    m_scan.scan(block);
    m_name = m_scan.value(B::Id);
    m_styleIsChanged = !m_scan.isStyleApart();
    if (m_styleIsChanged) {
        const QString style = u"style=\"" + m_scan.value(B::Style) + u'"';
        m_rewritten.push_back(block.toString());
        replaceIgnoringCase(m_rewritten.back(), style, u"style=\"default\"");
        m_scan.scan(m_rewritten.back());
    }
    m_string = m_scan.value(B::String);
    ListRows::Row row{m_scan.value(B::Class).toString(), {m_name.toString()}};
    readRect();
    readColours();
    images();
    place();
    alignment();
    font();
    toDiv();
    m_page.replaceSince(rules, colours);
    m_body.replaceSince(divs, colours);
    return row;
}

QString Renderer::page()
{
    m_page.put(u"\r\n<!--stye--></style></head><body>");
    m_page.put(m_body.written());
    m_page.put(u"<body></html>");
    return m_page.take();
}

} // namespace

WidgetPage drawWidgets(const QString &markup, const ImageLookup &GetImg, const QList<ListRows::Row> &lvFont)
{
    const WidgetBlocks cut = cutBlocks(markup);
    Renderer renderer(GetImg, lvFont, cut.text.size());
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
