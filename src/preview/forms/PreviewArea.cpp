#include "preview/forms/PreviewArea.h"

#include "browser/forms/WebBrowser.h"
#include "controls/ReadableColours.h"
#include "preview/Zoom.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <utility>

namespace quillmere {

namespace {
constexpr int kScrollStep = 20; // pixels
constexpr float kGround = 0.1F; // of the text's colour
} // namespace

PreviewArea::PreviewArea(WebBrowser &browser, QWidget *parent)
    : QAbstractScrollArea(parent), m_browser(browser)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // the browser has it
    takeColours();
    viewport()->setAutoFillBackground(true);
    browser.setParent(viewport());
}

void PreviewArea::showWhole(QSize page)
{
    m_page = page;
    m_extent = {};
    m_choice = Choice::Size;
    m_isFitted = false;
    m_zoom = 1;
    setBrowserSize(page);
    scrollTo({});
}

void PreviewArea::showFitting(QSize page)
{
    showWhole(page);
    if (room().width() >= page.width() && room().height() >= page.height())
        return;
    m_choice = Choice::Room;
    fitToRoom();
}

void PreviewArea::setRoom(const QRect &room)
{
    setGeometry(room);
    if (m_choice == Choice::Size)
        m_choice = Choice::Room;
    fitToRoom();
}

// To be called again whenever the room or what is to be seen in it has changed.
void PreviewArea::fitToRoom()
{
    const bool isLarger = room().width() < m_page.width() || room().height() < m_page.height();
    m_isFitted = m_choice == Choice::Fit || (m_choice == Choice::Room && isLarger);
    if (m_isFitted)
        m_zoom = fittingZoom(m_page, room());
    else if (m_choice == Choice::Room)
        m_zoom = 1;
    if (m_choice != Choice::Size)
        setBrowserSize(movesBrowser() ? size().expandedTo(m_page) : size());
    scrollTo(offset());
}

void PreviewArea::setExtent(QSize extent)
{
    if (m_extent == extent)
        return;
    m_extent = extent;
    scrollTo(offset());
}

void PreviewArea::setMargin(int pixels)
{
    setViewportMargins(pixels, pixels, 0, 0);
    fitToRoom();
}

void PreviewArea::fit()
{
    m_choice = Choice::Fit;
    fitToRoom();
}

void PreviewArea::zoomTo(double zoom, QPointF anchor)
{
    const QPointF page = toPage(anchor), place = anchor + m_browser.pos();
    m_choice = Choice::Zoom;
    m_zoom = qBound(kLeastZoom, zoom, kMostZoom);
    {
        const QScopedValueRollback settling(m_isSettling, true);
        fitToRoom();
    }
    scrollTo((page * m_zoom - place).toPoint());
}

bool PreviewArea::pan(QPoint by)
{
    const QPoint before = offset();
    scrollTo(before + by);
    return offset() != before;
}

QPointF PreviewArea::middle() const
{
    return QRectF(viewport()->rect().translated(-m_browser.pos()).intersected(m_browser.rect())).center();
}

QPointF PreviewArea::toPage(QPointF point) const
{
    return (point + m_pan + m_browser.page()->scrollPosition()) / m_zoom;
}

QPointF PreviewArea::fromPage(QPointF point) const
{
    return point * m_zoom - m_pan - m_browser.page()->scrollPosition();
}

void PreviewArea::setBrowserSize(QSize size)
{
    const QScopedValueRollback settling(m_isSettling, true);
    m_browser.resize(size);
}

QSize PreviewArea::room() const
{
    const QMargins margins = viewportMargins();
    return size() - QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

bool PreviewArea::movesBrowser() const
{
    return m_choice == Choice::Size || (m_choice == Choice::Zoom && m_zoom == 1);
}

// All that can be brought into sight, in pixels of the browser. What the margins and the scroll bars hide of
// a browser that has got the room is no reason to move it.
QSize PreviewArea::contents() const
{
    const QSize page = m_page.expandedTo(m_extent) * m_zoom;
    return m_choice == Choice::Size ? page.expandedTo(m_browser.size()) : page;
}

QPoint PreviewArea::offset() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void PreviewArea::setBars()
{
    // A browser of the size that was chosen may be smaller than the room.
    const QSize glass = movesBrowser() ? m_browser.size() : size();
    const QSize all = contents(), most = room().boundedTo(glass);
    const bool fits = m_isFitted || (all.width() <= most.width() && all.height() <= most.height());
    const QSize seen = fits ? most : viewport()->size().boundedTo(glass);
    const auto set = [](QScrollBar *bar, int length, int page) {
        bar->setRange(0, qMax(0, length - page));
        bar->setPageStep(page);
        bar->setSingleStep(kScrollStep);
    };
    set(horizontalScrollBar(), fits ? 0 : all.width(), seen.width());
    set(verticalScrollBar(), fits ? 0 : all.height(), seen.height());
}

void PreviewArea::scrollTo(QPoint offset)
{
    {
        const QScopedValueRollback settling(m_isSettling, true);
        setBars();
        setBars(); // a bar that has come takes of the room of the other
        horizontalScrollBar()->setValue(offset.x());
        verticalScrollBar()->setValue(offset.y());
    }
    settle();
}

void PreviewArea::settle()
{
    if (m_isSettling)
        return;
    const QPoint at = offset();
    const QSize beyond = movesBrowser() ? m_browser.size() - viewport()->size() : QSize();
    const QPoint moved(qBound(0, at.x(), qMax(0, beyond.width())),
                       qBound(0, at.y(), qMax(0, beyond.height())));
    m_pan = at - moved;
    m_browser.move(-moved);
    m_browser.setView({m_zoom, m_pan, m_page});
    emit viewChanged();
    if (std::exchange(m_told, m_zoom) != m_zoom)
        emit zoomChanged();
}

// Quiet: between the window and the picture, and of the window's own colour.
void PreviewArea::takeColours()
{
    QPalette own = viewport()->palette();
    const QColor ground =
        mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), kGround);
    own.setColor(QPalette::Window, ground);
    viewport()->setPalette(own);
}

void PreviewArea::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeColours();
}

void PreviewArea::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (!m_isSettling)
        scrollTo(offset());
}

void PreviewArea::scrollContentsBy(int, int)
{
    settle();
}

} // namespace quillmere
