#include "stage/forms/StageOverlay.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Named.h"
#include "controls/ReadableColours.h"
#include "controls/Scheme.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/Handles.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace quillmere {

namespace {

// Every line is a dark one with a light one on either side. Each is nine times as light or as dark as the
// other, so that one of the two stands out from any ground.
constexpr QRgb kLight = 0xffffffff;
constexpr QRgb kDark = 0xff101418;
constexpr QRgb kSelected = 0xff0a58d0;
constexpr QRgb kGuide = 0xffc2185b;
constexpr QRgb kBand = 0x280a58d0;
constexpr int kHandle = 7;       // pixels, a side
constexpr int kPad = 4;          // pixels around the text of a label
constexpr int kAround = 6;       // pixels that lines and handles reach beyond a box
constexpr int kGround = 215;     // of 255: how much of what lies beyond the screen is covered
constexpr int kDarkGround = 240; // where a page is mostly lighter than the window
constexpr double kFarOut = 1e6;  // pixels; what lies further out is cut off

QPen pen(QRgb colour, double width, Qt::PenStyle style = Qt::SolidLine)
{
    return QPen(QColor::fromRgba(colour), width, style, Qt::FlatCap, Qt::MiterJoin);
}

void drawBox(QPainter &painter, const QRectF &box, QRgb colour, double width,
             Qt::PenStyle style = Qt::SolidLine)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen(kLight, width + 2));
    painter.drawRect(box);
    painter.setPen(pen(colour, width, style));
    painter.drawRect(box);
}

// On whole pixels: the line of a box is drawn on its outermost pixels.
QRectF lineOf(const QRectF &box)
{
    return QRectF(QPointF(qRound(box.left()), qRound(box.top())),
                  QPointF(std::max(qRound(box.left()), qRound(box.right()) - 1),
                          std::max(qRound(box.top()), qRound(box.bottom()) - 1)))
        .translated(0.5, 0.5);
}

} // namespace

StageOverlay::StageOverlay(PreviewFrame &frame) : QWidget(frame.wb), m_frame(frame)
{
    named(this, "stageOverlay", tr("Outlines of blocks"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, const QWidget *now) {
        const bool isHere = now && (now == m_frame.wb || m_frame.wb->isAncestorOf(now));
        if (std::exchange(m_hasFocus, isHere) != isHere)
            update();
    });
    resize(frame.wb->size());
    show();
}

QRectF StageOverlay::onGlass(const QRectF &box) const
{
    const QRectF all(-kFarOut, -kFarOut, 2 * kFarOut, 2 * kFarOut);
    const auto inside = [&all](QPointF point) {
        return QPointF(std::clamp(point.x(), all.left(), all.right()),
                       std::clamp(point.y(), all.top(), all.bottom()));
    };
    return {inside(m_frame.fromPage(box.topLeft())), inside(m_frame.fromPage(box.bottomRight()))};
}

void StageOverlay::draw(const Sketch &sketch)
{
    if (sketch == m_sketch)
        return;
    m_sketch = sketch;
    drawAgain();
}

void StageOverlay::showFrame(double part, bool shown)
{
    m_frames.removeAll(part);
    if (shown)
        m_frames.append(part);
    update();
}

void StageOverlay::drawFrames(QPainter &painter) const
{
    const QRectF screen(QPointF(0, 0), m_frame.screenSize());
    for (const double part : m_frames) {
        const double x = screen.width() * (1 - part) / 2, y = screen.height() * (1 - part) / 2;
        const QRectF box = lineOf(onGlass(screen.adjusted(x, y, -x, -y)));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(pen(kLight, 1)); // thin: it lies over the picture all the time
        painter.drawRect(box);
        painter.setPen(pen(kDark, 1, Qt::DashLine));
        painter.drawRect(box);
    }
}

void StageOverlay::drawAgain()
{
    if (!m_frames.isEmpty()) {
        m_drawn = rect();
        update();
        return;
    }
    const QRect now = touched(m_sketch);
    update(m_drawn.united(now));
    m_drawn = now;
}

QRect StageOverlay::touched(const Sketch &sketch) const
{
    QRectF all;
    const auto add = [&](const QRectF &box) {
        all |= box.normalized().adjusted(-kAround, -kAround, kAround, kAround);
    };
    for (const QRectF &box : sketch.selected)
        add(onGlass(box));
    if (sketch.hovered)
        add(onGlass(*sketch.hovered));
    if (sketch.band)
        add(onGlass(sketch.band->normalized()));
    for (const Guide &guide : sketch.guides) {
        add(onGlass(QRectF(guide.line.p1(), guide.line.p2())));
        if (guide.distance >= 0)
            add(onGlass(QRectF(guide.text, QSizeF())).adjusted(-60, -30, 60, 30));
    }
    if (!sketch.label.isEmpty())
        add(labelBox(sketch));
    return (all & QRectF(rect())).toAlignedRect();
}

// Above its box, below it where there is no room, and inside where there is none either.
QRectF StageOverlay::labelBox(const Sketch &sketch) const
{
    const QFontMetrics metrics = fontMetrics();
    const QSizeF size(std::min(metrics.horizontalAdvance(sketch.label) + 2 * kPad, width()),
                      metrics.height() + kPad);
    const QRectF box = onGlass(sketch.labelled);
    double top = box.top() - kAround - size.height();
    if (top < 0)
        top = box.bottom() + kAround;
    if (top + size.height() > height())
        top = std::clamp(box.top() + kAround, 0., std::max(0., height() - size.height()));
    return {QPointF(std::clamp(box.left(), 0., std::max(0., width() - size.width())), top), size};
}

