#include "source/forms/SourceBox.h"

#include "source/SourceTokens.h"
#include "source/forms/SourceHighlighter.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>

namespace quillmere {

namespace {

constexpr int kIndent = 5;        // blanks a Tab goes on to a multiple of, as a formatted document has them
constexpr int kNumbersMargin = 6; // pixels left and right of a line number
constexpr int kBlockBar = 3;      // pixels, the mark of the caret's block
constexpr int kFarLines = 2000;   // how far the ends of that block are looked for
constexpr int kLinesAbove = 2;    // shown above a line that was asked for
constexpr int kNearLines = 50;    // how far the partner of a bracket is looked for

// A text with one line feed a line break, as the document counts.
QString withLineFeeds(const QString &text)
{
    return QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

struct Hunk
{
    qsizetype start; // in the old text
    qsizetype length;
    QString text;
};

// What differs between two texts without what they have in common at both ends.
Hunk differenceOf(QStringView now, QStringView next, qsizetype start)
{
    const qsizetype most = std::min(now.size(), next.size());
    qsizetype head = 0;
    while (head < most && now[head] == next[head])
        ++head;
    qsizetype tail = 0;
    while (tail < most - head && now[now.size() - 1 - tail] == next[next.size() - 1 - tail])
        ++tail;
    return {start + head, now.size() - head - tail, next.sliced(head, next.size() - head - tail).toString()};
}

// The smallest edits that turn one text into the other: line by line where both have as many lines, so that
// whatever stands between two changed places stays what it was; else the one stretch that differs.
QList<Hunk> hunksBetween(const QString &now, const QString &next)
{
    const QList<QStringView> nowLines = QStringView(now).split(u'\n');
    const QList<QStringView> nextLines = QStringView(next).split(u'\n');
    if (nowLines.size() != nextLines.size())
        return {differenceOf(now, next, 0)};
    QList<Hunk> hunks;
    qsizetype start = 0;
    for (qsizetype line = 0; line < nowLines.size(); ++line) {
        if (nowLines[line] != nextLines[line])
            hunks.append(differenceOf(nowLines[line], nextLines[line], start));
        start += nowLines[line].size() + 1;
    }
    return hunks;
}

// Where the caret belongs when blanks and line breaks were moved about: behind as many other characters as
// before, and directly before the next one where it was directly before it.
qsizetype sameInk(QStringView now, qsizetype caret, QStringView next)
{
    qsizetype ink = 0;
    for (QChar c : now.first(caret))
        ink += c.isSpace() ? 0 : 1;
    qsizetype at = 0;
    while (at < next.size() && ink > 0)
        ink -= next[at++].isSpace() ? 0 : 1;
    if (caret < now.size() && !now[caret].isSpace()) {
        while (at < next.size() && next[at].isSpace())
            ++at;
    }
    return at;
}

} // namespace

// The column of line numbers; the box itself paints it.
class LineNumbers : public QWidget
{
public:
    explicit LineNumbers(SourceBox *box) : QWidget(box), m_box(box) {}

protected:
    void paintEvent(QPaintEvent *event) override { m_box->paintNumbers(event); }

private:
    SourceBox *m_box;
};

SourceBox::SourceBox(const QString &name, const QString &accessibleName, QWidget *parent)
    : QPlainTextEdit(parent), m_numbers(new LineNumbers(this)), m_colours(new SourceHighlighter(document()))
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setLineWrapMode(NoWrap);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    takePaletteColours();
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (m_colours->isAtWork())
            return; // only the colours are others
        emit changed();
    });
    connect(document(), &QTextDocument::contentsChange, this, [this] {
        if (m_colours->isAtWork())
            return;
        m_isText = false;
        m_text.clear();
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
    if (m_isText)
        return m_text;
    // toPlainText() would turn every no-break space into a blank.
    const QString raw = document()->toRawText();
    QString text;
    text.reserve(raw.size() + document()->blockCount());
    qsizetype done = 0;
    for (;;) {
        const qsizetype end = raw.indexOf(QChar::ParagraphSeparator, done);
        if (end < 0)
            break;
        text += QStringView(raw).mid(done, end - done);
        text += QLatin1String("\r\n");
        done = end + 1;
    }
    text += QStringView(raw).mid(done);
    m_text = text;
    m_isText = true;
    return text;
}

void SourceBox::setText(const QString &text)
{
    {
        const QSignalBlocker quiet(this);
        setPlainText(text);
    }
    m_commands.clear();
    m_text = text;
    m_isText = true;
    emit cursorPositionChanged();
    emit changed();
}

void SourceBox::rewrite(const QString &text)
{
    const QString now = withLineFeeds(this->text());
    const QString next = withLineFeeds(text);
    if (now == next)
        return;
    const QList<Hunk> hunks = hunksBetween(now, next);
    const qsizetype caret = std::min<qsizetype>(textCursor().position(), now.size());
    const int scrolled = verticalScrollBar()->value();

    QTextCursor edit(document());
    edit.beginEditBlock();
    for (auto hunk = hunks.crbegin(); hunk != hunks.crend(); ++hunk) {
        edit.setPosition(int(hunk->start));
        edit.setPosition(int(hunk->start + hunk->length), QTextCursor::KeepAnchor);
        edit.insertText(hunk->text);
    }
    edit.endEditBlock();

    QTextCursor back = textCursor();
    const bool inside =
        hunks.size() == 1 && caret > hunks[0].start && caret < hunks[0].start + hunks[0].length;
    back.setPosition(
        int(inside ? sameInk(now, caret, next) : std::min<qsizetype>(back.position(), next.size())));
    setTextCursor(back);
    verticalScrollBar()->setValue(scrolled);
    m_commands.insert(document()->availableUndoSteps());
    if (window()->isActiveWindow())
        setFocus(); // so that Ctrl+Z takes it back
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
    QTextCursor cursor = textCursor();
    cursor.setPosition(toDocument(start));
    cursor.setPosition(toDocument(start + length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

int SourceBox::toDocument(qsizetype position) const
{
    const QString all = text();
    const qsizetype bound = std::clamp<qsizetype>(position, 0, all.size());
    const qsizetype pairs = QStringView(all).first(bound).count(QStringView(u"\r\n"));
    return int(std::min<qsizetype>(bound - pairs, document()->characterCount() - 1));
}

qsizetype SourceBox::fromDocument(int position) const
{
    const QString all = text();
    qsizetype at = 0;
    for (int counted = 0; counted < position && at < all.size(); ++counted)
        at += all[at] == u'\r' && at + 1 < all.size() && all[at + 1] == u'\n' ? 2 : 1;
    return at;
}

void SourceBox::showFrom(qsizetype position)
{
    select(position, 0);
    verticalScrollBar()->setValue(std::max(0, textCursor().blockNumber() - kLinesAbove));
    horizontalScrollBar()->setValue(0);
}

bool SourceBox::stepQuietly(QKeyEvent *event)
{
    const bool undoes = event->matches(QKeySequence::Undo);
    if (!undoes || !m_commands.contains(document()->availableUndoSteps()))
        return false;
    const int scrolled = verticalScrollBar()->value();
    document()->undo(); // with a cursor it would end up where the first change was
    verticalScrollBar()->setValue(scrolled);
    event->accept();
    return true;
}

void SourceBox::inputMethodEvent(QInputMethodEvent *event)
{
    const QScopedValueRollback typing(m_typing, true);
    QPlainTextEdit::inputMethodEvent(event);
}

void SourceBox::keyPressEvent(QKeyEvent *event)
{
    const QScopedValueRollback typing(m_typing, true);
    if (stepQuietly(event))
        return;
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::NoModifier) {
        const int column = textCursor().positionInBlock();
        insertPlainText(QString(kIndent - column % kIndent, u' '));
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void SourceBox::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
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

int SourceBox::numbersWidth() const
{
    const int digits = std::max(3, int(QString::number(blockCount()).size()));
    return digits * fontMetrics().horizontalAdvance(u'9') + 2 * kNumbersMargin + kBlockBar;
}

void SourceBox::placeNumbers()
{
    const QRect inside = contentsRect();
    setViewportMargins(numbersWidth(), 0, 0, 0);
    m_numbers->setGeometry(inside.left(), inside.top(), numbersWidth(), inside.height());
}

void SourceBox::paintNumbers(QPaintEvent *event)
{
    QPainter painter(m_numbers);
    painter.fillRect(event->rect(), palette().alternateBase());
    const int caretLine = textCursor().blockNumber();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRect line = blockBoundingGeometry(block).translated(contentOffset()).toAlignedRect();
        if (line.top() > event->rect().bottom())
            break;
        const int number = block.blockNumber();
        if (number >= m_blockFirst && number <= m_blockLast)
            painter.fillRect(m_numbers->width() - kBlockBar, line.top(), kBlockBar, line.height(),
                             palette().highlight());
        painter.setPen(palette().color(number == caretLine ? QPalette::Text : QPalette::PlaceholderText));
        painter.drawText(0, line.top(), m_numbers->width() - kBlockBar - kNumbersMargin, line.height(),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(number + 1));
    }
}

// Marks the caret's line, the block of the document that it stands in, and the partner of a bracket beside
// it.
void SourceBox::markCaret()
{
    const QTextBlock line = textCursor().block();
    QTextBlock first = line;
    for (int far = 0; far < kFarLines && !startsBlock(first.text()) && first.previous().isValid(); ++far)
        first = first.previous();
    QTextBlock last = line;
    for (int far = 0; far < kFarLines && last.next().isValid() && !startsBlock(last.next().text()); ++far)
        last = last.next();
    const bool found = startsBlock(first.text());
    m_blockFirst = first.blockNumber();
    m_blockLast = found ? last.blockNumber() : -1;

    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection current;
    QColor ground = palette().color(QPalette::Highlight);
    ground.setAlpha(28);
    current.format.setBackground(ground);
    current.format.setProperty(QTextFormat::FullWidthSelection, true);
    current.cursor = textCursor();
    current.cursor.clearSelection();
    marks.append(current);

    QColor bracketGround = palette().color(QPalette::Highlight);
    bracketGround.setAlpha(90);
    QTextBlock near = line;
    for (int i = 0; i < kNearLines && near.previous().isValid(); ++i)
        near = near.previous();
    const int base = near.position();
    QString around;
    for (int i = 0; i < 2 * kNearLines && near.isValid(); ++i, near = near.next())
        around += near.text() + u'\n';
    const int caret = textCursor().position() - base;
    for (const int at : {caret, caret - 1}) {
        const qsizetype partner = partnerOfBracket(around, at);
        if (partner < 0)
            continue;
        for (const qsizetype bracket : {qsizetype(at), partner}) {
            QTextEdit::ExtraSelection mark;
            mark.format.setBackground(bracketGround);
            mark.cursor = QTextCursor(document());
            mark.cursor.setPosition(base + int(bracket));
            mark.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            marks.append(mark);
        }
        break;
    }
    setExtraSelections(marks);
    m_numbers->update();
}

} // namespace quillmere
