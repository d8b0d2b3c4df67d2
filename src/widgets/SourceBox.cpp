#include "widgets/SourceBox.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>

namespace quillmere {

namespace {

// A text with one line feed a line break, as the document counts.
QString withLineFeeds(const QString &text)
{
    return QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

} // namespace

SourceBox::SourceBox(const QString &name, const QString &accessibleName, QWidget *parent)
    : QPlainTextEdit(parent)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setLineWrapMode(NoWrap);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    setTabChangesFocus(false);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        m_isGiven = false;
        emit changed();
    });
}

QString SourceBox::text() const
{
    if (m_isGiven)
        return m_given;
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
    return text;
}

void SourceBox::setText(const QString &text)
{
    {
        const QSignalBlocker quiet(this);
        setPlainText(text);
    }
    m_given = text;
    m_isGiven = true;
    emit cursorPositionChanged();
    emit changed();
}

void SourceBox::rewrite(const QString &text)
{
    const QString now = withLineFeeds(this->text());
    const QString next = withLineFeeds(text);
    if (now == next)
        return;
    // Only the part between what both have in common is replaced, so that the caret and the view keep their
    // place and undoing marks what the command did.
    const qsizetype most = std::min(now.size(), next.size());
    qsizetype head = 0;
    while (head < most && now[head] == next[head])
        ++head;
    qsizetype tail = 0;
    while (tail < most - head && now[now.size() - 1 - tail] == next[next.size() - 1 - tail])
        ++tail;

    const int caret = textCursor().position();
    const int scrolled = verticalScrollBar()->value();
    QTextCursor edit(document());
    edit.beginEditBlock();
    edit.setPosition(int(head));
    edit.setPosition(int(now.size() - tail), QTextCursor::KeepAnchor);
    edit.insertText(next.mid(head, next.size() - tail - head));
    edit.endEditBlock();

    QTextCursor back = textCursor();
    back.setPosition(std::min(caret, document()->characterCount() - 1));
    setTextCursor(back);
    verticalScrollBar()->setValue(scrolled);
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

} // namespace quillmere
