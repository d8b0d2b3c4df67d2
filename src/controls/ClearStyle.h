#pragma once

#include <QProxyStyle>

namespace quillmere {

// The style of desktops that have none of their own, with marks that are seen on any ground: boxes without a
// tick, and what has the focus, at 3:1 at the least. Buttons have room beside their captions.
class ClearStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ClearStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override;
};

} // namespace quillmere
