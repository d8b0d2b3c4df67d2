#include "source/forms/FoundMarks.h"

#include "source/forms/SourceBox.h"

#include <QPainter>
#include <QTextBlock>

namespace quillmere {

namespace {

// Grounds that all text is read on, with edges that are seen.
struct Colours
{
    QColor ground, edge;
};
const Colours kOnLight{{255, 190, 0, 90}, {184, 110, 0}}, kOnDark{{255, 200, 60, 32}, {240, 176, 69}};

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
    const Colours &colours = dark ? kOnDark : kOnLight;
    painter.setPen(colours.edge);
    painter.setBrush(colours.ground);
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
            painter.drawRect(QRectF(from, line.top() + row.y(), to - from, row.height())
                                 .toAlignedRect()
                                 .adjusted(0, 0, -1, -1));
        }
    }
}

} // namespace quillmere
