#include "source/forms/CaretMarks.h"

#include "source/SourceTokens.h"

#include <QPlainTextEdit>
#include <QTextBlock>

namespace quillmere {

namespace {

constexpr int kFarLines = 2000; // how far the ends of the caret's block are looked for
constexpr int kNearLines = 50;  // how far the partner of a bracket is looked for

// The ground of the two brackets where one stands beside the caret.
void markBrackets(const QPlainTextEdit &box, QList<QTextEdit::ExtraSelection> &marks)
{
    QTextBlock near = box.textCursor().block();
    for (int i = 0; i < kNearLines && near.previous().isValid(); ++i)
        near = near.previous();
    const int base = near.position();
    QString around;
    for (int i = 0; i < 2 * kNearLines && near.isValid(); ++i, near = near.next())
        around += near.text() + u'\n';

    QColor ground = box.palette().color(QPalette::Highlight);
    ground.setAlpha(90);
    const int caret = box.textCursor().position() - base;
    for (const int at : {caret, caret - 1}) {
        const qsizetype partner = partnerOfBracket(around, at);
        if (partner < 0)
            continue;
        for (const qsizetype bracket : {qsizetype(at), partner}) {
            QTextEdit::ExtraSelection mark;
            mark.format.setBackground(ground);
            mark.format.setForeground(box.palette().color(QPalette::Text));
            mark.cursor = QTextCursor(box.document());
            mark.cursor.setPosition(base + int(bracket));
            mark.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            marks.append(mark);
        }
        return;
    }
}

} // namespace

LineRange blockAround(const QTextBlock &line)
{
    QTextBlock first = line;
    for (int far = 0; far < kFarLines && !startsBlock(first.text()) && first.previous().isValid(); ++far)
        first = first.previous();
    if (!startsBlock(first.text()))
        return {};
    QTextBlock last = line;
    for (int far = 0; far < kFarLines && last.next().isValid() && !startsBlock(last.next().text()); ++far)
        last = last.next();
    return {first.blockNumber(), last.blockNumber()};
}

QList<QTextEdit::ExtraSelection> caretMarks(const QPlainTextEdit &box)
{
    QTextEdit::ExtraSelection line;
    QColor ground = box.palette().color(QPalette::Highlight);
    ground.setAlpha(28);
    line.format.setBackground(ground);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = box.textCursor();
    line.cursor.clearSelection();
    QList<QTextEdit::ExtraSelection> marks = {line};
    markBrackets(box, marks);
    return marks;
}

} // namespace quillmere
