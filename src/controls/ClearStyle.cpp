#include "controls/ClearStyle.h"

#include "controls/ReadableColours.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace quillmere {

namespace {

constexpr float kEdge = 0.3F;
constexpr float kOn = 0.3F;                        // of the highlight, on a button that is on
constexpr int kBeside = 12;                        // pixels, of a caption
constexpr double kRing = 2, kThin = 1, kRound = 2; // pixels

void drawRing(QPainter *painter, const QRect &rect, const QColor &colour, double width = kRing)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(colour, width));
    const double half = width / 2; // on whole pixels
    painter->drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), kRound, kRound);
    painter->restore();
}

void drawIndicator(QPainter *painter, const QStyleOption *option, bool isRound)
{
    const QColor ground = option->palette.color(QPalette::Base);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(seenOn(ground, option->palette.color(QPalette::Text)), 1));
    const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isRound)
        painter->drawEllipse(edge);
    else
        painter->drawRect(edge);
    painter->restore();
}

// Fusion only darkens it a little, which a dark one hardly shows.
void drawOn(QPainter *painter, const QStyleOption *option)
{
    const QColor ground = option->palette.color(QPalette::Window);
    QColor tint = option->palette.color(QPalette::Highlight);
    tint.setAlphaF(kOn);
    painter->fillRect(option->rect.adjusted(1, 1, -1, -1), tint);
    drawRing(painter, option->rect, focusOn(option->palette, ground), kThin);
}

} // namespace

ClearStyle::ClearStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void ClearStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    if (element == PE_FrameFocusRect) {
        const auto *focus = qstyleoption_cast<const QStyleOptionFocusRect *>(option);
        const QColor ground = focus && focus->backgroundColor.isValid()
                                  ? focus->backgroundColor
                                  : option->palette.color(QPalette::Window);
        drawRing(painter, option->rect, focusOn(option->palette, ground),
                 qobject_cast<const QAbstractItemView *>(widget) ? kThin : kRing);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck)
        drawIndicator(painter, option, false);
    else if (element == PE_IndicatorRadioButton)
        drawIndicator(painter, option, true);
    else if (element == PE_PanelButtonCommand && option->state.testFlag(State_On))
        drawOn(painter, option);
    else if (element == PE_PanelMenu) // on a window of its own colour
        drawRing(painter, option->rect,
                 mixed(option->palette.color(QPalette::Text), option->palette.color(QPalette::Base), kEdge),
                 kThin);
    if (element != PE_FrameLineEdit)
        return;
    const QColor ground = option->palette.color(QPalette::Base);
    if (option->state.testFlag(State_HasFocus))
        drawRing(painter, option->rect, focusOn(option->palette, ground));
    else // a box on a ground of its own colour has an edge all the same
        drawRing(painter, option->rect, mixed(option->palette.color(QPalette::Text), ground, kEdge), kThin);
}

void ClearStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox && option->state.testFlag(State_HasFocus))
        drawRing(painter, option->rect, focusOn(option->palette, option->palette.color(QPalette::Window)));
}

// Fusion gives room to short captions alone.
QSize ClearStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                   const QWidget *widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    return type == CT_PushButton && button && !button->text.isEmpty()
               ? size.expandedTo({contents.width() + 2 * kBeside, 0})
               : size;
}

} // namespace quillmere
