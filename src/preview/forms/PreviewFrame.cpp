#include "preview/forms/PreviewFrame.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Commands.h"
#include "controls/Twips.h"
#include "preview/Zoom.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/ViewInput.h"

#include <QAction>

namespace quillmere {

namespace {
constexpr int kSide = 240;  // twips of the frame's width that are not browser
constexpr int kAbove = 360; // twips of its height
constexpr int kLeft = 8;    // pixels
constexpr int kTop = 18;    // pixels
} // namespace

PreviewFrame::PreviewFrame(QWidget *parent)
    : CaptionBox(QStringLiteral("frmWb"), parent), wb(new WebBrowser), m_area(new PreviewArea(*wb, this)),
      m_input(new ViewInput(*wb, *m_area, this))
{
    wb->setObjectName(QStringLiteral("wb"));
    wb->setAccessibleName(tr("Preview"));
    wb->setFocusPolicy(Qt::ClickFocus);
    m_area->setObjectName(QStringLiteral("previewScroll"));
    connect(m_area, &PreviewArea::viewChanged, this, &PreviewFrame::viewChanged);
    connect(m_area, &PreviewArea::zoomChanged, this, &PreviewFrame::askExtent);
    connect(wb, &WebBrowser::written, this, &PreviewFrame::askExtent);
    connect(m_input, &ViewInput::pointerMoved, this, &PreviewFrame::pointerMoved);
    connect(m_input, &ViewInput::zoomTurned, this, &PreviewFrame::stepZoom);

    const auto add = [this](const char *name, const QString &text, const QList<QKeySequence> &keys,
                            const std::function<void()> &command) {
        auto *action = new QAction(text, this);
        action->setObjectName(QLatin1String(name));
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, command);
        addAction(action);
    };
    add("zoomIn", tr("Zoom In"), {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
        [this] { stepZoom(1); });
    add("zoomOut", tr("Zoom Out"), {Qt::CTRL | Qt::Key_Minus}, [this] { stepZoom(-1); });
    add("zoomActual", tr("100 %"), {Qt::CTRL | Qt::Key_0}, [this] { setZoom(1); });
    add("zoomFit", tr("Fit"), {Qt::CTRL | Qt::Key_9}, [this] { fit(); });
}

// The browser is told that the pointer has left while it goes; nobody must ask it for anything then.
PreviewFrame::~PreviewFrame()
{
    delete m_input;
    emit goes();
    delete m_area; // while others can still ask which of its events are those of the area
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
    m_area->setRoom({kLeft, kTop, toPixels(width - kSide), toPixels(height - kAbove)});
}

QSize PreviewFrame::pageSize() const
{
    const TwipSize size = browserSize(m_screen, m_fixed);
    return {toPixels(size.width), toPixels(size.height)};
}

QSize PreviewFrame::screenSize() const
{
    const TwipSize size = browserSize(m_screen, true);
    return {toPixels(size.width), toPixels(size.height)};
}

void PreviewFrame::showScreen(Screen screen)
{
    m_screen = screen;
    m_area->showWhole(pageSize());
    askExtent(); // which may be the same page at the same scale
}

void PreviewFrame::startWith(Screen screen)
{
    m_screen = screen;
    m_area->showFitting(pageSize());
}

// Only a page that is not cut off at the screen reaches beyond it.
void PreviewFrame::askExtent()
{
    if (m_fixed)
        return;
    wb->findExtent([this](QSize extent) {
        if (!m_fixed)
            m_area->setExtent(extent);
    });
}

QPointF PreviewFrame::toPage(QPointF point) const
{
    return m_area->toPage(point);
}

QPointF PreviewFrame::fromPage(QPointF point) const
{
    return m_area->fromPage(point);
}

double PreviewFrame::zoom() const
{
    return m_area->zoom();
}

bool PreviewFrame::isFitted() const
{
    return m_area->isFitted();
}

void PreviewFrame::setZoom(double zoom)
{
    m_area->zoomTo(zoom, m_input->pointer().value_or(m_area->middle()));
}

void PreviewFrame::stepZoom(int by)
{
    setZoom(nextZoom(zoom(), by));
}

void PreviewFrame::fit()
{
    m_area->fit();
}

void PreviewFrame::pan(QPoint by)
{
    m_area->pan(by);
}

} // namespace quillmere
