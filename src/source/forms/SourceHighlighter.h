#pragma once

#include "source/SourceTokens.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextLayout>
#include <QTimer>

#include <array>
#include <vector>

namespace quillmere {

class HeldText;
class SourceLayout;

// Colours theme text, line by line as lines change. A change may reach far: a "<!--" at the top of a large
// text concerns all of it, and a command changes lines all over. What takes longer than a key may wait is
// left as it is for the moment and done in portions between the other events. (Qt's own highlighter goes over
// all lines between the first change and the last in one go.) A line that nobody has seen yet has its state
// only, and gets its colours when it is shown.
class SourceHighlighter : public QObject
{
    Q_OBJECT

public:
    // The document is to have a SourceLayout.
    SourceHighlighter(QTextDocument *document, const HeldText &held);
    ~SourceHighlighter() override;

    // Takes colours that are readable on a light or on a dark ground.
    void setDark(bool dark);
    // True while the document changes because of its colours alone.
    bool isAtWork() const { return m_atWork; }

private:
    // Lines that wait, both ends included; cursors go along when the text changes.
    struct Stretch
    {
        QTextCursor first, last;
    };

    void textChanged(int from, int removed, int added);
    void colourWaiting();
    bool colourStretch(Stretch &stretch, const QElapsedTimer &clock);
    bool colourLine(const QTextBlock &line);
    LineState readLine(const QTextBlock &line);
    void colourPart(QStringView line, qsizetype from, qsizetype to, LineState &state);
    void prepare(const QTextBlock &line);
    void forget(const QTextBlock &line);
    void show(const QTextBlock &line);

    QTextDocument *m_document;
    QPointer<SourceLayout> m_layout;
    const HeldText &m_held;
    std::array<QTextCharFormat, 6> m_formats; // by Token
    bool m_atWork = false;
    QList<QTextLayout::FormatRange> m_ranges; // of the line at work
    std::vector<Stretch> m_waiting;
    QTimer m_next;
};

} // namespace quillmere
