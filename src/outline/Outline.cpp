#include "outline/Outline.h"

#include "markup/Matching.h"
#include "outline/OutlineReader.h"

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

bool isBlank(QChar c)
{
    return c.unicode() <= 32;
}

// Reads the attributes of one opening tag.
class AttributeReader
{
public:
    // From behind the name of the element to where the tag ends, without its ">".
    AttributeReader(QStringView text, Range inside) : m_text(text), m_at(inside.start), m_end(inside.end) {}

    QList<Attribute> read()
    {
        QList<Attribute> attributes;
        for (; skipTo([](QChar c) { return !isBlank(c) && c != u'='; }) < m_end;) {
            Attribute attribute;
            attribute.name.start = m_at;
            attribute.name.end = skipTo([](QChar c) { return isBlank(c) || c == u'=' || c == u'"'; });
            attribute.value = {m_at, m_at};
            const qint32 behindName = m_at;
            if (skipTo([](QChar c) { return !isBlank(c); }) < m_end && m_text[m_at] == u'=') {
                ++m_at;
                skipTo([](QChar c) { return !isBlank(c); });
                readValue(attribute);
            } else if (attribute.name.isEmpty()) {
                ++m_at; // a quote that belongs to nothing
                continue;
            } else {
                m_at = behindName;
            }
            attributes.append(attribute);
        }
        return attributes;
    }

private:
    template <typename Stop>
    qint32 skipTo(Stop stop)
    {
        while (m_at < m_end && !stop(m_text[m_at]))
            ++m_at;
        return m_at;
    }

    void readValue(Attribute &attribute)
    {
        const bool quoted = m_at < m_end && m_text[m_at] == u'"';
        if (quoted)
            ++m_at;
        attribute.value.start = m_at;
        const auto stop = [quoted](QChar c) { return quoted ? c == u'"' : isBlank(c) || c == u'"'; };
        attribute.value.end = skipTo(stop);
        attribute.closed = !quoted || m_at < m_end;
        if (quoted && attribute.closed)
            ++m_at;
    }

    QStringView m_text;
    qint32 m_at;
    qint32 m_end;
};

} // namespace

Outline::Outline()
{
    static const auto none = std::make_shared<const OutlineParts>();
    m_parts = none;
}

Outline::Outline(const QString &text, qint64 revision) : m_text(text), m_revision(revision)
{
    const QStringView read =
        QStringView(m_text).first(std::min<qsizetype>(m_text.size(), std::numeric_limits<qint32>::max() - 1));
    OutlineParts parts = readTags(read);
    placeElements(parts.elements, read);
    m_parts = std::make_shared<const OutlineParts>(std::move(parts));
}

qint32 Outline::elementAt(qsizetype offset) const
{
    const auto behind =
        std::upper_bound(elements().begin(), elements().end(), offset,
                         [](qsizetype at, const Element &element) { return at < element.tag.start; });
    const auto holds = [this, offset](qint32 index) {
        const Element &element = this->element(index);
        return element.range().holds(offset) ||
               (offset == element.closing.end && element.end == End::Open && offset == m_text.size());
    };
    qint32 found = qint32(behind - elements().begin()) - 1;
    while (found >= 0 && !holds(found))
        found = element(found).parent;
    return found;
}

qint32 Outline::blockOf(qint32 index) const
{
    while (index >= 0 && element(index).block < 0)
        index = element(index).parent;
    return index;
}

QStringView Outline::valueOf(qint32 index) const
{
    return at(trimmed(element(index).content(), m_text));
}

QList<Attribute> Outline::attributesOf(qint32 index) const
{
    const Element &element = this->element(index);
    Range inside = {element.name().end, element.tag.end};
    if (!inside.isEmpty() && m_text[inside.end - 1] == u'>')
        --inside.end;
    if (element.end == End::Self && !inside.isEmpty() && m_text[inside.end - 1] == u'/')
        --inside.end;
    return AttributeReader(m_text, inside).read();
}

std::optional<Attribute> Outline::attribute(qint32 index, QStringView name) const
{
    for (const Attribute &attribute : attributesOf(index)) {
        if (attribute.name.size() == name.size() && matchesIgnoringCase(m_text, attribute.name.start, name))
            return attribute;
    }
    return std::nullopt;
}

std::optional<Attribute> Outline::nameAttribute(qint32 index) const
{
    for (const Attribute &attribute : attributesOf(index)) {
        const QStringView name = at(attribute.name);
        if ((name.size() == 4 && matchesIgnoringCase(name, 0, u"name")) ||
            (name.size() == 2 && matchesIgnoringCase(name, 0, u"id")))
            return attribute;
    }
    return std::nullopt;
}

template <typename Use>
void Outline::eachProperty(qint32 block, Use use) const
{
    const qint32 end = element(block).next;
    for (qint32 index = block + 1; index < end;) {
        const Element &inner = element(index);
        const bool isOther = inner.block >= 0 || inner.kind == Kind::Widget || inner.kind == Kind::Style ||
                             inner.kind == Kind::Children || inner.kind == Kind::Signal;
        if (!isOther && use(index))
            return;
        index = isOther ? inner.next : index + 1;
    }
}

QList<qint32> Outline::propertiesOf(qint32 block) const
{
    QList<qint32> properties;
    eachProperty(block, [&properties](qint32 index) {
        properties.append(index);
        return false;
    });
    return properties;
}

qint32 Outline::property(qint32 block, Kind kind) const
{
    qint32 found = -1;
    eachProperty(block, [&](qint32 index) {
        if (element(index).kind == kind)
            found = index;
        return found >= 0;
    });
    return found;
}

} // namespace quillmere
