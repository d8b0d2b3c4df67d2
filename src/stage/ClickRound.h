#pragma once

#include <QList>
#include <QPointF>

namespace quillmere {

// Which block a click selects: what is seen at first, with further clicks at the same place what lies below
// it, and in the end what is seen again.
class ClickRound
{
public:
    // What a click finds: the blocks at its place, what is seen first, for a text of this revision; and what
    // is selected before it.
    struct Click
    {
        QPointF at; // pixels of the glass
        qint64 revision = 0;
        QList<int> blocks;
        QList<int> selection;
        bool isQuick = false; // within the time of a double click: it goes no further
    };

    // The block to be selected, -1 for none.
    int clicked(const Click &click);
    // The same for the second click of two: the round goes back to where it was before the first.
    int doubleClicked(const Click &click);
    // Goes on with this block, as if clicks had come as far as that.
    void jump(const Click &click, int block);
    // Whether the selection is what a click at this place has selected.
    bool isAt(const Click &click) const;
    void end() { m_blocks.clear(); }

private:
    QPointF m_at;
    qint64 m_revision = 0;
    QList<int> m_blocks;
    qsizetype m_index = 0, m_before = 0;
};

} // namespace quillmere
