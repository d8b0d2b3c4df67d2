#include "source/forms/SourceLayout.h"

#include <QScopedValueRollback>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {
constexpr size_t kMostLaidOut = 4000; // lines, many times what a screen shows
}

void SourceLayout::setFormats(const QTextBlock &line, const QList<QTextLayout::FormatRange> &formats)
{
    const bool isLaidOut = line.layout()->lineCount() > 0;
    // The document notes formats as a change, and would tell of it with the next key: it is told of now. Of a
    // line that is not laid out there is nothing to lay out anew.
    const QScopedValueRollback from(m_quietFrom, isLaidOut ? -1 : line.position());
    const QScopedValueRollback length(m_quietLength, line.length());
    line.layout()->setFormats(formats);
    document()->markContentsDirty(line.position(), line.length());
}

QRectF SourceLayout::blockBoundingRect(const QTextBlock &line) const
{
    if (!line.isValid())
        return QPlainTextDocumentLayout::blockBoundingRect(line);
    if (m_prepare)
        m_prepare(line);
    if (line.layout()->lineCount() == 0) {
        layOut(line);
        m_laidOut.push_back(line);
        if (m_laidOut.size() >= kMostLaidOut)
            forgetOldest();
    }
    const QRectF rect = QPlainTextDocumentLayout::blockBoundingRect(line);
    noteWidth(line, rect.width());
    return rect;
}

// Qt's own looks at every line of the document when the widest becomes shorter, and so makes a layout for
// each.
void SourceLayout::layOut(const QTextBlock &line) const
{
    QTextLayout &layout = *line.layout();
    const qreal margin = document()->documentMargin();
    layout.setTextOption(document()->defaultTextOption());
    layout.beginLayout();
    qreal y = 0;
    for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
        part.setLeadingIncluded(true);
        part.setLineWidth(0); // it is as wide as its text
        part.setPosition(QPointF(margin, y));
        y += part.height();
    }
    layout.endLayout();
}

// Half of them, this one not among them. One that is still shown is laid out again when it is drawn.
void SourceLayout::forgetOldest() const
{
    const auto half = m_laidOut.begin() + kMostLaidOut / 2;
    const std::vector<QTextBlock> oldest(m_laidOut.begin(), half);
    m_laidOut.erase(m_laidOut.begin(), half);
    for (const QTextBlock &line : oldest) {
        if (line == m_laidOut.back() || !line.layout()->preeditAreaText().isEmpty())
            continue;
        line.layout()->clearLayout();
        const_cast<SourceLayout *>(this)->setFormats(line, {});
        if (m_forgotten)
            m_forgotten(line);
    }
}

// A line that was the widest may have become shorter. Those that are shown tell their widths again.
void SourceLayout::noteWidth(const QTextBlock &line, qreal width) const
{
    if (width > m_widest || (line == m_widestLine && width < m_widest)) {
        m_widest = width;
        m_widestLine = line;
        emit const_cast<SourceLayout *>(this)->documentSizeChanged(documentSize());
    }
}

QSizeF SourceLayout::documentSize() const
{
    return {m_widest, QPlainTextDocumentLayout::documentSize().height()};
}

void SourceLayout::documentChanged(int from, int removed, int added)
{
    // Whatever else has changed with it counts.
    if (from == m_quietFrom && removed == m_quietLength && added == m_quietLength)
        return;
    if (from == 0 && added >= document()->characterCount() - 1)
        m_widest = 0; // another font
    // Qt's own counts what has gone as if it still stood there, and draws all that is shown anew where that
    // reaches into the next line: for each key, since a line gets its colours as a whole. While there are as
    // many lines as before, those that have changed are the ones with what has come.
    const bool sameLines = std::exchange(m_lines, document()->blockCount()) == document()->blockCount();
    if (!sameLines || document()->findBlock(from) != document()->findBlock(from + added))
        m_laidOut.clear(); // some of them may be gone
    if (sameLines)
        QPlainTextDocumentLayout::documentChanged(from, 0, std::max(1, added));
    else
        QPlainTextDocumentLayout::documentChanged(from, removed, added);
}

} // namespace quillmere
