#pragma once

#include "markup/Matching.h"
#include "outline/Outline.h"
#include "outline/Values.h"

// What holds for the outline of any text, and the slow way to number its blocks.
namespace twins {

using namespace Qt::StringLiterals;

// Where the blocks begin: the text is rewritten step by step as it is for the cutting, and each unit keeps
// the place that it came from.
class TrackedText
{
public:
    explicit TrackedText(const QString &text) : m_text(text)
    {
        for (qsizetype i = 0; i < text.size(); ++i)
            m_origins.append(qint32(i));
    }

    void replace(QStringView from, const QString &to)
    {
        QString text;
        QList<qint32> origins;
        for (qsizetype i = 0; i < m_text.size();) {
            if (quillmere::matchesIgnoringCase(m_text, i, from)) {
                text += to;
                origins += QList<qint32>(to.size(), m_origins[i]);
                i += from.size();
            } else {
                text += m_text[i];
                origins += m_origins[i++];
            }
        }
        m_text = text;
        m_origins = origins;
    }

    QList<qint32> placesOf(QStringView marker) const
    {
        QList<qint32> places;
        for (qsizetype at = 0; (at = quillmere::indexOfIgnoringCase(m_text, marker, at)) >= 0; ++at)
            places.append(m_origins[at]);
        return places;
    }

private:
    QString m_text;
    QList<qint32> m_origins;
};

inline QList<qint32> blockPlaces(const QString &text)
{
    TrackedText tracked(text);
    tracked.replace(u"<children>", {});
    tracked.replace(u"</children>", {});
    tracked.replace(u"<signal>", u"<!--"_s);
    tracked.replace(u"</signal>", u"-->"_s);
    tracked.replace(u"</widget>", u"</div>"_s);
    tracked.replace(u" name=\"", u" id=\""_s);
    tracked.replace(u"<style ", u"<widget "_s);
    return tracked.placesOf(u"<widget ");
}

// The first promise that the outline breaks, or nothing.
inline QString brokenPromise(const quillmere::Outline &outline)
{
    using namespace quillmere;
    const QString &text = outline.text();
    const std::vector<Element> &elements = outline.elements();
    const auto isIn = [](Range inner, Range outer) {
        return inner.start <= inner.end && inner.start >= outer.start && inner.end <= outer.end;
    };
    QList<qint32> places;
    for (const qint32 block : outline.blocks()) {
        if (outline.element(block).block != places.size())
            return u"a block knows its row"_s;
        places.append(outline.element(block).tag.start);
    }
    if (places != blockPlaces(text))
        return u"blocks are those of the cutting"_s;
    const qint32 count = qint32(elements.size());
    for (qint32 i = 0; i < count; ++i) {
        const Element &element = elements[size_t(i)];
        if (!isIn(element.range(), {0, qint32(text.size())}) || text[element.tag.start] != u'<' ||
            !isIn(element.tag, element.range()) || !isIn(element.closing, element.range()) ||
            !isIn(element.content(), element.range()))
            return u"ranges lie in the text"_s;
        if (element.next <= i || element.next > count || element.parent >= i)
            return u"elements are in order"_s;
        if (i > 0 && elements[size_t(i - 1)].tag.start >= element.tag.start)
            return u"elements are in the order of the text"_s;
        if (element.next < count && elements[size_t(element.next)].tag.start < element.closing.end)
            return u"the next element is behind"_s;
        if (element.parent >= 0 && (!isIn(element.range(), outline.element(element.parent).content()) ||
                                    element.next > outline.element(element.parent).next))
            return u"ranges nest"_s;
        if (element.end == End::Tag && text[element.closing.end - 1] != u'>' &&
            element.closing.end < text.size() && text[element.closing.end].unicode() > 32 &&
            text[element.closing.end] != u'<')
            return u"a closing tag is whole"_s;
        for (const Attribute &attribute : outline.attributesOf(i)) {
            if (!isIn(attribute.name, element.tag) || !isIn(attribute.value, element.tag))
                return u"attributes lie in the tag"_s;
        }
        for (const Range &entry : entriesOf(outline, i)) {
            if (!isIn(entry, element.content()))
                return u"entries lie in the value"_s;
        }
    }
    return {};
}

} // namespace twins
