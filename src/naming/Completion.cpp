#include "naming/Completion.h"

#include "naming/TypedText.h"
#include "outline/Values.h"

#include <algorithm>

namespace quillmere {

namespace {

using In = CaretPlace::In;
using Of = Completion::Of;

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
    CompletionFinder(const Outline &outline, qint32 caret, const ThemeIndex *index, FileRole role)
        : m_outline(outline), m_text(outline.text()), m_index(index), m_role(role),
          m_place(caretPlace(outline, caret))
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
            return fillAttributeValue();
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

    // Whether a second one of a kind would say nothing: the element at the caret does not count.
    bool isThere(Kind kind, qint32 parent) const
    {
        if (parent < 0 || kind == Kind::Widget || kind == Kind::Style || kind == Kind::Signal)
            return false;
        const qint32 behind = m_outline.element(parent).next;
        for (qint32 child = parent + 1; child < behind; child = m_outline.element(child).next) {
            const Element &element = m_outline.element(child);
            if (element.kind == kind && !element.inComment && element.tag.start + 1 != m_found.word.start)
                return true;
        }
        return false;
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
        std::stable_partition(kinds.begin(), kinds.end(), [&](Kind kind) { return !isThere(kind, parent); });
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

    void fillAttributeValue()
    {
        if (m_outline.element(m_place.element).block < 0)
            return;
        const QStringView attribute = m_outline.at(m_place.attribute.name);
        if (attribute.compare(u"class", Qt::CaseInsensitive) == 0) {
            m_found.of = Of::Class;
            m_found.entries = m_index ? m_index->classes() : QStringList();
            for (const QString &name : knownClasses()) {
                if (!m_found.entries.contains(name))
                    m_found.entries.append(name);
            }
        } else if (m_role == FileRole::WindowCatalogue &&
                   attribute.compare(u"name", Qt::CaseInsensitive) == 0 &&
                   classOf(m_outline, m_place.element) == u"window") {
            m_found.of = Of::Name;
            m_found.kind = NameKind::Window;
        } else {
            return;
        }
        endAttributeValue();
    }

    // Where the second quote is missing, the value goes on to one of another attribute.
    void endAttributeValue()
    {
        const QStringView value = m_outline.at(m_found.word);
        if (m_place.attribute.closed && !value.contains(u'=') && !value.contains(u'\n'))
            return;
        m_found.word = {m_found.caret, m_found.caret};
        takeWordAround();
        m_found.word.start = std::max(m_found.word.start, m_place.word.start);
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
    FileRole m_role;
    CaretPlace m_place;
    Completion m_found;
};

} // namespace

Completion completionAt(const Outline &outline, qsizetype caret, const ThemeIndex *index, FileRole role)
{
    const qint32 at = qint32(std::clamp<qsizetype>(caret, 0, outline.text().size()));
    return CompletionFinder(outline, at, index, role).find();
}

} // namespace quillmere
