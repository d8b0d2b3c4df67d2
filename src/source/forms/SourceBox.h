#pragma once

#include "source/forms/BoxText.h"
#include "source/forms/FoundMarks.h"
#include "source/forms/ReadyText.h"

#include <QPlainTextEdit>
#include <QSet>

namespace quillmere {

class LineNumbers;
class SourceHighlighter;
class SourceMarks;

// The source text of a window, in an editor with line numbers and coloured tags. Outside the box, text has CR
// LF line ends and positions count both of them; inside, the document has one separator a line, and some of
// the text stands there as objects (see HeldText). This class is where the two meet.
class SourceBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    SourceBox(const QString &name, const QString &accessibleName, QWidget *parent = nullptr);
    ~SourceBox() override;

    // What setText() was given, to the letter, until the person or a command changes it; then lines end in CR
    // LF.
    QString text() const;
    // Another document: the undo history starts anew.
    void setText(const QString &text) { setText(makeReady(text)); }
    void setText(ReadyText ready);
    // The same document, rewritten by a command: one undo step, the caret stays at its place in the text.
    // The box takes the keyboard, so that Ctrl+Z takes the step back, unless it stays where it is.
    enum class Keyboard { Taken, Stays };
    // A step of the last one is undone with it; that must be a rewrite, and nothing may have changed since.
    enum class Step { Own, OfLast };
    void rewrite(const QString &text, Keyboard keyboard = Keyboard::Taken, Step step = Step::Own);
    // The same for a stretch of text() that something the person takes stands for: the caret goes to `caret`
    // in the text that comes of it. To all that listens it is a key.
    void replace(qsizetype start, qsizetype length, const QString &with, qsizetype caret);
    // The same for a command that may change much of it: rewrittenAll() tells what stood there.
    void rewriteAll(const QString &text);
    // Undo and redo for whoever does not type: the caret stays at its place and the view where it is.
    void stepBack();
    void stepForward();
    // A number that each change of the text makes another.
    qint64 revision() const { return m_revision; }
    // True while a key (of the keyboard or of an input method) is being handled: the next one waits for all
    // that changed() leads to.
    bool isTyping() const { return m_typing; }
    // True while a command rewrites the text: the caret stays at its place, though it is told to have moved.
    bool isRewriting() const { return m_rewriting; }

    // 1-based, in the text of the caret's line.
    qsizetype caretColumn() const;
    // Of the caret in text(), 0-based.
    qsizetype caretPosition() const { return fromDocument(textCursor().position()); }
    // Selection as 0-based position and length in text().
    qsizetype selectionStart() const;
    qsizetype selectionLength() const;
    void select(qsizetype start, qsizetype length);
    // The same without a selection, and the caret's line near the top, so that what follows it can be read.
    void showFrom(qsizetype position);
    // What others have to say about the text; empty after another document has come.
    SourceMarks &marks() { return *m_marks; }
    FoundMarks &found() { return m_found; }
    // Room above the lines for somebody else, in pixels.
    void setTopMargin(int height);
    // Puts the caret at the beginning of a line, 1-based, and shows it.
    void goToLine(int number);

    // The position in text() of what is shown at a point of the viewport; -1 where no text is.
    qsizetype positionAt(const QPoint &point) const;
    // Where a caret at a position in text() stands, in the viewport.
    QRect placeOf(qsizetype position) const;

signals:
    // The text is another one than before.
    void changed();
    void rewrittenAll(const QString &before);
    // A key has been handled, and all that changed() leads to with it. `isText`: it has changed the text.
    void keyHandled(bool isText);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    // A double click on what stands for the middle of a long line shows some of it.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    QMimeData *createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    friend class FoundMarks; // these ask where the lines are
    friend class LineNumbers;
    friend class SourceMarks;

    qsizetype withoutCarriageReturns(qsizetype position) const;
    qsizetype fromDocument(int position) const;
    void takeDocument(ReadyText ready);
    void rewrite(const QString &now, const QString &text, Keyboard keyboard, Step step);
    void showHidden(const QList<qsizetype> &positions);
    void placeNumbers();
    void markCaret();
    void takePaletteColours();

    // Undoing a command leaves the caret and the view where they are.
    bool stepQuietly(QKeyEvent *event);

    QSet<int> m_commands;    // the undo steps that commands made
    qint64 m_rewritten = -1; // revision that the last rewrite left
    bool m_typing = false, m_rewriting = false;
    qint64 m_revision = 0;
    mutable BoxText m_text;
    bool m_showing = false;     // hidden text is being shown; the text stays the same
    HeldText *m_held = nullptr; // these two belong to the document
    SourceHighlighter *m_colours = nullptr;
    LineNumbers *m_numbers;
    SourceMarks *m_marks;
    FoundMarks m_found{this};
    int m_topMargin = 0;
};

} // namespace quillmere
