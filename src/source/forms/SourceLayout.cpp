#include "source/forms/SourceLayout.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace quillmere {

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
    if (m_prepare && line.isValid())
        m_prepare(line);
    return QPlainTextDocumentLayout::blockBoundingRect(line);
}

void SourceLayout::documentChanged(int from, int removed, int added)
{
    // Whatever else has changed with it counts.
    if (from == m_quietFrom && removed == m_quietLength && added == m_quietLength)
        return;
    // Qt's own counts what has gone as if it still stood there, and draws all that is shown anew where that
    // reaches into the next line: for each key, since a line gets its colours as a whole. While there are as
    // many lines as before, those that have changed are the ones with what has come.
    const bool sameLines = std::exchange(m_lines, document()->blockCount()) == document()->blockCount();
    if (sameLines)
        QPlainTextDocumentLayout::documentChanged(from, 0, std::max(1, added));
    else
        QPlainTextDocumentLayout::documentChanged(from, removed, added);
}

} // namespace quillmere
