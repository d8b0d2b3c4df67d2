#pragma once

#include <QImage>
#include <QWidget>

namespace quillmere {

// A picture to point at: hue from left to right, lightness from white above to black below, and a strip of
// greys at the right.
class ColourPalette : public QWidget
{
    Q_OBJECT

public:
    explicit ColourPalette(QWidget *parent = nullptr);

signals:
    // The left button was pressed on a pixel or dragged over it; behind the edge the nearest pixel counts.
    // Red in the low byte.
    void pointed(quint32 colour);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void point(const QPointF &place);

    QImage m_picture;
};

} // namespace quillmere
