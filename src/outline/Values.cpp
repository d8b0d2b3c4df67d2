#include "outline/Values.h"

#include <limits>

namespace quillmere {

namespace {

Range withoutBrackets(Range range, QStringView text)
{
    if (!range.isEmpty() && text[range.start] == u'[')
        ++range.start;
    if (!range.isEmpty() && text[range.end - 1] == u']')
        --range.end;
    return range;
}

QList<Range> divided(Range range, QStringView text, QChar divider)
{
    QList<Range> parts;
    parts.reserve(4);
    qint32 start = range.start;
    for (qint32 at = range.start; at <= range.end; ++at) {
        if (at < range.end && text[at] != divider)
            continue;
        parts.append(trimmed({start, at}, text));
        start = at + 1;
    }
    return parts;
}

std::optional<qint64> wholeNumber(QStringView text)
{
    const bool isNegative = text.startsWith(u'-');
    if (isNegative || text.startsWith(u'+'))
        text = text.sliced(1);
    if (text.isEmpty())
        return std::nullopt;
    qint64 number = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        number = number * 10 + (digit.unicode() - u'0');
        if (number > std::numeric_limits<qint32>::max())
            return std::nullopt;
    }
    return isNegative ? -number : number;
}

} // namespace

QList<Range> entriesOf(const Outline &outline, qint32 element)
{
    const QStringView text = outline.text();
    const Range value = trimmed(outline.element(element).content(), text);
    if (value.isEmpty())
        return {};
    switch (outline.element(element).kind) {
    case Kind::Rect:
    case Kind::BackColor:
    case Kind::ForeColor:
        return divided(withoutBrackets(value, text), text, u',');
    case Kind::Alignment:
        return divided(value, text, u'|');
    default:
        return {value};
    }
}

std::optional<RectValue> rectOf(const Outline &outline, qint32 element)
{
    const QStringView text = outline.text();
    const QStringView content = outline.at(outline.element(element).content());
    if (!content.startsWith(u'[') || !content.endsWith(u']') || content.size() < 2)
        return std::nullopt;
    const QList<Range> parts = entriesOf(outline, element);
    if (parts.size() != 4)
        return std::nullopt;
    RectValue rect;
    rect.element = element;
    qint64 *const numbers[] = {&rect.box.x, &rect.box.y, &rect.box.w, &rect.box.h};
    for (qsizetype i = 0; i < 4; ++i) {
        const std::optional<qint64> number = wholeNumber(parts[i].in(text));
        if (!number)
            return std::nullopt;
        *numbers[i] = *number;
        rect.ranges[size_t(i)] = parts[i];
    }
    return rect;
}

std::optional<RectValue> rectOfBlock(const Outline &outline, qint32 block)
{
    const qint32 element = outline.property(block, Kind::Rect);
    return element < 0 ? std::nullopt : rectOf(outline, element);
}

std::vector<std::optional<Box>> placesOnScreen(const Outline &outline)
{
    std::vector<std::optional<Box>> places(outline.blocks().size());
    std::vector<qint32> around(outline.elements().size(), -1); // by element, the block it stands in
    for (size_t index = 0; index < outline.elements().size(); ++index) {
        const Element &element = outline.elements()[index];
        if (element.parent >= 0) {
            const Element &parent = outline.element(element.parent);
            around[index] = parent.block >= 0 ? parent.block : around[size_t(element.parent)];
        }
        if (element.block < 0 || element.inComment || element.inSignal)
            continue;
        const std::optional<RectValue> rect = rectOfBlock(outline, qint32(index));
        if (!rect)
            continue;
        Box box = rect->box;
        if (around[index] >= 0) {
            const std::optional<Box> &outer = places[size_t(around[index])];
            if (!outer)
                continue;
            box.x += outer->x;
            box.y += outer->y;
        }
        places[size_t(element.block)] = box;
    }
    return places;
}

} // namespace quillmere