void StageOverlay::drawLabel(QPainter &painter, const QString &text, const QRectF &box) const
{
    painter.fillRect(box, QColor::fromRgba(kDark));
    painter.setPen(QColor::fromRgba(kLight));
    painter.drawText(box.adjusted(kPad, 0, -kPad, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text, Qt::ElideRight, int(box.width()) - 2 * kPad + 1));
}

void StageOverlay::drawGuides(QPainter &painter) const
{
    for (const Guide &guide : m_sketch.guides) {
        const QRectF ends = onGlass(QRectF(guide.line.p1(), guide.line.p2()));
        const QLineF line = QLineF(ends.topLeft(), ends.bottomRight()).translated(0.5, 0.5);
        painter.setPen(pen(kLight, 3));
        painter.drawLine(line);
        painter.setPen(pen(kGuide, 1));
        painter.drawLine(line);
    }
    // Blocks of one height meet in three lines: the gap between them is the same in each.
    struct Gap
    {
        qint64 distance;
        bool isAcross;
        int at; // along the line
        bool operator==(const Gap &) const = default;
    };
    QList<Gap> told;
    for (const Guide &guide : m_sketch.guides) {
        if (guide.distance < 0)
            continue;
        const bool isAcross = guide.line.dy() == 0;
        const Gap gap{guide.distance, isAcross, qRound(isAcross ? guide.text.x() : guide.text.y())};
        if (told.contains(gap))
            continue;
        told.append(gap);
        const QString text = QString::number(guide.distance);
        QRectF box(0, 0, fontMetrics().horizontalAdvance(text) + 2 * kPad, fontMetrics().height());
        box.moveCenter(onGlass(QRectF(guide.text, QSizeF())).topLeft());
        if (box.intersects(rect())) // a number that is cut off is another number
            box.moveLeft(std::clamp(box.left(), 0., std::max(0., width() - box.width())));
        drawLabel(painter, text, box);
    }
}

// What lies beyond the screen is still to be seen, as on a pasteboard, and the screen's edge is, whatever the
// window in it leaves free.
void StageOverlay::drawAround(QPainter &painter, const QRegion &region) const
{
    const QRectF exact = onGlass(QRectF(QPointF(), m_frame.screenSize()));
    // The line is drawn on what shares a pixel with the page beyond the screen.
    const QRect screen(exact.topLeft().toPoint(),
                       QPoint(qFloor(exact.right()) - 1, qFloor(exact.bottom()) - 1));
    QColor ground = palette().color(QPalette::Window);
    ground.setAlpha(isDark(palette()) ? kDarkGround : kGround);
    for (const QRect &part : region - screen)
        painter.fillRect(part, ground);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(screen.right() + 1, screen.top(), screen.right() + 1, screen.bottom() + 1);
    painter.drawLine(screen.left(), screen.bottom() + 1, screen.right() + 1, screen.bottom() + 1);
}

void StageOverlay::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    drawAround(painter, event->region());
    drawFrames(painter);
    if (m_sketch.hovered)
        drawBox(painter, lineOf(onGlass(*m_sketch.hovered)), kDark, 1, Qt::DashLine);
    for (qsizetype i = m_sketch.selected.size() - 1; i >= 0; --i)
        drawBox(painter, lineOf(onGlass(m_sketch.selected[i])), kSelected,
                i == 0 && m_sketch.selected.size() > 1 ? 2 : 1);
    if (m_sketch.hasHandles && !m_sketch.selected.isEmpty()) {
        for (const Handle &handle : handlesOf(onGlass(m_sketch.selected.first()))) {
            QRectF box(0, 0, kHandle, kHandle);
            box.moveCenter(handle.at);
            painter.fillRect(box.adjusted(-1, -1, 1, 1), QColor::fromRgba(kLight));
            painter.fillRect(box, QColor::fromRgba(kSelected));
            painter.fillRect(box.adjusted(2, 2, -2, -2), QColor::fromRgba(kLight));
        }
    }
    drawGuides(painter); // over the handles, which would hide the numbers
    if (m_sketch.band) {
        const QRectF band = lineOf(onGlass(m_sketch.band->normalized()));
        painter.fillRect(band, QColor::fromRgba(kBand));
        drawBox(painter, band, kDark, 1);
    }
    if (!m_sketch.label.isEmpty())
        drawLabel(painter, m_sketch.label, labelBox(m_sketch));
    if (m_hasFocus)
        drawFocus(painter);
}

// The picture under the ring may have any colours; the ground around it, the window's.
void StageOverlay::drawFocus(QPainter &painter) const
{
    const QWidget *port = m_frame.area().viewport();
    const QRectF edge = QRect(-mapTo(port, QPoint()), port->size()) & rect();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen(kLight, 1));
    painter.drawRect(edge.adjusted(2.5, 2.5, -2.5, -2.5));
    painter.setPen(QPen(focusOn(palette(), palette().color(QPalette::Window)), 2, Qt::SolidLine, Qt::FlatCap,
                        Qt::MiterJoin));
    painter.drawRect(edge.adjusted(1, 1, -1, -1));
}

} // namespace quillmere
