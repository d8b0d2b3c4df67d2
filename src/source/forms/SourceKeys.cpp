#include "source/forms/SourceKeys.h"

#include "source/forms/DocumentEdits.h"
#include "source/forms/HeldText.h"

#include <QKeyEvent>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kIndent = 5; // blanks a Tab goes on to a multiple of, as a formatted document has them

// The copy of what is selected stands behind it and is selected then; that of a line stands below it.
void doubleText(QTextCursor &caret, HeldText &held)
{
    const bool isLine = !caret.hasSelection();
    const int column = caret.positionInBlock();
    const int from = isLine ? caret.block().position() : caret.selectionStart();
    const int to = isLine ? from + caret.block().length() - 1 : caret.selectionEnd();
    const QString copy = held.text(from, to);
    caret.beginEditBlock();
    caret.setPosition(to);
    if (isLine)
        caret.insertBlock();
    const int start = caret.position();
    held.insert(caret, copy);
    const int end = caret.position();
    endStep(caret);
    caret.setPosition(isLine ? std::min(start + column, end) : start);
    if (!isLine)
        caret.setPosition(end, QTextCursor::KeepAnchor);
}

} // namespace

bool editByKey(const QKeyEvent &key, QTextCursor &caret, HeldText &held)
{
    const bool indents = key.key() == Qt::Key_Tab && key.modifiers() == Qt::NoModifier;
    const bool takesBack =
        key.key() == Qt::Key_Backtab || (key.key() == Qt::Key_Tab && key.modifiers() == Qt::ShiftModifier);
    if ((indents || takesBack) && caret.hasSelection())
        indentLines(caret, kIndent, takesBack);
    else if (indents)
        caret.insertText(QString(kIndent - caret.positionInBlock() % kIndent, u' '));
    else if (key.key() == Qt::Key_D && key.modifiers() == Qt::ControlModifier)
        doubleText(caret, held);
    else
        return false;
    return true;
}

} // namespace quillmere
