#include "outline/OutlineReader.h"

namespace quillmere {

namespace {

// Goes through the elements in the order of their opening tags and keeps those that are open.
class Placer
{
public:
    Placer(std::vector<Element> &elements, QStringView text) : m_elements(elements), m_text(text) {}

    void place()
    {
        const qint32 count = qint32(m_elements.size());
        for (qint32 index = 0; index < count; ++index) {
            Element &element = m_elements[size_t(index)];
            leaveClosed(element.tag.start, index);
            if (!element.inComment)
                leaveOpen(element, index);
            element.parent = m_open.empty() ? -1 : m_open.back();
            if (element.parent >= 0) {
                const Element &parent = m_elements[size_t(element.parent)];
                element.inSignal = parent.inSignal || parent.kind == Kind::Signal;
            }
            element.next = index + 1;
            if (element.end == End::Tag)
                m_closed.push_back(m_open.size());
            if (element.end != End::Self)
                m_open.push_back(index);
        }
        const qint32 size = qint32(m_text.size());
        leaveClosed(size, count);
        while (!m_open.empty())
            leave(size, count);
        tellMissing();
    }

private:
    // Ends the innermost open element, before the element `next`; `position` counts where it has no tag.
    void leave(qint32 position, qint32 next)
    {
        const qint32 index = m_open.back();
        Element &element = m_elements[size_t(index)];
        m_open.pop_back();
        element.next = next;
        if (element.end == End::Tag)
            return;
        // The blanks before what follows do not belong to a value. A value is never around other open
        // elements, so each run of blanks is gone through once. Blocks of a comment may be in it.
        if (isValue(element.kind)) {
            const qint32 least =
                next - 1 > index ? m_elements[size_t(next - 1)].closing.end : element.tag.end;
            while (position > least && m_text[position - 1].unicode() <= 32)
                --position;
        }
        element.closing = {position, position};
    }

    // Ends the elements whose closing tags stand before `position`, with all that was open in them.
    void leaveClosed(qint32 position, qint32 next)
    {
        while (!m_closed.empty()) {
            const size_t depth = m_closed.back();
            const Range closing = m_elements[size_t(m_open[depth])].closing;
            if (closing.end > position)
                return;
            m_closed.pop_back();
            while (m_open.size() > depth)
                leave(closing.start, next);
        }
    }

    void leaveOpen(const Element &element, qint32 next)
    {
        while (!m_open.empty()) {
            const Element &open = m_elements[size_t(m_open.back())];
            if (open.end == End::Tag || mayHold(open.kind, element.kind))
                return;
            leave(element.tag.start, next);
        }
    }

    void tellMissing()
    {
        std::vector<bool> inClosed(m_elements.size());
        for (size_t i = 0; i < m_elements.size(); ++i) {
            Element &element = m_elements[i];
            if (element.parent >= 0) {
                const size_t parent = size_t(element.parent);
                inClosed[i] = inClosed[parent] || m_elements[parent].end == End::Tag;
            }
            if (element.end == End::Open && inClosed[i])
                element.end = End::Missing;
        }
    }

    std::vector<Element> &m_elements;
    QStringView m_text;
    std::vector<qint32> m_open;
    std::vector<size_t> m_closed; // depths of those among the open ones that have a closing tag
};

} // namespace

void placeElements(std::vector<Element> &elements, QStringView text)
{
    Placer(elements, text).place();
}

} // namespace quillmere
