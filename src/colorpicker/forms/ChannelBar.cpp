#include "colorpicker/forms/ChannelBar.h"

namespace quillmere {

ChannelBar::ChannelBar(QWidget *parent) : QScrollBar(Qt::Vertical, parent)
{
    setRange(0, 255);
    setSingleStep(1);
    setPageStep(16);
    setInvertedAppearance(true);
    setInvertedControls(false);
    connect(this, &QScrollBar::actionTriggered, this, &ChannelBar::upIsMore);
}

void ChannelBar::mousePressEvent(QMouseEvent *event)
{
    m_pressed = true;
    QScrollBar::mousePressEvent(event);
}

void ChannelBar::mouseReleaseEvent(QMouseEvent *event)
{
    QScrollBar::mouseReleaseEvent(event);
    m_pressed = false;
}

// The inverted appearance turns the handle around, and not what a press above or below it does.
void ChannelBar::upIsMore(int action)
{
    if (!m_pressed)
        return;
    const auto step = [this](int by) { setSliderPosition(value() + by); };
    switch (action) {
    case SliderSingleStepAdd:
        return step(-singleStep());
    case SliderSingleStepSub:
        return step(singleStep());
    case SliderPageStepAdd:
        return step(-pageStep());
    case SliderPageStepSub:
        return step(pageStep());
    default:
        return;
    }
}

} // namespace quillmere
