#include "source/forms/SourceBox.h"

#include "source/TextChanges.h"
#include "source/forms/DocumentEdits.h"
#include "source/forms/HeldText.h"
#include "source/forms/LineNumbers.h"
#include "source/forms/SourceHighlighter.h"
#include "source/forms/SourceKeys.h"
#include "source/forms/SourceMarks.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kLinesAbove = 2;    // shown above a line that was asked for
constexpr qsizetype kSeen = 1000; // units of a held text that a double click shows

} // namespace

SourceBox::SourceBox(const QString &name, const QString &accessibleName, QWidget *parent)
    : QPlainTextEdit(parent), m_numbers(new LineNumbers(this)), m_marks(new SourceMarks(this))
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setLineWrapMode(NoWrap);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    takeDocument(makeReady(QString()));
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (m_colours->isAtWork() || m_showing)
            return; // only the looks are others
        ++m_revision;
        emit changed();
    });
    connect(this, &QPlainTextEdit::blockCountChanged, this, &SourceBox::placeNumbers);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &SourceBox::markCaret);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int scrolled) {
        if (scrolled != 0)
            m_numbers->scroll(0, scrolled);
        else
            m_numbers->update(0, rect.y(), m_numbers->width(), rect.height());
    });
    placeNumbers();
}

SourceBox::~SourceBox() = default;

QString SourceBox::text() const
{
    return m_text.of(*m_held);
}

void SourceBox::setText(ReadyText ready)
{
    const QString text = ready.text;
    {
        const QSignalBlocker quiet(this);
        takeDocument(std::move(ready));
    }
    m_commands.clear();
    m_text.set(text, *m_held);
    placeNumbers();
    ++m_revision;
    emit cursorPositionChanged();
    emit changed();
}

void SourceBox::takeDocument(ReadyText ready)
{
    const std::unique_ptr<QTextDocument> before(document()->parent() == this ? document() : nullptr);
    QTextDocument *next = ready.document.release();
    next->setParent(this);
    next->setDefaultFont(font());
    m_held = ready.held;
    m_colours = new SourceHighlighter(next, *m_held);
    setDocument(next);
    m_marks->setDocument(next);
    connect(next, &QTextDocument::contentsChange, this, [this](int from, int removed, int added) {
        if (!m_colours->isAtWork() && !m_showing)
            m_text.follow(*m_held, from, removed, added);
    });
    takePaletteColours();
}

void SourceBox::rewrite(const QString &text, Keyboard keyboard, Step step)
{
    rewrite(m_held->text(), text, keyboard, step);
}

void SourceBox::rewrite(const QString &now, const QString &text, Keyboard keyboard, Step step)
{
    const QString next = withLineFeeds(text);
    if (now == next)
        return;
    const QList<TextChange> changes = changesBetween(now, next);
    const qsizetype caret = caretAfter(changes, now, m_held->fromDocument(textCursor().position()));
    const int down = verticalScrollBar()->value(), across = horizontalScrollBar()->value();
    const QScopedValueRollback rewriting(m_rewriting, true);
    const bool joins = step == Step::OfLast && m_rewritten == m_revision;
    if (joins)
        m_commands.remove(document()->availableUndoSteps());
    applyChanges(*m_held, now, changes, joins);
    showHidden({caret});
    QTextCursor back = textCursor();
    back.setPosition(m_held->toDocument(caret));
    setTextCursor(back);
    verticalScrollBar()->setValue(down);
    horizontalScrollBar()->setValue(across); // what has changed is seldom where the caret is
    m_commands.insert(document()->availableUndoSteps());
    m_rewritten = m_revision;
    if (keyboard == Keyboard::Taken && window()->isActiveWindow())
        setFocus();
}

void SourceBox::rewriteAll(const QString &text)
{
    const QString before = m_held->text();
    const qint64 revision = m_revision;
    rewrite(before, text, Keyboard::Taken, Step::Own);
    if (m_revision != revision)
        emit rewrittenAll(before);
}

