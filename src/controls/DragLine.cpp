#include "controls/DragLine.h"

#include "controls/Named.h"
#include "controls/ReadableColours.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace quillmere {

namespace {
constexpr int kSeen = 2;  // pixels across
constexpr int kGrip = 28; // pixels along, of what is seen while the pointer is elsewhere
} // namespace

DragLine::DragLine(Qt::Orientation orientation, const char *name, const QString &tip, QWidget *parent)
    : QWidget(parent), m_orientation(orientation)
{
    named(this, name, tip);
    setToolTip(tip);
    setCursor(isUpright() ? Qt::SplitHCursor : Qt::SplitVCursor);
}

void DragLine::paintEvent(QPaintEvent *)
{
    const bool isLit = m_isDragged || underMouse();
    const int length = isUpright() ? height() : width(), seen = isLit ? length : std::min(length, kGrip);
    const int along = (length - seen) / 2, across = (kThick - kSeen) / 2;
    QPainter(this).fillRect(
        isUpright() ? QRect(across, along, kSeen, seen) : QRect(along, across, seen, kSeen),
        isLit ? palette().color(QPalette::Highlight)
              : seenOn(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));
}

void DragLine::enterEvent(QEnterEvent *)
{
    update();
}

void DragLine::leaveEvent(QEvent *)
{
    update();
}

void DragLine::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDragged = true;
    m_grip = (isUpright() ? event->position().toPoint().x() : event->position().toPoint().y()) - kThick / 2;
    update();
}

void DragLine::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = mapToParent(event->position().toPoint());
    if (m_isDragged)
        emit dragged((isUpright() ? at.x() : at.y()) - m_grip);
}

void DragLine::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !std::exchange(m_isDragged, false))
        return;
    update();
    emit dropped();
}

void DragLine::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit doubleClicked();
}

} // namespace quillmere
