#pragma once

#include "outline/Values.h"
#include "source/TextChanges.h"

#include <QStringList>

namespace quillmere {

// Blocks are rows of the block list, as Outline::blocks() counts them; rows that there are none of are passed
// over.

// A block, and where it is to be, in the numbers of its own rect.
struct BlockBox
{
    int block = -1;
    Box box;

    bool operator==(const BlockBox &) const = default;
};

// The rect of a row; nothing where whyFixed says why.
std::optional<RectValue> rectOfRow(const Outline &outline, int block);
// Why the rect of a block cannot be written, a sentence for the status line; empty where it can.
QString whyFixed(const Outline &outline, int block);
// How a sentence calls a block: its name in quotes, or that it has none.
QString calledInText(const Outline &outline, int block);
// The row of the block that a block stands in, -1 where there is none.
int parentOf(const Outline &outline, int block);
// The blocks without those that stand inside another of them, in their order, each once.
QList<int> outermost(const Outline &outline, const QList<int> &blocks);

// Writes rects, each number that differs and nothing else; numbers beyond 2^31 become the largest there is.
// Blocks whose rect cannot be written are passed over, of a block that comes twice the first counts.
QList<TextChange> rectChanges(const Outline &outline, const QList<BlockBox> &boxes);

// All the numbers of the rects of these blocks that rectChanges() can write, in the order of the text.
QList<Range> rectNumbers(const Outline &outline, const QList<BlockBox> &boxes);
// What stands at each of these places, which are in order, once changes are made. Nothing where a change is
// at another place.
std::optional<QStringList> textsAfter(QStringView text, const QList<Range> &places,
                                      const QList<TextChange> &changes);

// The text after changes that are in order and none of which touches another.
QString withChanges(const QString &text, const QList<TextChange> &changes);

} // namespace quillmere
