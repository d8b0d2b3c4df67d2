#include "outline/CaretPlace.h"

#include "outline/Values.h"

#include <algorithm>

namespace quillmere {

namespace {

using In = CaretPlace::In;

class CaretFinder
{
public:
    CaretFinder(const Outline &outline, qint32 offset)
        : m_outline(outline), m_text(outline.text()), m_at(offset)
    {
    }

    CaretPlace find()
    {
        m_place.word = {m_at, m_at};
        // A caret before a tag is not in it; what it is in, holds the unit before it.
        m_place.element = m_outline.elementAt(m_at);
        if (m_place.element >= 0 && m_outline.element(m_place.element).tag.start == m_at)
            m_place.element = m_outline.element(m_place.element).parent;
        if (inComment())
            return set(In::Comment);
        if (const qint32 last = lastBefore(); last >= 0) {
            if (m_at <= openTo(m_outline.element(last).tag))
                return inTag(last);
        }
        if (closingName())
            return set(In::ClosingName);
        if (m_at > 0 && m_text[m_at - 1] == u'<')
            return set(In::ElementName);
        return inValue();
    }

private:
    const CaretPlace &set(In in)
    {
        m_place.in = in;
        return m_place;
    }

    bool inComment() const
    {
        const std::vector<Comment> &comments = m_outline.comments();
        const auto behind =
            std::lower_bound(comments.begin(), comments.end(), m_at,
                             [](const Comment &comment, qint32 at) { return comment.range.start < at; });
        if (behind == comments.begin())
            return false;
        const Comment &comment = *(behind - 1);
        return m_at < comment.range.end || !comment.closed;
    }

    // The last element whose tag begins before the caret.
    qint32 lastBefore() const
    {
        const std::vector<Element> &elements = m_outline.elements();
        const auto behind =
            std::lower_bound(elements.begin(), elements.end(), m_at,
                             [](const Element &element, qint32 at) { return element.tag.start < at; });
        return qint32(behind - elements.begin()) - 1;
    }

    // How far a caret is still in the tag: where it has no ">", over the blanks of the line too.
    qint32 openTo(Range tag) const
    {
        if (m_text[tag.end - 1] == u'>')
            return tag.end - 1;
        while (tag.end < m_at && (m_text[tag.end] == u' ' || m_text[tag.end] == u'\t'))
            ++tag.end;
        return tag.end;
    }

    CaretPlace inTag(qint32 index)
    {
        m_place.element = index;
        const Range name = m_outline.element(index).name();
        if (m_at <= name.end) {
            m_place.word = name;
            return set(In::ElementName);
        }
        for (const Attribute &attribute : m_outline.attributesOf(index)) {
            const bool isValue = attribute.value.start > attribute.name.end;
            if (isValue ? attribute.value.touches(m_at) : attribute.name.touches(m_at)) {
                m_place.attribute = attribute;
                m_place.word = isValue ? attribute.value : attribute.name;
                return set(isValue ? In::AttributeValue : In::AttributeName);
            }
            if (attribute.name.touches(m_at)) {
                m_place.attribute = attribute;
                m_place.word = attribute.name;
                return set(In::AttributeName);
            }
        }
        return set(In::Tag);
    }

    // Also where the tag closes nothing, or is only begun.
    bool closingName()
    {
        qint32 start = m_at;
        while (start > 0 && m_at - start < 256 && m_text[start - 1] != u'<' && m_text[start - 1] != u'>')
            --start;
        if (start == 0 || m_text[start - 1] != u'<' || start >= m_at || m_text[start] != u'/')
            return false;
        ++start;
        qint32 end = start;
        const auto isPart = [](QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'-'; };
        while (end < m_text.size() && end - start < 256 && isPart(m_text[end]))
            ++end;
        if (m_at > end)
            return false;
        m_place.word = {start, end};
        return true;
    }

    CaretPlace inValue()
    {
        // Behind a value without a closing tag, the caret is at the end of the value and outside the element.
        for (const qint32 element : {m_place.element, lastBefore()}) {
            if (element < 0 || !isValue(m_outline.element(element).kind) ||
                m_outline.element(element).end == End::Self ||
                !m_outline.element(element).content().touches(m_at))
                continue;
            m_place.element = element;
            for (const Range &entry : entriesOf(m_outline, element)) {
                if (entry.touches(m_at))
                    m_place.word = entry;
            }
            return set(In::Value);
        }
        return set(In::Text);
    }

    const Outline &m_outline;
    QStringView m_text;
    qint32 m_at;
    CaretPlace m_place;
};

} // namespace

CaretPlace caretPlace(const Outline &outline, qsizetype offset)
{
    return CaretFinder(outline, qint32(std::clamp<qsizetype>(offset, 0, outline.text().size()))).find();
}

} // namespace quillmere
