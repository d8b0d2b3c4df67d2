#pragma once

#include "source/SourceTokens.h"

#include <QElapsedTimer>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTimer>

#include <array>
#include <vector>

namespace quillmere {

class HeldText;

// Colours theme text, line by line as lines change. A change may reach far: a "<!--" at the top of a large
// text concerns all of it. What takes longer than a key may wait is left as it is for the moment and done in
// portions between the other events.
class SourceHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    SourceHighlighter(QTextDocument *document, const HeldText &held);

    // Takes colours that are readable on a light or on a dark ground.
    void setDark(bool dark);
    // True while the document changes because of its colours alone.
    bool isAtWork() const { return m_atWork; }
    // True when no line waits for its colours.
    bool isDone() const { return m_waiting.empty(); }

protected:
    void highlightBlock(const QString &line) override;

private:
    // Lines that wait, both ends included; cursors go along when the text changes.
    struct Stretch
    {
        QTextCursor first, last;
    };

    void colourPart(QStringView line, qsizetype from, qsizetype to, LineState &state);
    void leaveWaiting();
    void endPass();
    void colourNext();

    const HeldText &m_held;
    std::array<QTextCharFormat, 6> m_formats; // by Token
    bool m_atWork = false;
    QElapsedTimer m_pass;               // runs while one line after the other is coloured
    int m_through = -1;                 // line number; until there a pass goes on even where nothing changes
    QTextBlock m_leftFirst, m_leftLast; // by this pass
    std::vector<Stretch> m_waiting;
    QTimer m_next;
};

} // namespace quillmere
