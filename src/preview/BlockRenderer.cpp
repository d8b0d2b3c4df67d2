#include "preview/BlockRenderer.h"

#include "markup/MarkerSet.h"
#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr QStringView kHead = u"<html><head><title>Tes Skin</title><style>";
constexpr QStringView kNeck = u"\r\n<!--stye--></style></head><body>";
constexpr QStringView kTail = u"<body></html>";

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

} // namespace

void PageWriter::replaceSince(qsizetype from, const MarkerReplacement &replacement)
{
    const QStringView text = written().sliced(from);
    const auto hits = replacement.find(text);
    if (hits.empty())
        return;
    const QString replaced = replacement.applied(text, hits);
    m_size = from;
    put(replaced);
}

QList<FontRow> fontRows(const QList<ListRows::Row> &lvFont)
{
    QList<FontRow> fonts;
    for (const ListRows::Row &row : lvFont) {
        const QString name = row.sub(1);
        fonts.append({u"<font>" + name + u"</font>", row.sub(3), row.sub(4), name == u"font_prog"});
    }
    return fonts;
}

void BlockRenderer::rule(std::initializer_list<QStringView> declarations)
{
    m_rules.put(u"#");
    m_rules.put(m_name);
    m_rules.put(u"{");
    for (const QStringView part : declarations)
        m_rules.put(part);
    m_rules.put(u"}\r\n");
}

void BlockRenderer::readRect()
{
    std::array<QStringView, 4> parts;
    if (partsOf(m_scan.value(B::Rect), parts) < parts.size())
        return;
    std::ranges::copy(parts, m_handed.begin() + HandedOn::X);
}

void BlockRenderer::readColours()
{
    std::array<QStringView, 3> back;
    if (partsOf(m_scan.value(B::BackColor), back) == back.size())
        m_handed[HandedOn::Back] = back[0];
    std::array<QStringView, 2> fore;
    if (partsOf(m_scan.value(B::ForeColor), fore) == fore.size())
        m_handed[HandedOn::Fore] = fore[0];
}

void BlockRenderer::images()
{
    if (m_scan.positionOf(B::Imgs) < 1)
        return;
    rule({u"background-color:", value(HandedOn::Back), u";"});
    if (has(B::SingleMode)) {
        const QString id = m_scan.value(B::Img).toString();
        m_asked = {id, m_getImg(id)};
        rule({u"background:", value(HandedOn::Back), u" url('", m_asked->answer, u"') left top no-repeat;"});
    } else if (has(B::MultipleMode)) {
        // The receiver draws these eight pictures around the widget; the preview looks them up and shows
        // none.
        for (const B::Marker side : {B::TopImg, B::BottomImg, B::LeftImg, B::RightImg, B::LeftTopImg,
                                     B::RightTopImg, B::LeftBottomImg, B::RightBottomImg}) {
            if (has(side))
                m_getImg(m_scan.value(side).toString());
        }
    }
}

void BlockRenderer::place()
{
    rule({u"position:absolute;left:", value(HandedOn::X), u";top:", value(HandedOn::Y), u";width:",
          value(HandedOn::W), u";height:", value(HandedOn::H), u";background-color:", value(HandedOn::Back),
          u";color:", value(HandedOn::Fore), u";"});
    if (has(B::UnfocusImg))
        rule({u"background:url('", m_scan.value(B::UnfocusImg), u"') no-repeat left top;"});
}

void BlockRenderer::alignment()
{
    if (has(B::HCentre))
        rule({u"text-align: center;"});
    if (has(B::VCentre))
        rule({u"height:", value(HandedOn::H), u"px;line-height:", value(HandedOn::H), u"px;"});
    if (has(B::HCentre))
        rule({u"text-align: center;"}); // pages have always had this rule twice
}

bool BlockRenderer::namesFont(const FontRow &row) const
{
    const auto standsAt = [&](qsizetype position) {
        return matchesIgnoringCase(m_scan.block(), position, row.marker);
    };
    return std::ranges::any_of(m_scan.fonts(), standsAt);
}

