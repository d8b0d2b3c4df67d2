#include "i18n/forms/TranslationEdit.h"

#include <QKeyEvent>

namespace quillmere {

TranslationEdit::TranslationEdit(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

// The usual way to the text makes blanks of those that do not break the line.
QString TranslationEdit::text() const
{
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
}

void TranslationEdit::begin(const QString &text)
{
    setPlainText(text);
    moveCursor(QTextCursor::End);
}

void TranslationEdit::replaceBy(const QString &text)
{
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    moveCursor(QTextCursor::End);
}

void TranslationEdit::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers with = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (with == Qt::ShiftModifier)
            textCursor().insertBlock();
        else if (with == Qt::ControlModifier)
            emit takenAndOn();
        else if (with == Qt::NoModifier)
            emit taken();
        ensureCursorVisible();
    } else if (event->key() == Qt::Key_Escape) {
        emit putBack();
    } else if (event->matches(QKeySequence::Undo) && !document()->isUndoAvailable()) {
        emit undoWanted();
    } else if (event->matches(QKeySequence::Redo) && !document()->isRedoAvailable()) {
        emit redoWanted();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void TranslationEdit::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    emit left();
}

} // namespace quillmere
