#pragma once

#include "source/forms/CaretMarks.h"

#include <QWidget>

namespace quillmere {

class SourceBox;

// The column of line numbers at the left of the source, with a bar beside the lines of the caret's block.
class LineNumbers : public QWidget
{
public:
    explicit LineNumbers(SourceBox *box);

    // Pixels, for as many lines as the box has now.
    int widthNeeded() const;
    void setMarked(LineRange lines);
    LineRange marked() const { return m_marked; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SourceBox *m_box;
    LineRange m_marked;
    int m_caretLine = -1; // when it was marked
};

} // namespace quillmere
