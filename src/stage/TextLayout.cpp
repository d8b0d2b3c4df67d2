#include "stage/TextLayout.h"

#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr QStringView kFlatIndent = u"     ";

bool endsLine(QChar c)
{
    return c == u'\n' || c == u'\r';
}

bool isBlank(QChar c)
{
    return c.unicode() <= 32 && !endsLine(c);
}

// What FormatXML writes at the beginning of the line.
bool isOutdented(QStringView tag)
{
    return matchesIgnoringCase(tag, 0, u"</") || matchesIgnoringCase(tag, 0, u"<property>") ||
           matchesIgnoringCase(tag, 0, u"<widget ") || matchesIgnoringCase(tag, 0, u"<?");
}

// The beginnings of lines behind the first one, and where the ink on them begins.
template <typename Use>
void eachLine(QStringView text, Use use)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!endsLine(text[at]) || (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n'))
            continue;
        qsizetype ink = at + 1;
        while (ink < text.size() && isBlank(text[ink]))
            ++ink;
        use(at + 1, ink);
        at = ink - 1;
    }
}

} // namespace

std::optional<QString> TextLines::indentAt(qsizetype position) const
{
    qsizetype start = position;
    while (start > 0 && isBlank(m_text[start - 1]))
        --start;
    if (start > 0 && !endsLine(m_text[start - 1]))
        return std::nullopt;
    return m_text.sliced(start, position - start).toString();
}

qsizetype TextLines::behindLine(qsizetype position) const
{
    while (position < m_text.size() && isBlank(m_text[position]))
        ++position;
    if (position == m_text.size())
        return position;
    if (!endsLine(m_text[position]))
        return -1;
    return position + (m_text.sliced(position).startsWith(u"\r\n") ? 2 : 1);
}

QString TextLines::lineBreak() const
{
    const auto found = std::find_if(m_text.begin(), m_text.end(), endsLine);
    if (found == m_text.end())
        return QStringLiteral("\r\n");
    return m_text.sliced(found - m_text.begin()).startsWith(u"\r\n") ? QStringLiteral("\r\n")
                                                                     : QString(*found);
}

TextLayout::TextLayout(const Outline &outline, QStringView base)
{
    const TextLines lines(outline.text());
    qsizetype atBase = 0, further = 0;
    bool hasStep = false;
    const auto count = [&](qint32 position, const std::optional<QString> &indent) {
        const QStringView tag = QStringView(outline.text()).sliced(position);
        if (indent && isOutdented(tag))
            ++(*indent == base ? atBase : further);
    };
    for (const Element &element : outline.elements()) {
        if (element.parent < 0 || element.inComment)
            continue;
        const std::optional<QString> indent = lines.indentAt(element.tag.start);
        count(element.tag.start, indent);
        if (!element.closing.isEmpty())
            count(element.closing.start, lines.indentAt(element.closing.start));
        if (!indent || hasStep)
            continue;
        const std::optional<QString> outer = lines.indentAt(outline.element(element.parent).tag.start);
        hasStep = outer && indent->size() > outer->size() && indent->startsWith(*outer);
        if (hasStep)
            m_step = indent->sliced(outer->size());
    }
    m_isKnown = atBase + further > 0;
    m_isFlat = atBase > further || !m_isKnown;
}

QString TextLayout::indent(QStringView tag, const QString &base, qsizetype depth) const
{
    if (m_isFlat)
        return isOutdented(tag) ? QString() : kFlatIndent.toString();
    return base + m_step.repeated(depth);
}

QString movedLines(QStringView text, const QString &from, const QString &to)
{
    if (from == to)
        return text.toString();
    bool haveIt = true;
    eachLine(text, [&](qsizetype start, qsizetype ink) {
        if (ink < text.size() && text[ink] == u'<')
            haveIt = haveIt && text.sliced(start, ink - start).startsWith(from);
    });
    if (!haveIt)
        return text.toString();
    QString moved;
    qsizetype done = 0;
    eachLine(text, [&](qsizetype start, qsizetype ink) {
        if (ink == text.size() || text[ink] != u'<')
            return;
        moved += text.sliced(done, start - done) + to;
        done = start + from.size();
    });
    moved += text.sliced(done);
    return moved;
}

QString laidOut(const Outline &outline, qint32 element, const TextLayout &layout, const QString &base)
{
    const Range range = outline.element(element).range();
    const QStringView text = outline.at(range);
    std::vector<qint32> depths(size_t(outline.element(element).next - element)); // by element
    for (size_t i = 1; i < depths.size(); ++i)
        depths[i] = depths[size_t(outline.element(element + qint32(i)).parent - element)] + 1;
    QString moved;
    qsizetype done = 0;
    eachLine(text, [&](qsizetype start, qsizetype ink) {
        if (ink == text.size() || text[ink] != u'<')
            return;
        const qint32 position = range.start + qint32(ink);
        const qint32 inner = outline.elementAt(position);
        if (inner < element || size_t(inner - element) >= depths.size())
            return;
        const Element &around = outline.element(inner);
        const bool isTag = position == around.tag.start || position == around.closing.start;
        if (!isTag && !text.sliced(ink).startsWith(u"<!--"))
            return;
        moved += text.sliced(done, start - done) +
                 layout.indent(text.sliced(ink), base, depths[size_t(inner - element)] + (isTag ? 0 : 1));
        done = ink;
    });
    moved += text.sliced(done);
    return moved;
}

QString withLineBreaks(const QString &text, const QString &lineBreak)
{
    QString lines = text;
    lines.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n');
    return lineBreak == u"\n" ? lines : lines.replace(u"\n"_qs, lineBreak);
}

void ChangeList::add(qsizetype start, qsizetype length, const QString &text)
{
    if (length == 0 && text.isEmpty())
        return;
    m_moved += text.size() - length;
    if (!m_changes.isEmpty() && m_changes.last().start + m_changes.last().length == start) {
        m_changes.last().length += length;
        m_changes.last().text += text;
    } else {
        m_changes.append({start, length, text});
    }
}

} // namespace quillmere
