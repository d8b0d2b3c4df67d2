#pragma once

#include "stage/SelectionAfter.h"

namespace quillmere {

// Blocks that stay the same blocks while the text around them changes.
class FollowedBlocks
{
public:
    void set(const QList<int> &rows, const Outline &outline)
    {
        m_rows = rows;
        m_outline = rows.isEmpty() ? Outline() : outline;
    }
    // Their rows in this text, which comes from the one before by edits.
    const QList<int> &rows(const Outline &now)
    {
        if (!m_rows.isEmpty() && now.revision() != m_outline.revision())
            set(selectionAfter(m_outline, m_rows, now), now);
        return m_rows;
    }

private:
    QList<int> m_rows;
    Outline m_outline; // in which these are their rows
};

} // namespace quillmere