void BlockRenderer::font()
{
    if (!has(B::TextClass))
        return;
    for (const FontRow &row : m_fonts) {
        if (row.isDefault) {
            m_handed[HandedOn::FontSize] = row.size;
            m_handed[HandedOn::FontStyle] = row.style;
        }
        if (namesFont(row)) {
            rule({u"font-size: ", row.size, u"px;font-style:", row.style, u";"});
            return;
        }
    }
    rule({u"font-size: ", value(HandedOn::FontSize), u"px;font-style:", value(HandedOn::FontStyle), u";"});
}

// What is put into the block is itself rewritten as the block is.
void BlockRenderer::putValue(QStringView value)
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

void BlockRenderer::spans()
{
    m_body.put(u"<span class=\"nama\">");
    putValue(m_name);
    m_body.put(u"</span><span class=\"string\">");
    putValue(m_string);
    m_body.put(u"</span><span class=\"posisi\">");
    putValue(value(HandedOn::X));
    m_body.put(u" , ");
    putValue(value(HandedOn::Y));
    m_body.put(u"</span><span class=\"ukuran\">");
    putValue(value(HandedOn::W));
    m_body.put(u" , ");
    putValue(value(HandedOn::H));
    m_body.put(u"</span>");
}

void BlockRenderer::toDiv()
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

ListRows::Row BlockRenderer::draw(QStringView block)
{
    // The colours that the receiver does not draw. Every ":" is followed by a value of the same block.
    static const MarkerReplacement colours(
        {{u":osd_trans", u":transparent;"}, {u":gui_trans", u":transparent"}});
    const qsizetype rules = m_rules.size();
    const qsizetype divs = m_body.size();
    m_scan.scan(block);
    m_name = m_scan.value(B::Id);
    m_asked.reset();
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
    m_rules.replaceSince(rules, colours);
    m_body.replaceSince(divs, colours);
    return row;
}

void BlockRenderer::goOn(const HandedOn &from)
{
    qsizetype begin = 0;
    for (size_t which = 0; which < m_handed.size(); ++which) {
        m_handed[which] = QStringView(from.text).sliced(begin, from.ends[which] - begin);
        begin = from.ends[which];
    }
}

HandedOn BlockRenderer::handedOn() const
{
    HandedOn all;
    qsizetype size = 0;
    for (const QStringView one : m_handed)
        size += one.size();
    all.text.reserve(size);
    for (size_t which = 0; which < m_handed.size(); ++which) {
        all.text += m_handed[which];
        all.ends[which] = qint32(all.text.size());
    }
    return all;
}

QString BlockRenderer::takeHtml()
{
    QString rules = m_rules.take(), body = m_body.take();
    QString page;
    page.reserve(kHead.size() + rules.size() + kNeck.size() + body.size() + kTail.size());
    page += kHead;
    page += rules;
    rules = QString(); // before the page becomes longer
    page += kNeck + body + kTail;
    return page;
}

QString widgetHtml(std::initializer_list<QStringView> rules, std::initializer_list<QStringView> body)
{
    qsizetype size = kHead.size() + kNeck.size() + kTail.size();
    for (const auto &pieces : {rules, body}) {
        for (const QStringView piece : pieces)
            size += piece.size();
    }
    QString page;
    page.reserve(size);
    page += kHead;
    for (const QStringView piece : rules)
        page += piece;
    page += kNeck;
    for (const QStringView piece : body)
        page += piece;
    page += kTail;
    return page;
}

std::pair<QStringView, QStringView> partsOfHtml(const QString &page, qsizetype rules, qsizetype body)
{
    if (page.isEmpty())
        return {};
    const QStringView behindHead = QStringView(page).sliced(kHead.size());
    return {behindHead.first(rules), behindHead.sliced(rules + kNeck.size(), body)};
}

} // namespace quillmere
