#pragma once

#include <QTextEdit>

class QPlainTextEdit;

namespace quillmere {

// Lines of a document, 0-based, both ends included; none where `last` is before `first`.
struct LineRange
{
    int first = 0;
    int last = -1;
};

// The lines of the block of the theme that the line stands in: from the one that begins it to the one before
// the next that does. A block of thousands of lines is cut off.
LineRange blockAround(const QTextBlock &line);

// What is marked in an editor for its caret: its line, a bracket beside it and the bracket's partner.
QList<QTextEdit::ExtraSelection> caretMarks(const QPlainTextEdit &box);

} // namespace quillmere
