#include "app/TabStrip.h"

#include <QApplication>
#include <QProxyStyle>
#include <QResizeEvent>
#include <QStyleOption>
#include <QStylePainter>

namespace quillmere {

namespace {

constexpr double kLeastPoints = 5, kStep = 0.5;
constexpr double kRing = 2;    // pixels, around the tab that has the keyboard
constexpr int kBelowTabs = 16; // pixels, further down than any style draws a tab

class NarrowTabs : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        return metric == PM_TabBarTabHSpace ? 8 : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

TabStrip::TabStrip(QWidget *parent) : QTabBar(parent), m_narrow(std::make_unique<NarrowTabs>())
{
    setObjectName(QStringLiteral("TabStrip4"));
    setAccessibleName(tr("Tabs"));
    setStyle(m_narrow.get());
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false); // they would stand below, the strip being as high as the panel
    setElideMode(Qt::ElideNone);
    for (const char *caption :
         {"Theme", "Widget", "Image", "Color", "Lang", "Font", "Keymap", "Panel", "Source", "Check"})
        addTab(QLatin1String(caption));
    fit();
}

TabStrip::~TabStrip() = default;

void TabStrip::setMarked(int tab, bool marked)
{
    if (m_marked.contains(tab) == marked)
        return;
    if (marked)
        m_marked.insert(tab);
    else
        m_marked.remove(tab);
    setTabToolTip(tab, marked ? tr("Not saved") : QString());
    update(tabRect(tab));
}

// The width is given. Where the letters of the system are too large for it, those of the tabs are smaller.
void TabStrip::fit()
{
    QFont font = QApplication::font(this);
    setFont(font);
    const auto needed = [this] {
        int sum = 0;
        for (int tab = 0; tab < count(); ++tab)
            sum += tabSizeHint(tab).width();
        return sum;
    };
    while (needed() > width() && font.pointSizeF() > kLeastPoints) {
        font.setPointSizeF(font.pointSizeF() - kStep);
        setFont(font);
    }
}

void TabStrip::resizeEvent(QResizeEvent *event)
{
    QTabBar::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        fit();
}

void TabStrip::changeEvent(QEvent *event)
{
    QTabBar::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange)
        fit();
}

void TabStrip::paintEvent(QPaintEvent *event)
{
    const QRect selected = tabRect(currentIndex());
    // What changes on a page is drawn on top of this, with each key; the tabs take longer than the key's
    // line.
    if (event->rect().top() <= selected.bottom() + kBelowTabs)
        QTabBar::paintEvent(event);
    for (const int tab : std::as_const(m_marked)) {
        // In the room around the caption, whose place stays.
        const QRect corner = tabRect(tab);
        QPainter star(this);
        star.setPen(palette().color(QPalette::WindowText));
        star.drawText(corner.adjusted(0, 2, -1, 0), Qt::AlignRight | Qt::AlignTop, QStringLiteral("*"));
    }
    // The panel is drawn over the tabs: styles let the selected one reach further down than a tab alone
    // would.
    QStylePainter painter(this);
    QStyleOptionTabWidgetFrame panel;
    panel.initFrom(this);
    panel.shape = QTabBar::RoundedNorth;
    panel.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    panel.rect = rect().adjusted(0, selected.bottom(), 0, 0);
    painter.drawPrimitive(QStyle::PE_FrameTabWidget, panel);
    painter.fillRect(selected.left() + 1, selected.bottom(), selected.width() - 2, 2, palette().highlight());
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), kRing));
        painter.drawRoundedRect(QRectF(selected).adjusted(kRing, kRing, -kRing, 0), kRing, kRing);
    }
}

} // namespace quillmere
