#pragma once

#include "source/TextFind.h"

class QRect;

namespace quillmere {

class SourceBox;

// Marks each place of a text that is looked for, in the lines that are seen: they are searched while they are
// drawn, so that no key waits for a large text, and the marks are never those of an older one.
class FoundMarks
{
public:
    explicit FoundMarks(SourceBox *box) : m_box(box) {}

    // Nothing is marked for an empty text.
    void show(const FindText &what);
    // Draws over the lines in `area` of the box's viewport.
    void draw(const QRect &area) const;

private:
    SourceBox *m_box;
    FindText m_what;
};

} // namespace quillmere