void SourceBox::replace(qsizetype start, qsizetype length, const QString &with, qsizetype caret)
{
    const qsizetype from = withoutCarriageReturns(start), to = withoutCarriageReturns(start + length);
    {
        const QScopedValueRollback typing(m_typing, true);
        QTextCursor step = textCursor(); // undoing brings the caret back there
        step.beginEditBlock();
        applyChanges(*m_held, m_held->text(), {{from, to - from, withLineFeeds(with)}});
        step.endEditBlock();
    }
    select(caret, 0);
}

// Shows what an object hides around these positions of the text. That is no edit: it is part of the step
// before, and where there is none, of no step.
void SourceBox::showHidden(const QList<qsizetype> &positions)
{
    QTextDocument *shown = document();
    for (const qsizetype position : positions) {
        if (!m_held->hides(position))
            continue;
        const QScopedValueRollback showing(m_showing, true);
        const bool isFirst = !shown->isUndoAvailable();
        const bool isModified = shown->isModified();
        if (isFirst)
            shown->setUndoRedoEnabled(false);
        QTextCursor edit(shown);
        edit.joinPreviousEditBlock();
        edit.setPosition(m_held->toDocument(position));
        m_held->shortenLine(edit, positions);
        edit.endEditBlock();
        if (isFirst)
            shown->setUndoRedoEnabled(true);
        shown->setModified(isModified);
    }
}

qsizetype SourceBox::caretColumn() const
{
    const QTextCursor caret = textCursor();
    return m_held->text(caret.block().position(), caret.position()).size() + 1;
}

qsizetype SourceBox::selectionStart() const
{
    return fromDocument(textCursor().selectionStart());
}

qsizetype SourceBox::selectionLength() const
{
    return fromDocument(textCursor().selectionEnd()) - selectionStart();
}

void SourceBox::select(qsizetype start, qsizetype length)
{
    const qsizetype from = withoutCarriageReturns(start), to = withoutCarriageReturns(start + length);
    showHidden({from, to});
    QTextCursor cursor = textCursor();
    cursor.setPosition(m_held->toDocument(from));
    cursor.setPosition(m_held->toDocument(to), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
    // Lines are read from their beginning, which an end far to the right need not hide.
    QScrollBar *across = horizontalScrollBar();
    if (across->value() + cursorRect().right() < viewport()->width())
        across->setValue(0);
}

// From a position in text() to one where a line break counts one.
qsizetype SourceBox::withoutCarriageReturns(qsizetype position) const
{
    const QString all = text();
    const qsizetype bound = std::clamp<qsizetype>(position, 0, all.size());
    return bound - QStringView(all).first(bound).count(QStringView(u"\r\n"));
}

qsizetype SourceBox::fromDocument(int position) const
{
    return m_text.positionOf(*m_held, position);
}

void SourceBox::showFrom(qsizetype position)
{
    select(position, 0);
    verticalScrollBar()->setValue(std::max(0, textCursor().blockNumber() - kLinesAbove));
    horizontalScrollBar()->setValue(0);
}

qsizetype SourceBox::positionAt(const QPoint &point) const
{
    QTextCursor at = cursorForPosition(point); // between the two units that are nearest
    const QRect caret = cursorRect(at);
    if (point.y() < caret.top() || point.y() > caret.bottom() ||
        (point.x() > caret.right() && at.atBlockEnd()))
        return -1;
    if (point.x() < caret.left()) {
        if (at.atBlockStart())
            return -1;
        at.movePosition(QTextCursor::PreviousCharacter);
    }
    return fromDocument(at.position());
}

QRect SourceBox::placeOf(qsizetype position) const
{
    QTextCursor caret(document());
    caret.setPosition(m_held->toDocument(withoutCarriageReturns(position)));
    return cursorRect(caret);
}

bool SourceBox::stepQuietly(QKeyEvent *event)
{
    const bool undoes = event->matches(QKeySequence::Undo);
    if (!undoes || !m_commands.contains(document()->availableUndoSteps()))
        return false;
    stepBack();
    event->accept();
    return true;
}

void SourceBox::stepBack()
{
    const int scrolled = verticalScrollBar()->value();
    document()->undo(); // with a cursor it would end up where the first change was
    verticalScrollBar()->setValue(scrolled);
}

void SourceBox::stepForward()
{
    const int scrolled = verticalScrollBar()->value();
    document()->redo();
    verticalScrollBar()->setValue(scrolled);
}

void SourceBox::inputMethodEvent(QInputMethodEvent *event)
{
    const int before = document()->revision();
    {
        const QScopedValueRollback typing(m_typing, true);
        QPlainTextEdit::inputMethodEvent(event);
    }
    emit keyHandled(document()->revision() != before);
}

void SourceBox::keyPressEvent(QKeyEvent *event)
{
    const int before = document()->revision();
    {
        const QScopedValueRollback typing(m_typing, true);
        QTextCursor caret = textCursor();
        if (!isReadOnly() && editByKey(*event, caret, *m_held)) {
            setTextCursor(caret);
            ensureCursorVisible();
        } else if (!stepQuietly(event)) {
            QPlainTextEdit::keyPressEvent(event);
        }
    }
    emit keyHandled(document()->revision() != before);
}

QMimeData *SourceBox::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData;
    copied->setText(m_held->text(textCursor().selectionStart(), textCursor().selectionEnd()));
    return copied;
}

