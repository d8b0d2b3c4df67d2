#include "colorpicker/forms/ColourPalette.h"

#include "colorpicker/ColourValue.h"
#include "controls/Named.h"

#include <QColor>
#include <QMouseEvent>
#include <QPainter>

namespace quillmere {

namespace {

constexpr int kHues = 300; // pixels
constexpr int kGreys = 24; // pixels
constexpr int kTall = 211; // pixels; odd, so that one row has the pure hues

QImage picture()
{
    QImage image(kHues + kGreys, kTall, QImage::Format_RGB32);
    for (int y = 0; y < kTall; ++y) {
        const double lightness = 1 - double(y) / (kTall - 1);
        for (int x = 0; x < kHues; ++x)
            image.setPixel(x, y, QColor::fromHslF(float(x) / kHues, 1, float(lightness)).rgb());
        const int grey = qRound(lightness * 255);
        for (int x = kHues; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(grey, grey, grey));
    }
    return image;
}

} // namespace

ColourPalette::ColourPalette(QWidget *parent) : QWidget(parent), m_picture(picture())
{
    named(this, "Col_Palette", tr("Palette"));
    setFixedSize(m_picture.size());
    setCursor(Qt::CrossCursor);
}

void ColourPalette::paintEvent(QPaintEvent *)
{
    QPainter(this).drawImage(0, 0, m_picture);
}

void ColourPalette::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        point(event->position());
}

void ColourPalette::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::LeftButton)
        point(event->position());
}

void ColourPalette::point(const QPointF &place)
{
    const int x = qBound(0, int(place.x()), m_picture.width() - 1);
    const int y = qBound(0, int(place.y()), m_picture.height() - 1);
    const QRgb pixel = m_picture.pixel(x, y);
    emit pointed(colourValue({qRed(pixel), qGreen(pixel), qBlue(pixel)}));
}

} // namespace quillmere
