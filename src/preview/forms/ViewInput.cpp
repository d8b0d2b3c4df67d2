#include "preview/forms/ViewInput.h"

#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewArea.h"

#include <QApplication>
#include <QWheelEvent>

#include <utility>

namespace quillmere {

namespace {
constexpr int kNotch = 120; // eighths of a degree
constexpr int kLine = 60;   // pixels a notch
} // namespace

// The browser makes children when it first needs them, and others lay theirs over it; whoever comes last
// watches first. Only the application's own filter comes before all of them.
ViewInput::ViewInput(WebBrowser &browser, PreviewArea &area, QObject *parent)
    : QObject(parent), m_browser(browser), m_area(area)
{
    qApp->installEventFilter(this);
}

// Nothing is asked of the object itself: the page has some of its own, whose classes are built without what
// tells a type.
const QWidget *ViewInput::partOfBrowser(const QObject *watched) const
{
    if (watched == &m_browser)
        return &m_browser;
    for (const QWidget *inside : m_browser.findChildren<QWidget *>()) {
        if (inside == watched)
            return m_browser.isAncestorOf(inside) ? inside : nullptr;
    }
    return nullptr;
}

bool ViewInput::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    switch (type) {
    case QEvent::Wheel:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::Leave:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::FocusOut:
        break;
    default:
        return false;
    }
    const QWidget *on = partOfBrowser(watched);
    if (!on)
        return false;
    switch (type) {
    case QEvent::Wheel:
        return turn(*on, *static_cast<QWheelEvent *>(event));
    case QEvent::Leave:
        if (on == &m_browser && !m_drags)
            setPointer({});
        return false;
    case QEvent::FocusOut:
        setHand(false, m_drags);
        return false;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() != Qt::Key_Space || (type == QEvent::KeyPress && key->modifiers() != Qt::NoModifier))
            return false;
        if (!key->isAutoRepeat())
            setHand(type == QEvent::KeyPress, m_drags);
        return true;
    }
    default:
        return mouse(*on, *static_cast<QMouseEvent *>(event));
    }
}

bool ViewInput::turn(const QWidget &on, QWheelEvent &event)
{
    setPointer(on.mapTo(&m_browser, event.position()));
    if (event.modifiers() & Qt::ControlModifier) {
        m_turned += event.angleDelta().y();
        const int notches = std::exchange(m_turned, m_turned % kNotch) / kNotch;
        for (int i = 0; i < qAbs(notches); ++i)
            emit zoomTurned(notches > 0 ? 1 : -1);
        event.accept();
        return true;
    }
    QPoint by = event.pixelDelta().isNull() ? event.angleDelta() * kLine / kNotch : event.pixelDelta();
    if (event.modifiers() & Qt::ShiftModifier)
        by = by.transposed();
    event.setAccepted(m_area.pan(-by)); // what is around has its own use for a turn that does nothing here
    return true;
}

bool ViewInput::mouse(const QWidget &on, QMouseEvent &event)
{
    const bool begins =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    if (begins && !m_drags &&
        (event.button() == Qt::MiddleButton || (m_space && event.button() == Qt::LeftButton))) {
        m_last = event.globalPosition();
        setHand(m_space, true);
        return true;
    }
    if (m_drags) {
        const QPoint by = (m_last - event.globalPosition()).toPoint();
        m_last -= by;
        m_area.pan(by);
        if (event.type() == QEvent::MouseButtonRelease)
            setHand(m_space, false);
        return true;
    }
    setPointer(on.mapTo(&m_browser, event.position()));
    return m_space;
}

void ViewInput::setPointer(std::optional<QPointF> point)
{
    if (m_pointer == point)
        return;
    m_pointer = point;
    emit pointerMoved(point.value_or(QPointF(-1, -1)));
}

// The hand shows for as long as it is one.
void ViewInput::setHand(bool space, bool drags)
{
    const bool was = m_space || m_drags;
    m_space = space;
    m_drags = drags;
    if (was)
        QGuiApplication::restoreOverrideCursor();
    if (m_space || m_drags)
        QGuiApplication::setOverrideCursor(m_drags ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

} // namespace quillmere
