#pragma once

#include "outline/Outline.h"
#include "rows/ListRows.h"

#include <optional>

namespace quillmere {

// The <property> element of one block, cut out of a window's source.
struct BlockProperties
{
    // The quoted name and everything behind it up to the next "</property>": what a write-back replaces.
    // Empty where the source ends before that, for then nobody knows what belongs to the element.
    QString segment;
    QList<ListRows::Row> rows; // text = element name, sub-item 1 = content as written
};

// Cuts out the properties of the first place that holds `name` in quotes. Nothing where there is none, or
// where the next widget begins before the element ends. A row is made at every "</" and "/>", from the first
// "<" gathered since the row before; an element that closes itself has an empty content.
std::optional<BlockProperties> GetProperty(const QString &source, const QString &name);

// The name of a block of the block list with its quotes; its tag where it has none in quotes; empty for none.
Range headOfBlock(const Outline &outline, int block);
// The same of the block with this head, whatever others are called.
std::optional<BlockProperties> propertiesAt(const QString &source, Range head);

// `source` with every occurrence of `segment` (ignoring case) holding these rows, one element a line, in
// place of what its property element held. Unchanged for a segment without a "<property>".
QString SaveProperty(const QString &source, const QString &segment, const QList<ListRows::Row> &rows);

// The same for the one segment that begins at `start`; unchanged where another text stands there.
QString savePropertyAt(const QString &source, qsizetype start, const QString &segment,
                       const QList<ListRows::Row> &rows);
// What a segment would no longer hold with these rows.
struct LostElements
{
    QStringList names;
    qsizetype at = -1; // of the first one, in the segment
};
LostElements elementsLost(const QString &segment, const QList<ListRows::Row> &rows);

// The values between "[" and "]" that "," divides, so many of them; missing ones are empty.
QStringList bracketedValues(const QString &content, int count);
// The values in that form.
QString bracketed(const QStringList &values);

} // namespace quillmere
