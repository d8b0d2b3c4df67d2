#include "source/SourceTokens.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

constexpr QStringView commentStart = u"<!--";
constexpr QStringView commentEnd = u"-->";

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'-' || c == u':' || c == u'.';
}

// Reads one line from left to right.
class LineReader
{
public:
    LineReader(QStringView line, LineState &state) : m_line(line), m_state(state) {}

    QList<TokenSpan> read()
    {
        while (m_at < m_line.size()) {
            switch (m_state) {
            case LineState::Text:
                readText();
                break;
            case LineState::Tag:
                readTag();
                break;
            case LineState::Value:
                readValue(m_at);
                break;
            case LineState::Comment:
                readComment(m_at);
                break;
            }
        }
        return m_spans;
    }

private:
    void add(qsizetype start, qsizetype end, Token token)
    {
        if (end > start)
            m_spans.append({start, end - start, token});
        m_at = end;
    }

    qsizetype nameEnd(qsizetype from) const
    {
        while (from < m_line.size() && isNamePart(m_line[from]))
            ++from;
        return from;
    }

    void readText()
    {
        const qsizetype tag = m_line.indexOf(u'<', m_at);
        if (tag < 0) {
            m_at = m_line.size();
            return;
        }
        if (m_line.sliced(tag).startsWith(commentStart)) {
            readComment(tag);
            return;
        }
        const bool marked = tag + 1 < m_line.size() && (m_line[tag + 1] == u'/' || m_line[tag + 1] == u'?');
        add(tag, tag + (marked ? 2 : 1), Token::Bracket);
        add(m_at, nameEnd(m_at), Token::Element);
        m_state = LineState::Tag;
    }

    void readTag()
    {
        const QChar c = m_line[m_at];
        if (c == u'<') {
            m_state = LineState::Text; // the tag before was never closed
        } else if (c == u'>') {
            add(m_at, m_at + 1, Token::Bracket);
            m_state = LineState::Text;
        } else if (c == u'/' || c == u'?') {
            add(m_at, m_at + 1, Token::Bracket);
        } else if (c == u'"') {
            readValue(m_at, m_at + 1);
        } else if (isNamePart(c)) {
            add(m_at, nameEnd(m_at), Token::Attribute);
        } else {
            ++m_at;
        }
    }

    void readValue(qsizetype start) { readValue(start, start); }
    void readValue(qsizetype start, qsizetype from)
    {
        const qsizetype quote = m_line.indexOf(u'"', from);
        m_state = quote < 0 ? LineState::Value : LineState::Tag;
        add(start, quote < 0 ? m_line.size() : quote + 1, Token::Value);
    }

    void readComment(qsizetype start)
    {
        // "<!-->" is a comment already: its end may overlap its beginning.
        const qsizetype from = m_state == LineState::Comment ? start : start + 2;
        const qsizetype end = m_line.indexOf(commentEnd, from);
        m_state = end < 0 ? LineState::Comment : LineState::Text;
        add(start, end < 0 ? m_line.size() : end + commentEnd.size(), Token::Comment);
    }

    QStringView m_line;
    LineState &m_state;
    qsizetype m_at = 0;
    QList<TokenSpan> m_spans;
};

} // namespace

QList<TokenSpan> tokensOf(QStringView line, LineState &state)
{
    return LineReader(line, state).read();
}

bool startsBlock(QStringView line)
{
    return containsIgnoringCase(line, u"<widget ") || containsIgnoringCase(line, u"<style ");
}

qsizetype partnerOfBracket(QStringView text, qsizetype position)
{
    if (position < 0 || position >= text.size())
        return -1;
    if (text[position] == u'<') {
        const qsizetype end = text.indexOf(u'>', position);
        const qsizetype next = text.indexOf(u'<', position + 1);
        return end >= 0 && (next < 0 || end < next) ? end : -1;
    }
    if (text[position] != u'>')
        return -1;
    const qsizetype start = text.first(position).lastIndexOf(u'<');
    const qsizetype before = text.first(position).lastIndexOf(u'>');
    return start > before ? start : -1;
}

} // namespace quillmere
