#include "stage/forms/StageBar.h"

#include "browser/forms/WebBrowser.h"
#include "controls/Named.h"
#include "controls/Swatch.h"
#include "preview/Zoom.h"
#include "preview/forms/PreviewFrame.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kInset = 8;  // as the browser has in the frame
constexpr int kChip = 12;  // pixels
constexpr int kRest = 60;  // ms
constexpr int kWide = 460; // pixels; a shorter line has no room for what is at the pointer

} // namespace

StageBar::StageBar(PreviewFrame &frame, std::function<QString(const QString &)> nameOf,
                   const QList<QAction *> &switches)
    : QWidget(frame.parentWidget()), m_frame(frame), m_nameOf(std::move(nameOf)),
      cboZoom(named(new QComboBox, "cboZoom", tr("Zoom"))),
      lblPointer(named(new QLabel, "lblPointer", tr("Pointer"))),
      m_chip(new Swatch("swPixel", tr("Colour at the pointer"))),
      lblPixel(named(new QLabel, "lblPixel", tr("Colour at the pointer"))), m_pointed(new QWidget),
      m_switches(new QWidget)
{
    setObjectName(QStringLiteral("stageBar"));
    cboZoom->addItem(tr("Fit"));
    for (const int percent : kZoomSteps)
        cboZoom->addItem(zoomText(percent / 100.0));
    cboZoom->setMaxVisibleItems(cboZoom->count() + 1);
    cboZoom->setFixedHeight(kHeight);
    m_chip->setFixedSize(kChip, kChip);
    m_chip->hide();
    lblPixel->setCursor(Qt::PointingHandCursor);
    lblPixel->setToolTip(tr("Click to copy the code."));
    lblPixel->setTextFormat(Qt::PlainText);
    lblPixel->installEventFilter(this);

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->addWidget(cboZoom);
    line->addWidget(m_pointed);
    line->addStretch();
    line->addWidget(m_switches);
    auto *pointed = new QHBoxLayout(m_pointed);
    pointed->setContentsMargins({});
    pointed->addWidget(lblPointer);
    pointed->addWidget(m_chip);
    pointed->addWidget(lblPixel);
    auto *row = new QHBoxLayout(m_switches);
    row->setContentsMargins({});
    for (QAction *action : switches) {
        auto *button = new QToolButton;
        button->setObjectName(u"cmd" + action->objectName().sliced(3)); // behind "mnu"
        button->setAccessibleName(action->iconText());
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus); // the picture keeps the keyboard
        button->setFixedHeight(kHeight);
        row->addWidget(button);
    }
    lblPointer->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000, 0000")));

    m_soon.setSingleShot(true);
    m_soon.setInterval(kRest);
    connect(&m_soon, &QTimer::timeout, this, &StageBar::showPixel);
    connect(cboZoom, &QComboBox::currentIndexChanged, this, &StageBar::choose);
    connect(cboZoom, &QComboBox::activated, this, &StageBar::choose);
    connect(&frame, &PreviewFrame::viewChanged, this, &StageBar::showZoom);
    connect(&frame, &PreviewFrame::pointerMoved, this, &StageBar::showPointer);
    frame.installEventFilter(this);
    layOut();
    showZoom();
}

void StageBar::layOut()
{
    const QRect frame = m_frame.geometry();
    setGeometry(frame.left() + kInset, frame.bottom() + 1, frame.width() - 2 * kInset, kHeight);
    m_pointed->setVisible(width() >= kWide);
}

bool StageBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_frame && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        layOut();
    else if (watched == lblPixel && event->type() == QEvent::MouseButtonRelease && !m_code.isEmpty())
        QGuiApplication::clipboard()->setText(m_code);
    return QWidget::eventFilter(watched, event);
}

void StageBar::choose(int index)
{
    if (index == 0)
        m_frame.fit();
    else if (const double zoom = zoomOf(cboZoom->itemText(index)); zoom > 0)
        m_frame.setZoom(zoom);
}

// A scale that is none of the steps has an entry for as long as it lasts.
void StageBar::showZoom()
{
    const double zoom = m_frame.zoom();
    const QString text = zoomText(zoom), shown = m_frame.isFitted() ? cboZoom->itemText(0) : text;
    cboZoom->setToolTip(text);
    if (cboZoom->currentText() == shown)
        return;
    const QSignalBlocker blocker(cboZoom);
    for (int i = cboZoom->count() - 1; i > 0; --i) {
        const int percent = qRound(zoomOf(cboZoom->itemText(i)) * 100);
        if (std::find(std::begin(kZoomSteps), std::end(kZoomSteps), percent) == std::end(kZoomSteps))
            cboZoom->removeItem(i);
    }
    if (cboZoom->findText(shown) < 0) {
        int at = 1;
        while (at < cboZoom->count() && zoomOf(cboZoom->itemText(at)) < zoom)
            ++at;
        cboZoom->insertItem(at, shown);
    }
    cboZoom->setCurrentIndex(cboZoom->findText(shown));
}

// On the way to the bar the pointer does not rest, so that the colour to be copied is still there.
void StageBar::showPointer(QPointF point)
{
    m_point = point.toPoint();
    const QPointF place = m_frame.toPage(point);
    const QPoint pixel(qFloor(place.x()), qFloor(place.y()));
    if (!m_frame.wb->rect().contains(m_point)) {
        lblPointer->clear();
        m_soon.stop();
        return;
    }
    lblPointer->setText(QStringLiteral("%1, %2").arg(pixel.x()).arg(pixel.y()));
    m_soon.start();
}

// The browser draws in a child of its own, so that nothing that lies over it is in the way.
void StageBar::showPixel()
{
    QWidget *drawn = m_frame.wb->focusProxy();
    if (!drawn)
        return;
    const QImage pixel = drawn->grab({m_point, QSize(1, 1)}).toImage();
    if (pixel.isNull())
        return;
    const QColor colour = pixel.pixelColor(0, 0);
    m_code = colour.name();
    m_chip->setColour(colour);
    m_chip->show();
    lblPixel->setText(QString(m_code + u' ' + m_nameOf(m_code)).trimmed());
}

} // namespace quillmere
