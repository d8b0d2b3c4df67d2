#pragma once

#include <QStringView>

namespace quillmere {

// A stretch of a text, in UTF-16 units: from `start` up to, and without, `end`. Texts beyond 2^31 units are
// not outlined, so four bytes a position are enough.
struct Range
{
    qint32 start = 0;
    qint32 end = 0;

    qint32 size() const { return end - start; }
    bool isEmpty() const { return end <= start; }
    // Whether the unit behind `offset` belongs to it.
    bool holds(qsizetype offset) const { return offset >= start && offset < end; }
    // Whether a caret at `offset` stands in it or at one of its ends.
    bool touches(qsizetype offset) const { return offset >= start && offset <= end; }
    QStringView in(QStringView text) const { return text.sliced(start, size()); }

    bool operator==(const Range &) const = default;
};

// The range without what surrounds it of characters with codes 1 to 32.
inline Range trimmed(Range range, QStringView text)
{
    const auto isBlank = [text](qint32 at) { return text[at].unicode() >= 1 && text[at].unicode() <= 32; };
    while (!range.isEmpty() && isBlank(range.start))
        ++range.start;
    while (!range.isEmpty() && isBlank(range.end - 1))
        --range.end;
    return range;
}

} // namespace quillmere
