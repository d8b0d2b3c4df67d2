#include "source/forms/TextFill.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextCursor>

namespace quillmere {

namespace {
constexpr qsizetype kPiece = 1 << 15; // units; a few milliseconds' work
}

TextFill::TextFill(QPlainTextEdit &box) : m_box(box)
{
    m_next.setInterval(0);
    connect(&m_next, &QTimer::timeout, this, &TextFill::addPiece);
}

void TextFill::start(const QString &text)
{
    m_text = text;
    m_done = 0;
    m_milliseconds = 0;
    m_next.start();
}

void TextFill::stop()
{
    m_next.stop();
    m_text.clear();
}

void TextFill::addPiece()
{
    QElapsedTimer clock;
    clock.start();
    if (m_done == 0)
        m_box.clear();
    qsizetype end = qMin(m_done + kPiece, m_text.size());
    if (end < m_text.size() && m_text[end - 1] == u'\r' && m_text[end] == u'\n')
        ++end; // cut apart they would be two line breaks
    QTextCursor cursor(m_box.document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(m_text.mid(m_done, end - m_done));
    m_done = end;
    m_milliseconds += double(clock.nsecsElapsed()) / 1e6;
    if (m_done < m_text.size())
        return;
    stop();
    emit filled();
}

} // namespace quillmere
