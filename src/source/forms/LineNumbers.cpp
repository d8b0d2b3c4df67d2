#include "source/forms/LineNumbers.h"

#include "source/forms/SourceBox.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

namespace quillmere {

namespace {

constexpr int kMargin = 6; // pixels left and right of a number
constexpr int kBar = 3;    // pixels

} // namespace

LineNumbers::LineNumbers(SourceBox *box) : QWidget(box), m_box(box)
{
    setObjectName(QStringLiteral("lineNumbers"));
}

int LineNumbers::widthNeeded() const
{
    const int digits = std::max(3, int(QString::number(m_box->blockCount()).size()));
    return digits * m_box->fontMetrics().horizontalAdvance(u'9') + 2 * kMargin + kBar;
}

void LineNumbers::setMarked(LineRange lines)
{
    const int caretLine = m_box->textCursor().blockNumber();
    if (lines.first == m_marked.first && lines.last == m_marked.last && caretLine == m_caretLine)
        return; // as with most keys
    m_marked = lines;
    m_caretLine = caretLine;
    update();
}

void LineNumbers::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QPalette colours = m_box->palette();
    painter.fillRect(event->rect(), colours.alternateBase());
    const int caretLine = m_box->textCursor().blockNumber();
    for (QTextBlock block = m_box->firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRect line =
            m_box->blockBoundingGeometry(block).translated(m_box->contentOffset()).toAlignedRect();
        if (line.top() > event->rect().bottom())
            break;
        if (line.bottom() < event->rect().top())
            continue;
        const int number = block.blockNumber();
        if (number >= m_marked.first && number <= m_marked.last)
            painter.fillRect(width() - kBar, line.top(), kBar, line.height(), colours.highlight());
        painter.setPen(colours.color(number == caretLine ? QPalette::Text : QPalette::PlaceholderText));
        painter.drawText(0, line.top(), width() - kBar - kMargin, line.height(),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(number + 1));
    }
}

} // namespace quillmere
