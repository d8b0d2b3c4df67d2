#include "source/forms/SourceMarks.h"

#include "source/forms/HeldText.h"
#include "source/forms/SourceBox.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTextBlock>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kTick = 3;    // pixels high
constexpr double kWave = 2; // pixels from top to bottom, and half of its length
constexpr QRgb kOnLight[] = {0xc42b1c, 0xb86e00, 0x2f6fc4};
constexpr QRgb kOnDark[] = {0xff6b5e, 0xf0b045, 0x7db4ff};

QColor colourOf(int level, const QPalette &palette)
{
    const bool dark = palette.color(QPalette::Base).lightness() < 128;
    return QColor::fromRgb((dark ? kOnDark : kOnLight)[level]);
}

// As HeldText::toDocument, which looks for the places each time.
int toDocument(qsizetype position, const std::vector<HeldText::Place> &places)
{
    const auto startsBefore = [](const HeldText::Place &place, qsizetype at) { return place.start < at; };
    const auto behind = std::lower_bound(places.begin(), places.end(), position, startsBefore);
    if (behind == places.begin())
        return int(position);
    const HeldText::Place &before = *(behind - 1);
    return position < before.end() ? before.position : int(before.position + 1 + position - before.end());
}

QPainterPath wave(double from, double to, double top)
{
    QPainterPath path({from, top + kWave});
    bool up = true;
    for (double x = from + kWave; x < to + kWave; x += kWave, up = !up)
        path.lineTo(std::min(x, to), top + (up ? 0 : kWave));
    return path;
}

} // namespace

SourceMarks::SourceMarks(SourceBox *box) : QWidget(box), m_box(box)
{
    setObjectName(QStringLiteral("sourceMarks"));
    setAccessibleName(tr("Problems in the source"));
}

void SourceMarks::setDocument(QTextDocument *document)
{
    disconnect(m_following);
    m_following = connect(document, &QTextDocument::contentsChange, this, &SourceMarks::follow);
    m_marks.clear();
    update();
}

void SourceMarks::show(const QList<SourceMark> &marks)
{
    const QString text = m_box->text();
    QList<SourceMark> sorted = marks;
    std::sort(sorted.begin(), sorted.end(),
              [](const SourceMark &a, const SourceMark &b) { return a.start < b.start; });
    const std::vector<HeldText::Place> places = m_box->m_held->places();
    m_marks.clear();
    qsizetype seen = 0, returns = 0; // line ends that count two before, and one in the document
    for (const SourceMark &mark : std::as_const(sorted)) {
        if (mark.start < seen || mark.start >= text.size())
            continue; // of another text
        returns += QStringView(text).sliced(seen, mark.start - seen).count(QStringView(u"\r\n"));
        seen = mark.start;
        qsizetype end = std::min(mark.start + mark.length, text.size());
        const qsizetype lineEnd = text.indexOf(u'\n', mark.start);
        if (lineEnd >= 0 && lineEnd < end)
            end = lineEnd > mark.start && text[lineEnd - 1] == u'\r' ? lineEnd - 1 : lineEnd;
        m_marks.push_back(
            {toDocument(mark.start - returns, places), toDocument(end - returns, places), mark.level});
    }
    update();
    m_box->viewport()->update();
}

void SourceMarks::follow(int from, int removed, int added)
{
    if (removed == added || m_marks.empty())
        return; // mostly colours
    const auto moved = [&](int position) {
        if (position <= from)
            return position;
        return position >= from + removed ? position + added - removed : from;
    };
    for (Mark &mark : m_marks) {
        mark.start = moved(mark.start);
        mark.end = moved(mark.end);
    }
    update();
}

void SourceMarks::drawUnderlines(const QRect &area)
{
    if (m_marks.empty())
        return;
    QPainter painter(m_box->viewport());
    painter.setClipRect(area);
    painter.setRenderHint(QPainter::Antialiasing);
    for (QTextBlock block = m_box->firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF line = m_box->blockBoundingGeometry(block).translated(m_box->contentOffset());
        if (line.top() > area.bottom())
            break;
        const auto startsBefore = [](const Mark &mark, int position) { return mark.start < position; };
        auto mark = std::lower_bound(m_marks.begin(), m_marks.end(), block.position(), startsBefore);
        for (; mark != m_marks.end() && mark->start < block.position() + block.length(); ++mark) {
            const QTextLine row = block.layout()->lineForTextPosition(mark->start - block.position());
            if (!row.isValid())
                continue;
            const int last = std::min(mark->end - block.position(), block.length() - 1);
            const double from = std::max(line.left() + row.cursorToX(mark->start - block.position()), -kWave);
            const double to = std::min(std::max(line.left() + row.cursorToX(last), from + 4 * kWave),
                                       double(area.right()) + kWave);
            painter.setPen(QPen(colourOf(mark->level, m_box->palette()), 1));
            painter.drawPath(wave(from, to, line.top() + row.y() + row.ascent() + 1));
        }
    }
}

int SourceMarks::heightOf(const Mark &mark) const
{
    const int line = m_box->document()->findBlock(mark.start).blockNumber();
    const int visible = m_box->viewport()->height() / std::max(1, m_box->fontMetrics().lineSpacing());
    return int((line + 0.5) * height() / std::max({1, visible, m_box->blockCount()}));
}

// The worst are drawn last, over the others.
void SourceMarks::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_box->palette().alternateBase());
    for (int level = 2; level >= 0; --level) {
        int last = -1;
        for (const Mark &mark : m_marks) {
            const int at = mark.level == level ? heightOf(mark) : last;
            if (at != last)
                painter.fillRect(1, at - kTick / 2, width() - 2, kTick, colourOf(level, m_box->palette()));
            last = at;
        }
    }
}

void SourceMarks::mousePressEvent(QMouseEvent *event)
{
    const auto distance = [&](const Mark &mark) {
        return std::abs(heightOf(mark) - int(event->position().y()));
    };
    const auto nearest = std::min_element(m_marks.begin(), m_marks.end(), [&](const Mark &a, const Mark &b) {
        return distance(a) < distance(b);
    });
    if (nearest == m_marks.end())
        return;
    QTextCursor cursor = m_box->textCursor();
    cursor.setPosition(nearest->start);
    cursor.setPosition(nearest->end, QTextCursor::KeepAnchor);
    m_box->setTextCursor(cursor);
    m_box->centerCursor();
    m_box->setFocus();
}

} // namespace quillmere
