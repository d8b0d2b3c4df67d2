#include "preview/forms/PreviewFrame.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Commands.h"
#include "controls/Twips.h"

#include <QAction>
#include <QChildEvent>
#include <QCoreApplication>
#include <QScrollArea>

namespace quillmere {

namespace {
constexpr int kSide = 240;  // twips of the frame's width that are not browser
constexpr int kAbove = 360; // twips of its height
constexpr int kLeft = 8;    // pixels
constexpr int kTop = 18;    // pixels
} // namespace

PreviewFrame::PreviewFrame(QWidget *parent)
    : CaptionBox(QStringLiteral("frmWb"), parent), wb(new WebBrowser), m_scroll(new QScrollArea(this))
{
    wb->setObjectName(QStringLiteral("wb"));
    wb->setAccessibleName(tr("Preview"));
    wb->setFocusPolicy(Qt::ClickFocus);
    m_scroll->setObjectName(QStringLiteral("previewScroll"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setBackgroundRole(QPalette::Mid);
    m_scroll->setWidgetResizable(false);
    m_scroll->setWidget(wb);
    // The wheel goes to a child that the browser makes when it first needs it.
    wb->installEventFilter(this);
    for (QObject *child : wb->children())
        child->installEventFilter(this);
}

bool PreviewFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ChildAdded)
        static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
    if (event->type() == QEvent::Wheel && m_fixed && wb->size() != m_scroll->size()) {
        QCoreApplication::sendEvent(m_scroll->viewport(), event);
        return true;
    }
    return CaptionBox::eventFilter(watched, event);
}

void PreviewFrame::addCommands(Commands &menu)
{
    menu.on("mnuWwbZ1", [this] { showScreen(Screen::S1024x576); });
    menu.on("mnuWwbZ2", [this] { showScreen(Screen::S1280x720); });
    QAction *fixed = menu.action("mnuWwbZ3");
    fixed->setChecked(m_fixed);
    menu.on("mnuWwbZ3", [this, fixed] {
        m_fixed = fixed->isChecked();
        showScreen(screenOfWidth(toTwips(wb->width())));
        emit fixedChanged(m_fixed);
    });
}

void PreviewFrame::setFrameSize(int width, int height)
{
    resize(toPixels(width), toPixels(height));
    m_scroll->setGeometry(kLeft, kTop, toPixels(width - kSide), toPixels(height - kAbove));
    wb->resize(m_scroll->size());
    // The browser now is as large as the frame; where that is smaller than the screen, the page scrolls in
    // it.
    const TwipSize screen = browserSize(m_screen, true);
    wb->setScrollable(wb->width() < toPixels(screen.width) || wb->height() < toPixels(screen.height));
}

QPointF PreviewFrame::toPage(QPointF point) const
{
    return point + wb->page()->scrollPosition();
}

QPointF PreviewFrame::fromPage(QPointF point) const
{
    return point - wb->page()->scrollPosition();
}

void PreviewFrame::showScreen(Screen screen)
{
    const TwipSize size = browserSize(screen, m_fixed);
    m_screen = screen;
    wb->setScrollable(false);
    wb->resize(toPixels(size.width), toPixels(size.height));
}

} // namespace quillmere