void SourceBox::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly() || !source->hasText())
        return;
    QTextCursor edit = textCursor();
    edit.beginEditBlock();
    edit.removeSelectedText();
    m_held->insert(edit, withLineFeeds(source->text()));
    if (HeldText::isTooLong(edit.block()))
        m_held->shortenLine(edit, {m_held->fromDocument(edit.position())});
    endStep(edit);
    setTextCursor(edit);
    ensureCursorVisible();
}

void SourceBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QTextCursor at = cursorForPosition(event->position().toPoint());
    for (const int position : {at.position(), at.position() - 1}) {
        if (m_held->heldAt(position).size() < 2 || event->button() != Qt::LeftButton)
            continue;
        const qsizetype first = m_held->fromDocument(position);
        showHidden({first + kSeen});
        QTextCursor caret = textCursor();
        caret.setPosition(m_held->toDocument(first));
        setTextCursor(caret);
        return;
    }
    QPlainTextEdit::mouseDoubleClickEvent(event);
}

void SourceBox::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    m_found.draw(event->rect());
    m_marks->drawUnderlines(event->rect());
}

void SourceBox::resizeEvent(QResizeEvent *event)
{
    QResizeEvent sameWidth(event->size(), event->size()); // another one would lay out every line
    QPlainTextEdit::resizeEvent(&sameWidth);
    placeNumbers();
}

void SourceBox::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takePaletteColours();
}

void SourceBox::takePaletteColours()
{
    m_colours->setDark(palette().color(QPalette::Base).lightness() < 128);
    markCaret();
}

void SourceBox::placeNumbers()
{
    const QRect inside = contentsRect();
    const int width = m_numbers->widthNeeded();
    setViewportMargins(width, m_topMargin, SourceMarks::kWidth, 0);
    m_numbers->setGeometry(inside.left(), inside.top() + m_topMargin, width, inside.height() - m_topMargin);
    const QRect lines = viewport()->geometry();
    m_marks->setGeometry(lines.right() + 1, lines.top(), SourceMarks::kWidth, lines.height());
}

void SourceBox::setTopMargin(int height)
{
    if (std::exchange(m_topMargin, height) != height)
        placeNumbers();
}

void SourceBox::goToLine(int number)
{
    setTextCursor(QTextCursor(document()->findBlockByNumber(std::clamp(number, 1, blockCount()) - 1)));
    centerCursor();
}

void SourceBox::markCaret()
{
    m_numbers->setMarked(blockAround(textCursor().block()));
    setExtraSelections(caretMarks(*this));
}

} // namespace quillmere
