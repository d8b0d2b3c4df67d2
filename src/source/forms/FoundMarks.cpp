#include "source/forms/FoundMarks.h"

#include "source/forms/SourceBox.h"

#include <QPainter>
#include <QTextBlock>

namespace quillmere {

namespace {

const QColor kOnLight(255, 190, 0, 100), kOnDark(255, 200, 60, 90);

} // namespace

void FoundMarks::show(const FindText &what)
{
    if (what == m_what)
        return;
    m_what = what;
    m_box->viewport()->update();
}

void FoundMarks::draw(const QRect &area) const
{
    if (m_what.text.isEmpty())
        return;
    QPainter painter(m_box->viewport());
    painter.setClipRect(area);
    const QPalette &palette = m_box->palette();
    const bool dark = palette.color(QPalette::Base).lightness() < 128;
    const QTextCursor caret = m_box->textCursor();
    const qsizetype selected = caret.hasSelection() ? caret.selectionStart() : -1;
    const QColor ground = dark ? kOnDark : kOnLight;
    for (QTextBlock block = m_box->firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF line = m_box->blockBoundingGeometry(block).translated(m_box->contentOffset());
        if (line.top() > area.bottom())
            break;
        if (line.bottom() < area.top() || !block.isVisible())
            continue;
        for (const qsizetype at : findAll(block.text(), m_what)) {
            if (block.position() + at == selected)
                continue; // the selection is its mark
            const QTextLine row = block.layout()->lineForTextPosition(int(at));
            if (!row.isValid())
                continue;
            const double from = line.left() + row.cursorToX(int(at));
            if (from > area.right())
                break;
            const double to = line.left() + row.cursorToX(int(at + m_what.text.size()));
            painter.fillRect(QRectF(from, line.top() + row.y(), to - from, row.height()), ground);
        }
    }
}

} // namespace quillmere
