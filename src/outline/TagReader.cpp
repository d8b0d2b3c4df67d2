#include "markup/Matching.h"
#include "outline/OutlineReader.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

bool isNamePart(QChar c)
{
    const char16_t unit = c.unicode();
    if (unit < 0x80) {
        const char16_t lower = unit | 0x20;
        return (lower >= u'a' && lower <= u'z') || (unit >= u'0' && unit <= u':') || unit == u'_' ||
               unit == u'-' || unit == u'.';
    }
    return c.isLetterOrNumber();
}

bool isNameStart(QChar c)
{
    return isNamePart(c) && !(c >= u'0' && c <= u'9') && c != u'-' && c != u'.';
}

bool isFolded(QChar c, char16_t folded)
{
    return c.unicode() == folded || foldCase(c.unicode()) == folded;
}

// Blocks are cut out of a text from which the tags of <children> have been taken, first the opening ones,
// then the closing ones, each in one go. What was apart may then stand together and be the mark of a block.
class BlockMarks
{
public:
    explicit BlockMarks(QStringView text) : m_text(text) {}

    // `position` is that of a "<".
    bool at(qsizetype position) const
    {
        return follows(position, u"widget ") || follows(position, u"style ");
    }

private:
    bool follows(qsizetype position, QStringView folded) const
    {
        ++position;
        for (const QChar unit : folded) {
            position = behindChildren(position);
            if (position >= m_text.size() || !isFolded(m_text[position], unit.unicode()))
                return false;
            ++position;
        }
        return true;
    }

    qsizetype behindOpening(qsizetype position) const
    {
        constexpr QStringView tag = u"<children>";
        while (position < m_text.size() && m_text[position] == u'<' &&
               matchesIgnoringCase(m_text, position, tag))
            position += tag.size();
        return position;
    }

    qsizetype behindChildren(qsizetype position) const
    {
        constexpr QStringView tag = u"</children>";
        while (position < m_text.size() && m_text[position] == u'<') {
            const qsizetype behind = behindOpening(position);
            qsizetype at = behind;
            for (const QChar unit : tag) {
                at = behindOpening(at);
                if (at >= m_text.size() || !isFolded(m_text[at], unit.unicode())) {
                    at = -1;
                    break;
                }
                ++at;
            }
            if (at < 0)
                return behind;
            position = at;
        }
        return position;
    }

    QStringView m_text;
};

class TagReader
{
public:
    explicit TagReader(QStringView text)
        : m_text(text.first(std::min<qsizetype>(text.size(), std::numeric_limits<qint32>::max() - 1))),
          m_size(qint32(m_text.size())), m_marks(m_text), m_openOfName(kKinds)
    {
        m_parts.elements.reserve(size_t(m_size / 32 + 8));
    }

    OutlineParts read()
    {
        for (qint32 at = find(u'<', 0); at < m_size; at = find(u'<', at)) {
            const QChar next = at + 1 < m_size ? m_text[at + 1] : QChar();
            if (next == u'!' || next == u'?')
                at = readMark(at);
            else if (next == u'/')
                at = readClosingTag(at);
            else
                at = readOpeningTag(at);
        }
        return std::move(m_parts);
    }

private:
    struct Opened
    {
        qint32 element;
        qint32 name;
    };

    // Position of the unit at or behind `from`, else that of the end.
    qint32 find(char16_t unit, qint32 from) const
    {
        const qsizetype found = m_text.indexOf(QChar(unit), from);
        return found < 0 ? m_size : qint32(found);
    }

    qint32 nameEnd(qint32 from) const
    {
        const qint32 most = std::min(m_size, from + std::numeric_limits<quint16>::max());
        while (from < most && isNamePart(m_text[from]))
            ++from;
        return from;
    }

    // Behind the ">" of the tag in which `from` lies; without one, before the next "<".
    qint32 tagEnd(qint32 from) const
    {
        for (; from < m_size; ++from) {
            const char16_t unit = m_text[from].unicode();
            if (unit == u'>')
                return from + 1;
            if (unit == u'<')
                break;
            if (unit != u'"')
                continue;
            qint32 quote = from + 1;
            while (quote < m_size && m_text[quote] != u'"' && m_text[quote] != u'<')
                ++quote;
            // A value does not hold a "<": its second quote is missing then, and it says nothing about ">".
            if (quote < m_size && m_text[quote] == u'"')
                from = quote;
            else
                return unquotedTagEnd(from + 1, quote);
        }
        return from;
    }

    qint32 unquotedTagEnd(qint32 from, qint32 to) const
    {
        const qsizetype end = m_text.sliced(from, to - from).indexOf(u'>');
        return end < 0 ? to : from + qint32(end) + 1;
    }

    // A comment, or a declaration, which says nothing.
    qint32 readMark(qint32 at)
    {
        if (m_text.sliced(at).startsWith(u"<!--"))
            return readComment(at);
        qint32 end = at + 1;
        while (end < m_size && m_text[end] != u'<' && m_text[end] != u'>')
            ++end;
        return end;
    }

