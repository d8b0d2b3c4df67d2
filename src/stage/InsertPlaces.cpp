#include "stage/InsertPlaces.h"

namespace quillmere {

namespace {

// Without the blanks at the end.
qint32 inkEnd(QStringView text, Range range)
{
    while (!range.isEmpty() && text[range.end - 1].unicode() <= 32)
        --range.end;
    return range.end;
}

} // namespace

InsertPlaces::InsertPlaces(const Outline &outline)
    : m_outline(outline), m_lines(outline.text()), m_layout(outline), m_break(m_lines.lineBreak())
{
}

Spot InsertPlaces::behind(qint32 block) const
{
    const Range range = m_outline.element(block).range();
    const std::optional<QString> indent = m_lines.indentAt(range.start);
    if (!indent || m_lines.behindLine(range.end) < 0)
        return {range.end, 0, {}, {}, {}, indent.value_or(QString())};
    const QString line = m_break + *indent;
    return {range.end, 0, line, line, {}, *indent};
}

Spot InsertPlaces::lastIn(qint32 block) const
{
    const qint32 children = childrenOf(block);
    const qint32 outer = children >= 0 ? children : block;
    const qint32 child = lastBlock(outer);
    if (child < 0)
        return children >= 0 ? intoEmpty(children) : withChildren(block);
    const Element &last = m_outline.element(child);
    if (const std::optional<QString> indent = m_lines.indentAt(last.tag.start))
        return atEndOf(outer, *indent);
    return {last.closing.end, 0, {}, {}, {}, {}}; // all on one line
}

Spot InsertPlaces::atEnd() const
{
    const qint32 root = lastInside(-1, [](const Element &e) { return e.kind == Kind::Interface; });
    if (root >= 0 && m_outline.element(root).end == End::Tag)
        return intoEmpty(root);
    const qsizetype size = m_outline.text().size();
    return {size, 0, m_lines.indentAt(size) ? QString() : m_break, m_break, {}, {}};
}

template <typename Is>
qint32 InsertPlaces::lastInside(qint32 outer, Is is) const
{
    const qint32 end = outer < 0 ? qint32(m_outline.elements().size()) : m_outline.element(outer).next;
    qint32 found = -1;
    for (qint32 inner = outer + 1; inner < end; inner = m_outline.element(inner).next) {
        if (!m_outline.element(inner).inComment && is(m_outline.element(inner)))
            found = inner;
    }
    return found;
}

qint32 InsertPlaces::lastBlock(qint32 outer) const
{
    return lastInside(outer, [](const Element &inner) { return inner.block >= 0; });
}

qint32 InsertPlaces::childrenOf(qint32 block) const
{
    return lastInside(block, [](const Element &inner) { return inner.kind == Kind::Children; });
}

QString InsertPlaces::indentOf(qint32 element) const
{
    return m_lines.indentAt(m_outline.element(element).tag.start).value_or(QString());
}

QString InsertPlaces::closingIndent(qint32 element) const
{
    return m_layout.isFlat() ? QString() : indentOf(element);
}

// What closes the element stands on a line of its own afterwards.
Spot InsertPlaces::atEndOf(qint32 outer, const QString &indent) const
{
    const Range content = m_outline.element(outer).content();
    const qint32 at = inkEnd(m_outline.text(), content);
    const QString line = m_break + indent;
    Spot spot = {at, 0, line, line, {}, indent};
    const qsizetype behind = m_lines.behindLine(at);
    if (behind < 0 || behind > content.end) {
        spot.length = content.end - at;
        spot.after = m_break + closingIndent(outer);
    }
    return spot;
}

Spot InsertPlaces::intoEmpty(qint32 children) const
{
    const Element &element = m_outline.element(children);
    const QString indent = m_layout.indent(u"<widget ", indentOf(children), 1);
    if (element.end != End::Self)
        return atEndOf(children, indent);
    const QString line = m_break + indent;
    return {element.tag.start,
            element.tag.size(),
            u"<children>" + line,
            line,
            m_break + closingIndent(children) + u"</children>",
            indent};
}

Spot InsertPlaces::withChildren(qint32 block) const
{
    const Element &element = m_outline.element(block);
    const QString outer = indentOf(block), indent = m_layout.indent(u"<widget ", outer, 2);
    const QString line = m_break + indent;
    const QString opening = m_break + m_layout.indent(u"<children>", outer, 1) + u"<children>" + line;
    const QString closing = m_break + m_layout.indent(u"</children>", outer, 1) + u"</children>";
    if (element.end != End::Self) {
        Spot spot = atEndOf(block, indent);
        spot.before = opening;
        spot.after.prepend(closing);
        return spot;
    }
    // <widget ... /> gets a closing tag.
    const qint32 slash = qint32(m_outline.at(element.tag).lastIndexOf(u'/'));
    const qint32 at = inkEnd(m_outline.text(), {element.tag.start, element.tag.start + slash});
    return {at,
            element.tag.end - at,
            u'>' + opening,
            line,
            closing + m_break + closingIndent(block) + u"</" + m_outline.at(element.name()) + u'>',
            indent};
}

} // namespace quillmere
