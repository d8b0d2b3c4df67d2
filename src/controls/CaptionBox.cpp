#include "controls/CaptionBox.h"

#include "rows/ToolTip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace quillmere {

namespace {
constexpr int kTitleMargin = 24;     // pixels that the style needs left and right of a title
constexpr qsizetype kLongest = 5000; // units; no file has a longer path, and laying it out takes long
} // namespace

CaptionBox::CaptionBox(const QString &name, QWidget *parent) : QGroupBox(parent)
{
    setObjectName(name);
}

void CaptionBox::setCaption(const QString &caption)
{
    setTitle(caption);
    setToolTip(plainToolTip(caption));
}

void CaptionBox::setCaptionEnd(int pixels)
{
    m_captionEnd = pixels;
    update();
}

// What is in the frame asks the frame for a tooltip where it has none; the caption is no answer there.
bool CaptionBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip &&
        static_cast<QHelpEvent *>(event)->pos().y() > fontMetrics().height()) {
        event->ignore();
        return true;
    }
    return QGroupBox::event(event);
}

void CaptionBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    option.text = option.fontMetrics.elidedText(title().left(kLongest), Qt::ElideMiddle,
                                                width() - kTitleMargin - m_captionEnd);
    option.text.replace(u'&', QLatin1String("&&")); // in a path it is no mark of a shortcut
    painter.drawComplexControl(QStyle::CC_GroupBox, option);
}

void CaptionBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    emit doubleClicked();
    QGroupBox::mouseDoubleClickEvent(event);
}

} // namespace quillmere
