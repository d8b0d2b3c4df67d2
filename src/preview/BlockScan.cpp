#include "preview/BlockScan.h"

#include "markup/MarkerSet.h"
#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

using B = BlockScan;

// By the number of the marker; the first ones are those that begin with "<".
struct Pair
{
    QStringView opening, closing = {};
};
constexpr std::array<Pair, B::Count> kPairs = {{{u"<string>", u"</string>"},
                                                {u"<rect>[", u"]</rect>"},
                                                {u"<backcolor>[", u"]</backcolor>"},
                                                {u"<forecolor>[", u"]</forecolor>"},
                                                {u"<img>", u"</img>"},
                                                {u"<t_img>", u"</t_img>"},
                                                {u"<b_img>", u"</b_img>"},
                                                {u"<l_img>", u"</l_img>"},
                                                {u"<r_img>", u"</r_img>"},
                                                {u"<lt_img>", u"</lt_img>"},
                                                {u"<rt_img>", u"</rt_img>"},
                                                {u"<lb_img>", u"</lb_img>"},
                                                {u"<rb_img>", u"</rb_img>"},
                                                {u"<unfocus_img>", u"</unfocus_img>"},
                                                {u"<font>", u"</font>"},
                                                {u"<imgs"},
                                                {u"<mode>single</mode>"},
                                                {u"<mode>multiple</mode>"},
                                                {u"<property>"},
                                                {u"</property>"},
                                                {u"id=\"", u"\""},
                                                {u"style=\"", u"\""},
                                                {u"class=\"", u"\""},
                                                {u"/>"},
                                                {u"class=\"text\""},
                                                {u"hcentre"},
                                                {u"vcentre"}}};

const MarkerSet &elements()
{
    static const MarkerSet set([] {
        std::vector<QStringView> openings;
        for (size_t marker = 0; marker <= B::PropertyEnd; ++marker)
            openings.push_back(kPairs[marker].opening);
        return openings;
    }());
    return set;
}

// The marker is there, in whatever letters.
bool isExactAt(QStringView text, qsizetype position, QStringView marker)
{
    return std::equal(marker.begin(), marker.end(), text.begin() + position);
}

// Values are short; a search made for long texts would take most of its time to begin.
qsizetype closingIn(QStringView text, QStringView closing)
{
    const QChar first = closing[0]; // no letter
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == first && matchesIgnoringCase(text, at, closing))
            return at;
    }
    return -1;
}

} // namespace

void BlockScan::scan(QStringView block)
{
    m_block = block;
    m_found.fill({});
    m_changes.clear();
    m_fonts.clear();
    m_styleEnd = 0;
    m_styleTangled = false;

    static constexpr StopUnits stops(u"<\"/hHvV");
    const qsizetype size = block.size();
    for (qsizetype at = stops.next(block, 0); at < size; at = stops.next(block, at + 1)) {
        switch (block[at].unicode()) {
        case u'<':
            atElement(at);
            break;
        case u'"':
            atQuote(at);
            break;
        case u'/':
            if (at + 1 < size && block[at + 1] == u'>')
                note(ElementEnd, at);
            break;
        default:
            atLetter(at);
        }
    }
    for (int marker = 0; marker < Count; ++marker)
        readValue(Marker(marker));
}

void BlockScan::atElement(qsizetype position)
{
    const int marker = elements().at(m_block, position);
    if (marker < 0)
        return;
    if (marker == Font)
        m_fonts.append(position);
    note(Marker(marker), position);
}

void BlockScan::atQuote(qsizetype position)
{
    if (position == 0 || m_block[position - 1] != u'=')
        return;
    for (const Marker marker : {Id, Style, Class}) {
        const QStringView opening = kPairs[marker].opening;
        const qsizetype start = position + 1 - opening.size();
        if (!matchesIgnoringCase(m_block, start, opening))
            continue;
        note(marker, start);
        if (marker == Style)
            noteStyle(start);
        if (marker == Class && matchesIgnoringCase(m_block, start, kPairs[TextClass].opening))
            note(TextClass, start);
        return;
    }
}

void BlockScan::atLetter(qsizetype position)
{
    const bool isH = (m_block[position].unicode() | 0x20) == u'h';
    const Marker marker = isH ? HCentre : VCentre;
    if (matchesIgnoringCase(m_block, position, kPairs[marker].opening))
        note(marker, position);
}

void BlockScan::note(Marker marker, qsizetype position)
{
    const QStringView opening = kPairs[marker].opening;
    Found &found = m_found[marker];
    if (found.first < 0)
        found.first = position;
    else if (found.second < 0)
        found.second = position;
    found.exact = found.exact || isExactAt(m_block, position, opening);
    if (position < m_styleEnd)
        m_styleTangled = true;
    if (marker == Property || marker == PropertyEnd || marker == ElementEnd)
        m_changes.append({position, opening.size(), marker});
}

void BlockScan::noteStyle(qsizetype position)
{
    if (m_found[Style].first != position)
        return;
    const qsizetype end = m_block.indexOf(u'"', position + kPairs[Style].opening.size());
    if (end < 0)
        return; // there is nothing to be changed
    m_styleEnd = end + 1;
    m_changes.append({position, m_styleEnd - position, Style});
}

bool BlockScan::isStyleApart() const
{
    const Found &style = m_found[Style];
    return style.first < 0 || (style.second < 0 && style.exact && !m_styleTangled);
}

void BlockScan::readValue(Marker marker)
{
    const auto &[opening, closing] = kPairs[marker];
    Found &found = m_found[marker];
    if (!found.exact || closing.isEmpty())
        return;
    const qsizetype start = found.first + opening.size();
    const QStringView rest = m_block.first(found.second < 0 ? m_block.size() : found.second).sliced(start);
    const qsizetype end = closingIn(rest, closing);
    const bool closed = end >= 0 && (isExactAt(rest, end, closing) || containsExact(rest, closing));
    found.value = closed ? rest.first(end) : rest;
    if (marker != Id && marker != Style && start < m_styleEnd &&
        start + found.value.size() > m_found[Style].first)
        m_styleTangled = true;
}

} // namespace quillmere