    qint32 readComment(qint32 at)
    {
        constexpr QStringView mark = u"-->";
        // "<!-->" is a comment already: its end may overlap its beginning.
        const qsizetype found = m_text.indexOf(mark, at + 2);
        const qint32 end = found < 0 ? m_size : qint32(found + mark.size());
        m_parts.comments.push_back({{at, end}, found >= 0});
        const qint32 inner = found < 0 ? m_size : qint32(found);
        Element *last = nullptr;
        for (qint32 from = find(u'<', at + 1); from < inner; from = find(u'<', from + 1)) {
            if (!m_marks.at(from))
                continue;
            if (last)
                last->closing = {from, from};
            Element element = openedAt(from, std::min(inner, tagEnd(nameEnd(from + 1))));
            element.closing = {inner, inner};
            element.end = End::Self;
            element.inComment = true;
            addBlock(element);
            last = &m_parts.elements.back();
        }
        return end;
    }

    Element openedAt(qint32 at, qint32 end) const
    {
        Element element;
        element.tag = {at, end};
        const qint32 behindName = nameEnd(at + 1);
        element.nameLength = quint16(std::min(behindName, end) - at - 1);
        element.kind = kindOf(m_text.sliced(at + 1, element.nameLength));
        return element;
    }

    void addBlock(Element &element)
    {
        element.block = qint32(m_parts.blocks.size());
        if (element.kind != Kind::Style)
            element.kind = Kind::Widget;
        m_parts.blocks.push_back(qint32(m_parts.elements.size()));
        m_parts.elements.push_back(element);
    }

    qint32 readOpeningTag(qint32 at)
    {
        const bool isBlock = m_marks.at(at);
        if (!isBlock && (at + 1 >= m_size || !isNameStart(m_text[at + 1])))
            return at + 1;
        const qint32 behindName = nameEnd(at + 1);
        qint32 end = tagEnd(behindName);
        const bool finished = m_text[end - 1] == u'>';
        Element element = openedAt(at, end);
        if (finished && end - 2 >= behindName && m_text[end - 2] == u'/')
            element.end = End::Self;
        if (!finished)
            element.tag.end = withoutBlanks(behindName, end);
        element.closing = {element.tag.end, element.tag.end};
        const qint32 index = qint32(m_parts.elements.size());
        if (isBlock)
            addBlock(element);
        else
            m_parts.elements.push_back(element);
        if (element.end != End::Self) {
            const qint32 name = nameOf(m_parts.elements.back());
            ++m_openOfName[size_t(name)];
            m_open.push_back({index, name});
        }
        return end;
    }

    qint32 withoutBlanks(qint32 from, qint32 end) const
    {
        while (end > from && m_text[end - 1].unicode() <= 32)
            --end;
        return end;
    }

    qint32 readClosingTag(qint32 at)
    {
        const qint32 behindName = nameEnd(at + 2);
        if (behindName == at + 2)
            return behindName;
        qint32 end = behindName;
        while (end < m_size && m_text[end] != u'<' && m_text[end] != u'>')
            ++end;
        const bool finished = end < m_size && m_text[end] == u'>';
        const Range tag = {at, finished ? end + 1 : withoutBlanks(behindName, end)};
        close(tag, m_text.sliced(at + 2, behindName - at - 2));
        return tag.end;
    }

    void close(Range tag, QStringView name)
    {
        const Kind kind = kindOf(name);
        const qint32 number = kind == Kind::Other ? otherName(name) : qint32(kind);
        if (m_openOfName[size_t(number)] == 0) {
            m_parts.strayTags.push_back(tag);
            return;
        }
        while (m_open.back().name != number) {
            --m_openOfName[size_t(m_open.back().name)];
            m_open.pop_back();
        }
        Element &element = m_parts.elements[size_t(m_open.back().element)];
        element.closing = tag;
        element.end = End::Tag;
        --m_openOfName[size_t(number)];
        m_open.pop_back();
    }

    qint32 nameOf(const Element &element)
    {
        return element.kind == Kind::Other ? otherName(element.name().in(m_text)) : qint32(element.kind);
    }

    // Names that are not in the vocabulary get numbers behind it.
    qint32 otherName(QStringView name)
    {
        QString folded(name.size(), Qt::Uninitialized);
        std::transform(name.begin(), name.end(), folded.begin(),
                       [](QChar unit) { return QChar(foldCase(unit.unicode())); });
        const auto known = m_otherNames.constFind(folded);
        if (known != m_otherNames.constEnd())
            return *known;
        const qint32 number = qint32(m_openOfName.size());
        m_openOfName.push_back(0);
        m_otherNames.insert(folded, number);
        return number;
    }

    QStringView m_text;
    qint32 m_size;
    BlockMarks m_marks;
    OutlineParts m_parts;
    std::vector<Opened> m_open;
    std::vector<qint32> m_openOfName; // how many are open, by kind or number
    QHash<QString, qint32> m_otherNames;
};

} // namespace

OutlineParts readTags(QStringView text)
{
    return TagReader(text).read();
}

} // namespace quillmere
