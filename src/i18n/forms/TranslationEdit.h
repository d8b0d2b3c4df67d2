#pragma once

#include <QPlainTextEdit>

namespace quillmere {

// The box a translation is typed in. Enter takes it, Ctrl+Enter takes it and goes on, Shift+Enter breaks the
// line, Esc gives back what stood there.
class TranslationEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit TranslationEdit(QWidget *parent = nullptr);

    // With LF at the end of lines; every other character as it was typed.
    QString text() const;
    // Begins with a text; there is nothing to undo then.
    void begin(const QString &text);
    // Puts a text in place of the one that stands there, as one step that can be undone.
    void replaceBy(const QString &text);

signals:
    void taken();
    void takenAndOn();
    void putBack();
    void left();
    // Undo and Redo, where nothing that was typed is left to undo or redo.
    void undoWanted();
    void redoWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

} // namespace quillmere
