#include "naming/Completion.h"

#include "outline/Values.h"

#include <algorithm>

namespace quillmere {

namespace {

using In = CaretPlace::In;
using Of = Completion::Of;

constexpr qsizetype kColours = 3; // entries of a list of colours
constexpr qsizetype kWords = 2;   // words of an alignment

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

bool isBlank(QChar c)
{
    return c.unicode() <= 32;
}

bool isList(Kind kind)
{
    return kind == Kind::BackColor || kind == Kind::ForeColor || kind == Kind::Rect;
}

bool hasNoEnd(const Element &element)
{
    return element.end == End::Missing || element.end == End::Open;
}

// The element that a new one at the caret would stand in. A value that is not closed holds none: it ends
// there.
qint32 parentAt(const Outline &outline, const CaretPlace &place)
{
    qint32 parent = place.element;
    if (parent >= 0 && place.in == In::ElementName && !place.word.isEmpty() &&
        outline.element(parent).tag.start == place.word.start - 1)
        parent = outline.element(parent).parent;
    while (parent >= 0 && isValue(outline.element(parent).kind) && hasNoEnd(outline.element(parent)))
        parent = outline.element(parent).parent;
    return parent;
}

QList<Kind> elementsIn(const Outline &outline, qint32 parent)
{
    if (parent >= 0)
        return outline.element(parent).kind == Kind::Other ? QList<Kind>()
                                                           : elementsFor(outline.element(parent).kind);
    return {Kind::Interface, Kind::Widget, Kind::Style};
}

QString classOf(const Outline &outline, qint32 block)
{
    const std::optional<Attribute> name =
        block < 0 ? std::nullopt : outline.attribute(block, QStringView(u"class"));
    return name ? outline.at(name->value).toString() : QString();
}

class CompletionFinder
{
public:
    CompletionFinder(const Outline &outline, qint32 caret, const ThemeIndex *index)
        : m_outline(outline), m_text(outline.text()), m_index(index), m_place(caretPlace(outline, caret))
    {
        m_found.element = m_place.element;
        m_found.word = m_place.word;
        m_found.caret = caret;
    }

    Completion find()
    {
        if (m_place.in != In::Comment && !isInSignal()) {
            fill();
            if (m_found.of == Of::Nothing)
                m_found.entries.clear();
        }
        return m_found;
    }

private:
    bool isInSignal() const
    {
        if (m_place.element < 0)
            return false;
        const Element &element = m_outline.element(m_place.element);
        return element.inSignal || (element.kind == Kind::Signal && !element.tag.touches(m_found.caret));
    }

    void fill()
    {
        switch (m_place.in) {
        case In::Value:
            return fillValue();
        case In::ElementName:
            return fillElement();
        case In::Text:
            m_found.bringsBracket = true;
            takeWordAround();
            return fillElement();
        case In::ClosingName:
            return fillClosing();
        case In::Tag:
        case In::AttributeName:
            return fillAttribute();
        case In::AttributeValue:
            return fillClass();
        case In::Comment:
            return;
        }
    }

    void takeWordAround()
    {
        Range &word = m_found.word;
        while (word.start > 0 && isNamePart(m_text[word.start - 1]))
            --word.start;
        while (word.end < m_text.size() && isNamePart(m_text[word.end]))
            ++word.end;
    }

    void fillElement()
    {
        const qint32 parent = parentAt(m_outline, m_place);
        QList<Kind> kinds = elementsIn(m_outline, parent);
        if (m_index && parent >= 0) {
            const QString name = classOf(m_outline, m_outline.blockOf(parent));
            std::stable_sort(kinds.begin(), kinds.end(), [&](Kind a, Kind b) {
                return m_index->elementsIn(name, a) > m_index->elementsIn(name, b);
            });
        }
        for (const Kind kind : kinds)
            m_found.entries.append(nameOf(kind).toString());
        m_found.of = kinds.isEmpty() ? Of::Nothing : Of::Element;
    }

