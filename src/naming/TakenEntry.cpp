#include "naming/Completion.h"

#include "naming/TypedText.h"
#include "outline/Values.h"

#include <algorithm>

namespace quillmere {

namespace {

using Of = Completion::Of;

constexpr qsizetype kColours = 3; // entries of a list of colours
constexpr qsizetype kWords = 2;   // words of an alignment

class EntryTaker
{
public:
    EntryTaker(const Outline &outline, const Completion &completion, const QString &entry)
        : m_outline(outline), m_text(outline.text()), m_from(completion),
          m_entry(entry), m_taken{completion.word, entry, 0}
    {
    }

    TakenEntry take()
    {
        switch (m_from.of) {
        case Of::Element:
            takeElement();
            break;
        case Of::Closing:
            if (!follows(u'>'))
                m_taken.text += u'>';
            break;
        case Of::Attribute:
            takeAttribute();
            break;
        case Of::Class:
            takeAttributeValue();
            break;
        case Of::Word:
        case Of::Name:
            if (m_from.kind == NameKind::Window)
                takeAttributeValue();
            else
                takeValue();
            break;
        case Of::Nothing:
            m_taken = {{m_from.caret, m_from.caret}, {}, 0};
            break;
        }
        m_taken.caret = m_taken.range.start + (m_caret < 0 ? qint32(m_taken.text.size()) : m_caret);
        return m_taken;
    }

private:
    bool follows(QChar unit) const
    {
        return m_taken.range.end < m_text.size() && m_text[m_taken.range.end] == unit;
    }

    // What stands behind the range in its line, without the blanks before it.
    QStringView rest() const
    {
        const QStringView behind = m_text.sliced(m_taken.range.end);
        const qsizetype lineEnd = behind.indexOf(u'\n');
        return (lineEnd < 0 ? behind : behind.first(lineEnd)).trimmed();
    }

    void put(const QString &before, const QString &behind)
    {
        m_taken.text += before;
        m_caret = qint32(m_taken.text.size());
        m_taken.text += behind;
    }

    void takeElement()
    {
        if (m_from.bringsBracket)
            m_taken.text.prepend(u'<');
        else if (!takesWholeTag())
            return;
        const Kind kind = kindOf(m_entry);
        const QString closing = isClosedFurtherOn() ? QString() : u"</" + m_entry + u'>';
        m_taken.goesOn = true;
        if (kind == Kind::Widget || kind == Kind::Style)
            put(QStringLiteral(" class=\""), u"\" name=\"\">" + closing);
        else if (isList(kind))
            put(QStringLiteral(">["), u']' + closing);
        else
            put(QStringLiteral(">"), closing);
    }

    // Whether the tag is but begun, or says nothing more than its name: the range goes to its end then.
    bool takesWholeTag()
    {
        if (m_from.element < 0)
            return true;
        const Element &element = m_outline.element(m_from.element);
        if (element.tag.start + 1 != m_taken.range.start || m_taken.range.isEmpty())
            return true;
        const QStringView behind = m_outline.at({element.name().end, element.tag.end}).trimmed();
        if (!behind.isEmpty() && (behind != u">" || !hasNoEnd(element)))
            return false;
        m_taken.range.end = element.tag.end;
        return true;
    }

    // A closing tag of the name that nothing opened, and no other before it.
    bool isClosedFurtherOn() const
    {
        const std::vector<Range> &tags = m_outline.strayTags();
        const auto next =
            std::find_if(tags.begin(), tags.end(), [this](Range tag) { return tag.start >= m_from.caret; });
        return next != tags.end() && m_outline.at(*next).sliced(2).startsWith(m_entry, Qt::CaseInsensitive) &&
               next->size() == m_entry.size() + 3;
    }

    void takeAttribute()
    {
        if (rest().startsWith(u'=') && !m_taken.range.isEmpty())
            return;
        if (m_taken.range.start > 0 && !isBlank(m_text[m_taken.range.start - 1]))
            m_taken.text.prepend(u' ');
        const bool touchesNext = m_taken.range.end < m_text.size() && isNamePart(m_text[m_taken.range.end]);
        put(QStringLiteral("=\""), touchesNext ? QStringLiteral("\" ") : QStringLiteral("\""));
        m_taken.goesOn = m_entry == u"class";
    }

    void takeAttributeValue()
    {
        const qint32 start = m_taken.range.start;
        if (start > 0 && m_text[start - 1] == u'=')
            m_taken.text.prepend(u'"');
        if (!follows(u'"'))
            m_taken.text += u'"';
    }

    void takeValue()
    {
        const Element &element = m_outline.element(m_from.element);
        Range value = trimmed(element.content(), m_text);
        const bool isOpen = hasNoEnd(element) && !rest().startsWith(u"</");
        if (value.isEmpty() || hasNoEnd(element))
            value = {std::min(value.start, m_taken.range.start), m_taken.range.end};
        const QList<Range> entries = entriesOf(m_outline, m_from.element);
        const qsizetype number =
            std::count_if(entries.begin(), entries.end(),
                          [this](Range entry) { return entry.end < m_taken.range.start; }) +
            1;
        const bool isColour = isList(element.kind);
        if (isColour && number == 1 && (value.start >= m_taken.range.start || m_text[value.start] != u'['))
            m_taken.text.prepend(u'[');
        const qint32 behindEntry = qint32(m_taken.text.size());
        const QStringView behind =
            hasNoEnd(element) ? rest() : m_outline.at({m_taken.range.end, element.content().end}).trimmed();
        const bool isLast = behind.isEmpty() || behind.startsWith(u'<') || behind.startsWith(u']');
        if (isColour && isLast) {
            if (behind.startsWith(u']') && isOpen)
                takeBracket();
            else if (!behind.startsWith(u']'))
                m_taken.text += u']';
        }
        if (isOpen && isLast)
            m_taken.text += u"</" + m_outline.at(element.name()).toString() + u'>';
        if (number < (isColour ? kColours : element.kind == Kind::Alignment ? kWords : 0))
            m_caret = behindEntry;
    }

    void takeBracket()
    {
        while (m_text[m_taken.range.end] != u']')
            ++m_taken.range.end;
        ++m_taken.range.end;
        m_taken.text += u']';
    }

    const Outline &m_outline;
    QStringView m_text;
    const Completion &m_from;
    const QString &m_entry;
    TakenEntry m_taken;
    qint32 m_caret = -1; // in the new text; behind it where negative
};

} // namespace

TakenEntry takeEntry(const Outline &outline, const Completion &completion, const QString &entry)
{
    return EntryTaker(outline, completion, entry).take();
}

} // namespace quillmere
