#pragma once

#include "stage/TextLayout.h"

namespace quillmere {

// Where elements come in, and what has to stand around them there.
struct Spot
{
    qsizetype at = -1;
    qsizetype length = 0; // of what gives way
    QString before, between, after;
    QString indent; // of lines, in a nested text
};

// Finds the places in a window where elements can be put. Blocks are elements of the outline, whole ones.
class InsertPlaces
{
public:
    // The outline must outlive it.
    explicit InsertPlaces(const Outline &outline);

    const TextLayout &layout() const { return m_layout; }
    const QString &lineBreak() const { return m_break; }

    bool holdsBlocks(qint32 block) const { return childrenOf(block) >= 0 || lastBlock(block) >= 0; }
    Spot behind(qint32 block) const;
    // Behind all blocks that stand in it, in a <children> of its own where it has none yet.
    Spot lastIn(qint32 block) const;
    // Of a text without a block.
    Spot atEnd() const;

private:
    template <typename Is>
    qint32 lastInside(qint32 outer, Is is) const;
    qint32 lastBlock(qint32 outer) const;
    qint32 childrenOf(qint32 block) const;

    QString indentOf(qint32 element) const;
    QString closingIndent(qint32 element) const;
    Spot atEndOf(qint32 outer, const QString &indent) const;
    Spot intoEmpty(qint32 children) const;
    Spot withChildren(qint32 block) const;

    const Outline &m_outline;
    TextLines m_lines;
    TextLayout m_layout;
    QString m_break;
};

} // namespace quillmere