    void fillClosing()
    {
        for (qint32 element = m_place.element; element >= 0; element = m_outline.element(element).parent) {
            const QString name = m_outline.at(m_outline.element(element).name()).toString();
            if (!m_found.entries.contains(name))
                m_found.entries.append(name);
        }
        m_found.of = m_found.entries.isEmpty() ? Of::Nothing : Of::Closing;
    }

    void fillAttribute()
    {
        if (m_outline.element(m_place.element).block < 0)
            return;
        for (const QString &name :
             {QStringLiteral("class"), QStringLiteral("name"), QStringLiteral("style")}) {
            const std::optional<Attribute> known = m_outline.attribute(m_place.element, name);
            if (!known || known->name == m_place.word)
                m_found.entries.append(name);
        }
        m_found.of = m_found.entries.isEmpty() ? Of::Nothing : Of::Attribute;
    }

    void fillClass()
    {
        if (m_outline.at(m_place.attribute.name).compare(u"class", Qt::CaseInsensitive) != 0 ||
            m_outline.element(m_place.element).block < 0)
            return;
        // Where the second quote is missing, the value goes on to one of another attribute.
        const QStringView value = m_outline.at(m_found.word);
        if (!m_place.attribute.closed || value.contains(u'=') || value.contains(u'\n')) {
            m_found.word = {m_found.caret, m_found.caret};
            takeWordAround();
            m_found.word.start = std::max(m_found.word.start, m_place.word.start);
        }
        m_found.entries = m_index ? m_index->classes() : QStringList();
        for (const QString &name : knownClasses()) {
            if (!m_found.entries.contains(name))
                m_found.entries.append(name);
        }
        m_found.of = Of::Class;
    }

    void fillValue()
    {
        const Element &element = m_outline.element(m_place.element);
        if (m_text[element.tag.end - 1] != u'>')
            return; // a name would become a part of the tag
        const std::optional<NameKind> name = nameKindOf(element.kind);
        m_found.entries = wordsFor(element.kind);
        if ((!name && m_found.entries.isEmpty()) || isBesideList(element))
            return;
        if (hasNoEnd(element))
            endWord();
        if (m_outline.at(m_found.word).contains(u'<'))
            return; // it holds an element, and would not any more
        m_found.of = name ? Of::Name : Of::Word;
        m_found.kind = name.value_or(NameKind::Image);
    }

    // A value without an end goes on to where something else begins.
    void endWord()
    {
        Range &word = m_found.word;
        for (qint32 at = m_found.caret; at < word.end; ++at) {
            if (m_text[at] == u'<' || m_text[at] == u'\n' || m_text[at] == u'\r')
                word.end = at;
        }
        while (word.end > m_found.caret && isBlank(m_text[word.end - 1]))
            --word.end;
    }

    // Before the bracket that a list begins with, and behind the one that ends it.
    bool isBesideList(const Element &element) const
    {
        if (!isList(element.kind))
            return false;
        const Range value = trimmed(element.content(), m_text);
        return !value.isEmpty() && ((m_text[value.start] == u'[' && m_found.caret <= value.start) ||
                                    (m_text[value.end - 1] == u']' && m_found.caret >= value.end));
    }

    const Outline &m_outline;
    QStringView m_text;
    const ThemeIndex *m_index;
    CaretPlace m_place;
    Completion m_found;
};

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
            takeClass();
            break;
        case Of::Word:
        case Of::Name:
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

    void takeClass()
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

Completion completionAt(const Outline &outline, qsizetype caret, const ThemeIndex *index)
{
    const qint32 at = qint32(std::clamp<qsizetype>(caret, 0, outline.text().size()));
    return CompletionFinder(outline, at, index).find();
}

TakenEntry takeEntry(const Outline &outline, const Completion &completion, const QString &entry)
{
    return EntryTaker(outline, completion, entry).take();
}

} // namespace quillmere
