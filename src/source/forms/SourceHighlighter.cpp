#include "source/forms/SourceHighlighter.h"

#include "source/forms/HeldText.h"
#include "source/forms/SourceLayout.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <optional>

namespace quillmere {

namespace {

constexpr qint64 kMostInPass = 8'000'000; // ns

// A line keeps the state that it leaves to the next one, and whether it has been shown. A new one has -1.
constexpr int kShown = 1 << 8;
constexpr int kShownUnread = -2; // without a state yet

bool isShown(const QTextBlock &line)
{
    const int state = line.userState();
    return state == kShownUnread || (state >= 0 && (state & kShown) != 0);
}

std::optional<LineState> knownState(const QTextBlock &line)
{
    return line.isValid() && line.userState() >= 0 ? std::optional(LineState(line.userState() & ~kShown))
                                                   : std::nullopt;
}

} // namespace

SourceHighlighter::SourceHighlighter(QTextDocument *document, const HeldText &held)
    : QObject(document), m_document(document),
      m_layout(static_cast<SourceLayout *>(document->documentLayout())), m_held(held)
{
    m_layout->setBeforeShown([this](const QTextBlock &line) { prepare(line); });
    m_layout->setForgotten([this](const QTextBlock &line) { forget(line); });
    m_next.setInterval(0);
    connect(&m_next, &QTimer::timeout, this, &SourceHighlighter::colourWaiting);
    connect(document, &QTextDocument::contentsChange, this, &SourceHighlighter::textChanged);
    setDark(false);
}

SourceHighlighter::~SourceHighlighter()
{
    if (m_layout) {
        m_layout->setBeforeShown({});
        m_layout->setForgotten({});
    }
}

void SourceHighlighter::setDark(bool dark)
{
    // Text, bracket, element, attribute, value, comment; each at least 4.5 : 1 on every ground there is.
    static constexpr std::array<QRgb, 6> onLight = {0xff202020, 0xff55606e, 0xff0b4f9e,
                                                    0xff7a3e9d, 0xff1b6e3c, 0xff59626c};
    static constexpr std::array<QRgb, 6> onDark = {0xffe6e6e6, 0xffa2afbd, 0xff7ab8ff,
                                                   0xffd0a8ff, 0xff8ddb8c, 0xffa6afb9};
    for (size_t token = 0; token < m_formats.size(); ++token)
        m_formats[token].setForeground(QColor::fromRgb((dark ? onDark : onLight)[token]));
    m_formats[size_t(Token::Comment)].setFontItalic(true);
    textChanged(0, 0, m_document->characterCount());
}

void SourceHighlighter::textChanged(int from, int removed, int added)
{
    Q_UNUSED(removed);
    if (m_atWork)
        return;
    const QTextBlock last = m_document->findBlock(from + added);
    m_waiting.push_back({QTextCursor(m_document->findBlock(from)),
                         QTextCursor(last.isValid() ? last : m_document->lastBlock())});
    colourWaiting();
}

void SourceHighlighter::colourWaiting()
{
    QElapsedTimer clock;
    clock.start();
    const QScopedValueRollback working(m_atWork, true);
    // From the top, because each line goes by the one above it.
    const auto isAbove = [](const Stretch &a, const Stretch &b) { return a.first < b.first; };
    while (!m_waiting.empty()) {
        const auto top = std::min_element(m_waiting.begin(), m_waiting.end(), isAbove);
        if (!colourStretch(*top, clock)) {
            m_next.start();
            return;
        }
        m_waiting.erase(top);
    }
    m_next.stop();
}

// False where time is up; the stretch is then what is left of it.
bool SourceHighlighter::colourStretch(Stretch &stretch, const QElapsedTimer &clock)
{
    const QTextBlock last = stretch.last.block();
    QTextBlock line = stretch.first.block();
    bool isBehind = line.position() >= last.position();
    for (; line.isValid(); line = line.next()) {
        if (clock.nsecsElapsed() > kMostInPass) {
            stretch.first = QTextCursor(line);
            return false;
        }
        const bool goesOn = colourLine(line);
        isBehind = isBehind || line == last;
        if (isBehind && !goesOn)
            break;
    }
    return true;
}

// Whether the line leaves another state to the next one than before.
bool SourceHighlighter::colourLine(const QTextBlock &block)
{
    const LineState state = readLine(block);
    if (isShown(block))
        show(block);
    if (knownState(block) == state)
        return false;
    QTextBlock(block).setUserState(int(state) | (isShown(block) ? kShown : 0));
    return true;
}

// Sets m_ranges, and gives the state behind the line.
LineState SourceHighlighter::readLine(const QTextBlock &block)
{
    const QString line = block.text();
    LineState state = knownState(block.previous()).value_or(LineState::Text);
    m_ranges.clear();
    qsizetype done = 0;
    for (qsizetype at = line.indexOf(QChar::ObjectReplacementCharacter); at >= 0;
         at = line.indexOf(QChar::ObjectReplacementCharacter, at + 1)) {
        colourPart(line, done, at, state);
        state = m_held.stateBehind(block.position() + int(at), state);
        done = at + 1;
    }
    colourPart(line, done, line.size(), state);
    return state;
}

void SourceHighlighter::prepare(const QTextBlock &line)
{
    // While a line is read, what it holds is looked for with a cursor, which lays the line out.
    if (m_atWork || isShown(line))
        return;
    const QScopedValueRollback working(m_atWork, true);
    QTextBlock(line).setUserState(line.userState() < 0 ? kShownUnread : line.userState() | kShown);
    readLine(line);
    show(line);
}

void SourceHighlighter::forget(const QTextBlock &line)
{
    if (isShown(line))
        QTextBlock(line).setUserState(line.userState() == kShownUnread ? -1 : line.userState() & ~kShown);
}

void SourceHighlighter::colourPart(QStringView line, qsizetype from, qsizetype to, LineState &state)
{
    for (const TokenSpan &span : tokensOf(line.sliced(from, to - from), state))
        m_ranges.append({int(from + span.start), int(span.length), m_formats[size_t(span.token)]});
}

void SourceHighlighter::show(const QTextBlock &line)
{
    QTextLayout *layout = line.layout();
    const QList<QTextLayout::FormatRange> before = layout->formats();
    // What an input method is composing stands in the line without being text, in formats of its own.
    const int composed = layout->preeditAreaPosition();
    const auto length = int(layout->preeditAreaText().size());
    if (length > 0) {
        for (QTextLayout::FormatRange &range : m_ranges) {
            if (range.start >= composed)
                range.start += length;
            else if (range.start + range.length > composed)
                range.length += length;
        }
        for (const QTextLayout::FormatRange &range : before) {
            if (range.start >= composed && range.start + range.length <= composed + length)
                m_ranges.append(range);
        }
    }
    if (before != m_ranges)
        m_layout->setFormats(line, m_ranges);
}

} // namespace quillmere
