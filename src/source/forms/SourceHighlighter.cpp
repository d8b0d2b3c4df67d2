#include "source/forms/SourceHighlighter.h"

#include "source/forms/HeldText.h"

#include <QScopedValueRollback>
#include <QTextLayout>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qint64 kMostInPass = 8'000'000; // ns

// A line keeps the state that it leaves to the next one, and a bit that says nothing but that it has been
// turned over: the pass goes on as long as what is kept changes.
LineState stateOf(int kept)
{
    return kept < 0 ? LineState::Text : LineState(kept >> 1);
}

int kept(LineState state, bool bit)
{
    return int(state) << 1 | int(bit);
}

} // namespace

SourceHighlighter::SourceHighlighter(QTextDocument *document, const HeldText &held)
    : QSyntaxHighlighter(document), m_held(held)
{
    m_next.setInterval(0);
    connect(&m_next, &QTimer::timeout, this, &SourceHighlighter::colourNext);
    // The base class listens too, and has done so for longer: here its pass is over.
    connect(document, &QTextDocument::contentsChange, this, [this] {
        if (!m_atWork)
            endPass();
    });
    setDark(false);
}

void SourceHighlighter::setDark(bool dark)
{
    // Text, bracket, element, attribute, value, comment; each at least 4.5 : 1 on its ground.
    static constexpr std::array<QRgb, 6> onLight = {0xff202020, 0xff5f6b7a, 0xff0b4f9e,
                                                    0xff7a3e9d, 0xff1b6e3c, 0xff6a737d};
    static constexpr std::array<QRgb, 6> onDark = {0xffe6e6e6, 0xff9aa7b5, 0xff7ab8ff,
                                                   0xffd0a8ff, 0xff8ddb8c, 0xff98a1ab};
    for (size_t token = 0; token < m_formats.size(); ++token)
        m_formats[token].setForeground(QColor::fromRgb((dark ? onDark : onLight)[token]));
    m_formats[size_t(Token::Comment)].setFontItalic(true);
    const QScopedValueRollback working(m_atWork, true);
    rehighlight();
    endPass();
}

void SourceHighlighter::highlightBlock(const QString &line)
{
    if (!m_pass.isValid()) {
        m_pass.start();
    } else if (m_pass.nsecsElapsed() > kMostInPass) {
        leaveWaiting();
        return;
    }
    LineState state = stateOf(previousBlockState());
    qsizetype done = 0;
    for (qsizetype at = line.indexOf(QChar::ObjectReplacementCharacter); at >= 0;
         at = line.indexOf(QChar::ObjectReplacementCharacter, at + 1)) {
        colourPart(line, done, at, state);
        state = m_held.stateBehind(currentBlock().position() + int(at), state);
        done = at + 1;
    }
    colourPart(line, done, line.size(), state);
    const bool bit = currentBlockState() >= 0 && (currentBlockState() & 1);
    setCurrentBlockState(kept(state, bit != (currentBlock().blockNumber() < m_through)));
}

void SourceHighlighter::colourPart(QStringView line, qsizetype from, qsizetype to, LineState &state)
{
    for (const TokenSpan &span : tokensOf(line.sliced(from, to - from), state))
        setFormat(int(from + span.start), int(span.length), m_formats[size_t(span.token)]);
}

// The line keeps its colours and its state, so that a pass that only followed a changed state ends here.
void SourceHighlighter::leaveWaiting()
{
    const QTextBlock line = currentBlock();
    const QList<QTextLayout::FormatRange> formats = line.layout()->formats();
    for (const QTextLayout::FormatRange &range : formats)
        setFormat(range.start, range.length, range.format);
    if (!m_leftFirst.isValid())
        m_leftFirst = line;
    m_leftLast = line;
}

void SourceHighlighter::endPass()
{
    m_pass.invalidate();
    if (!m_leftFirst.isValid())
        return;
    m_waiting.push_back({QTextCursor(m_leftFirst), QTextCursor(m_leftLast)});
    m_leftFirst = m_leftLast = QTextBlock();
    m_next.start();
}

void SourceHighlighter::colourNext()
{
    if (m_waiting.empty()) {
        m_next.stop();
        return;
    }
    // From the top, because each line goes by the one above it.
    const auto isAbove = [](const Stretch &a, const Stretch &b) { return a.first < b.first; };
    const auto top = std::min_element(m_waiting.begin(), m_waiting.end(), isAbove);
    const Stretch stretch = *top;
    m_waiting.erase(top);

    const QScopedValueRollback working(m_atWork, true);
    const QScopedValueRollback through(m_through, stretch.last.blockNumber());
    rehighlightBlock(stretch.first.block());
    if (m_leftFirst.isValid() && m_leftLast.blockNumber() < m_through)
        m_leftLast = stretch.last.block();
    endPass();
}

} // namespace quillmere
