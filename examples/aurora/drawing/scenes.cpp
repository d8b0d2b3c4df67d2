// The programme pictures: invented places, each drawn at every size it is shown in. Coordinates are shares of
// the picture, so that a thumbnail is the same scene and not a cut of it.
#include "sheets.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace aurora {

namespace {

// A ridge or shore: filled from its line down to the bottom of the picture.
void ridge(QPainter &painter, const QSize &size, double base, double swing, double pace, int seed,
           const QBrush &brush)
{
    QPainterPath path;
    path.moveTo(0, size.height());
    for (int i = 0; i <= 240; ++i) {
        const double u = i / 240.0;
        const double rough = 0.72 * wave(u * pace, seed) + 0.21 * wave(u * pace * 3.1, seed + 1) +
                             0.07 * wave(u * pace * 9.7, seed + 2);
        path.lineTo(u * size.width(), (base - swing * (rough - 0.5)) * size.height());
    }
    path.lineTo(size.width(), size.height());
    path.closeSubpath();
    painter.fillPath(path, brush);
}

QImage dusk(int width, int height, const QColor &top, const QColor &middle, const QColor &bottom)
{
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        const double v = (y + 0.5) / height;
        const Light light = v < 0.5 ? blend(lightOf(top), lightOf(middle), v / 0.5)
                                    : blend(lightOf(middle), lightOf(bottom), (v - 0.5) / 0.5);
        for (int x = 0; x < width; ++x) {
            line[x] = rounded(light, x, y);
        }
    }
    return picture;
}

void glow(QPainter &painter, double x, double y, double radius, const QColor &color)
{
    QRadialGradient light(x, y, radius);
    light.setColorAt(0, color);
    light.setColorAt(1, faded(color, 0));
    painter.fillRect(QRectF(x - radius, y - radius, 2 * radius, 2 * radius), light);
}

// What stands above the shore, upside down, darker, and torn by ripples that widen towards the viewer.
void mirrored(QImage &picture, int shore)
{
    const QImage above = picture.copy();
    const int depth = picture.height() - shore;
    for (int y = 0; y < depth; ++y) {
        const double near = static_cast<double>(y) / depth;
        const int source = std::max(0, shore - 1 - static_cast<int>(y * 1.35));
        const auto *from = reinterpret_cast<const QRgb *>(above.constScanLine(source));
        auto *to = reinterpret_cast<QRgb *>(picture.scanLine(shore + y));
        const double pull = (wave(y * 0.42, 501) - 0.5) * (2 + 16 * near);
        const double dim = 0.66 - 0.30 * near + 0.10 * (wave(y * 0.55, 502) - 0.5);
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb p = from[std::clamp(x + static_cast<int>(pull), 0, picture.width() - 1)];
            to[x] = rounded(
                {qRed(p) / 255.0 * dim, qGreen(p) / 255.0 * dim + 0.008, qBlue(p) / 255.0 * dim + 0.02}, x,
                y);
        }
    }
}

void cabin(QPainter &painter, double x, double y, double s)
{
    QPainterPath house;
    house.moveTo(x, y);
    house.lineTo(x, y - 0.55 * s);
    house.lineTo(x + 0.6 * s, y - 1.1 * s);
    house.lineTo(x + 1.2 * s, y - 0.55 * s);
    house.lineTo(x + 1.2 * s, y);
    house.closeSubpath();
    glow(painter, x + 0.42 * s, y - 0.3 * s, 1.3 * s, QColor(255, 190, 90, 70));
    painter.fillPath(house, QColor(24, 18, 22));
    // Snow on the roof tells the house from its own reflection.
    const QPointF roof[] = {
        {x - 0.1 * s, y - 0.46 * s}, {x + 0.6 * s, y - 1.1 * s}, {x + 1.3 * s, y - 0.46 * s}};
    painter.setPen(QPen(QColor(98, 126, 160), 0.08 * s, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(roof, 3);
    painter.setPen(Qt::NoPen);
    painter.fillRect(QRectF(x + 0.28 * s, y - 0.44 * s, 0.26 * s, 0.28 * s), QColor(255, 214, 130));
}

void fir(QPainter &painter, double x, double foot, double h, const QColor &color)
{
    QPainterPath tree;
    tree.moveTo(x, foot - h);
    for (int i = 1; i <= 4; ++i) {
        const double y = foot - h + h * i / 4.2;
        tree.lineTo(x + h * 0.055 * i, y);
        tree.lineTo(x + h * 0.030 * i, y - h * 0.02);
    }
    tree.lineTo(x, foot);
    for (int i = 4; i >= 1; --i) {
        const double y = foot - h + h * i / 4.2;
        tree.lineTo(x - h * 0.030 * i, y - h * 0.02);
        tree.lineTo(x - h * 0.055 * i, y);
    }
    tree.closeSubpath();
    painter.fillPath(tree, color);
}

QImage forest(int width, int height)
{
    QImage picture = dusk(width, height, QColor(26, 60, 84), QColor(86, 140, 148), QColor(170, 200, 186));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    glow(painter, width * 0.64, height * 0.34, height * 0.55, QColor(250, 244, 214, 150));
    for (int layer = 0; layer < 4; ++layer) {
        const double near = layer / 3.0;
        const QColor color =
            QColor::fromRgbF(static_cast<float>(0.32 - 0.29 * near), static_cast<float>(0.50 - 0.39 * near),
                             static_cast<float>(0.52 - 0.38 * near));
        const double foot = 0.62 + 0.15 * layer;
        ridge(painter, picture.size(), foot - 0.02, 0.06, 3, 40 + layer, color);
        const int trees = 34 - 7 * layer;
        for (int i = 0; i < trees; ++i) {
            const double u = (i + 0.9 * wave(i, 60 + layer)) / trees;
            const double h = (0.20 + 0.07 * layer) * (0.7 + 0.6 * wave(i + 0.5, 80 + layer));
            fir(painter, u * width, (foot + 0.02) * height, h * height, color);
        }
    }
    return picture;
}

QImage harbour(int width, int height)
{
    QImage picture = dusk(width, height, QColor(34, 28, 84), QColor(176, 86, 128), QColor(255, 180, 112));
    const int shore = static_cast<int>(height * 0.66);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        glow(painter, width * 0.30, height * 0.62, height * 0.50, QColor(255, 226, 150, 190));
        ridge(painter, picture.size(), 0.60, 0.12, 4, 90, QColor(92, 52, 104));
        for (int i = 0; i < 14; ++i) {
            const double w = 0.045 + 0.025 * wave(i, 91);
            const double x = 0.30 + i * 0.052;
            const double top = 0.46 + 0.12 * wave(i + 0.5, 92);
            QPainterPath house;
            house.moveTo(x * width, shore);
            house.lineTo(x * width, top * height);
            house.lineTo((x + w / 2) * width, (top - 0.07) * height);
            house.lineTo((x + w) * width, top * height);
            house.lineTo((x + w) * width, shore);
            painter.fillPath(house, QColor(38 + 5 * (i % 3), 24, 58 + 6 * (i % 2)));
            for (int k = 0; k < 4; ++k) {
                if (wave(i * 4 + k, 93) > 0.42) {
                    painter.fillRect(QRectF((x + w * (0.2 + 0.38 * (k % 2))) * width,
                                            (top + 0.03 + 0.07 * (k / 2)) * height, w * 0.2 * width,
                                            0.035 * height),
                                     QColor(255, 214, 140));
                }
            }
        }
    }
    mirrored(picture, shore);
    return picture;
}

QImage dunes(int width, int height)
{
    QImage picture = dusk(width, height, QColor(48, 30, 74), QColor(206, 98, 74), QColor(255, 196, 120));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    glow(painter, width * 0.66, height * 0.50, height * 0.62, QColor(255, 220, 150, 170));
    painter.setBrush(QColor(255, 238, 196));
    painter.drawEllipse(QPointF(width * 0.66, height * 0.50), height * 0.10, height * 0.10);
    const QColor light[] = {QColor(196, 96, 72), QColor(150, 62, 62), QColor(96, 38, 56), QColor(48, 22, 44)};
    for (int i = 0; i < 4; ++i) {
        QLinearGradient sand(0, 0, width, height * 0.4);
        sand.setColorAt(0, light[i].darker(125));
        sand.setColorAt(1, light[i].lighter(125));
        ridge(painter, picture.size(), 0.62 + 0.11 * i, 0.26, 1.6 + 0.5 * i, 120 + 3 * i, sand);
    }
    return picture;
}

// Ribs and panes of the greenhouse, one half arch after the other.
void greenhouse(QPainter &painter, const QRectF &box)
{
    QPainterPath shell;
    shell.moveTo(box.bottomLeft());
    shell.lineTo(box.left(), box.top() + box.height() * 0.5);
    shell.quadTo(QPointF(box.left() + box.width() * 0.06, box.top()), QPointF(box.center().x(), box.top()));
    shell.quadTo(QPointF(box.right() - box.width() * 0.06, box.top()),
                 QPointF(box.right(), box.top() + box.height() * 0.5));
    shell.lineTo(box.bottomRight());
    shell.closeSubpath();
    QLinearGradient inside(0, box.top(), 0, box.bottom());
    inside.setColorAt(0, QColor(255, 240, 200, 120));
    inside.setColorAt(1, QColor(255, 190, 96, 230));
    painter.fillPath(shell, inside);
    painter.save();
    painter.setClipPath(shell);
    painter.setPen(QPen(QColor(30, 44, 52, 210), std::max(1.0, box.height() * 0.016)));
    for (int i = 0; i <= 12; ++i) {
        const double x = box.left() + box.width() * i / 12;
        painter.drawLine(QPointF(x, box.bottom()), QPointF((x + box.center().x() * 0.25) / 1.25, box.top()));
    }
    for (int i = 1; i < 4; ++i) {
        const double y = box.top() + box.height() * i / 4;
        painter.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
    }
    painter.restore();
    painter.strokePath(shell, QPen(QColor(24, 36, 46), std::max(1.0, box.height() * 0.03)));
}

QImage orchard(int width, int height)
{
    QImage picture = dusk(width, height, QColor(20, 52, 92), QColor(96, 138, 150), QColor(255, 206, 140));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    glow(painter, width * 0.5, height * 0.66, height * 0.7, QColor(255, 224, 160, 170));
    ridge(painter, picture.size(), 0.66, 0.16, 3.4, 150, QColor(70, 104, 112));
    ridge(painter, picture.size(), 0.76, 0.08, 2.2, 153, QColor(40, 72, 72));
    greenhouse(painter, QRectF(width * 0.24, height * 0.36, width * 0.52, height * 0.46));
    for (int i = 0; i < 9; ++i) {
        const double u = i < 5 ? -0.02 + 0.062 * i : 0.76 + 0.062 * (i - 5);
        const double r = height * (0.085 + 0.03 * wave(i, 160));
        const QPointF top(u * width, height * (0.70 - 0.03 * wave(i, 161)));
        painter.fillRect(QRectF(top.x() - r * 0.10, top.y(), r * 0.2, height * 0.16), QColor(18, 30, 30));
        painter.setBrush(QColor(22, 52, 46));
        painter.drawEllipse(top, r, r);
        painter.setBrush(QColor(240, 120, 84));
        painter.drawEllipse(top + QPointF(-r * 0.3, r * 0.1), r * 0.11, r * 0.11);
        painter.drawEllipse(top + QPointF(r * 0.35, -r * 0.2), r * 0.11, r * 0.11);
    }
    ridge(painter, picture.size(), 0.84, 0.04, 5, 156, QColor(16, 36, 34));
    return picture;
}

QImage vinyl(int width, int height)
{
    QImage picture = sky(width, height, 1.0);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle(width / 2.0, height / 2.0);
    const double radius = height * 0.40;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(6, 8, 16));
    painter.drawEllipse(middle, radius, radius);
    painter.setBrush(Qt::NoBrush);
    for (int i = 0; i < 26; ++i) {
        const double r = radius * (0.40 + 0.58 * i / 26);
        painter.setPen(QPen(faded(palette::ice, 0.03 + 0.07 * wave(i, 170)), 1));
        painter.drawEllipse(middle, r, r);
    }
    QConicalGradient shine(middle, 35);
    for (int i = 0; i <= 4; ++i) {
        shine.setColorAt(i / 4.0, faded(palette::ice, 0));
        shine.setColorAt(std::min(1.0, i / 4.0 + 0.06),
                         faded(palette::ice, i % 2 == 0 && i < 4 ? 0.16 : 0.0));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawEllipse(middle, radius, radius);
    painter.setBrush(palette::teal);
    painter.drawEllipse(middle, radius * 0.36, radius * 0.36);
    painter.setBrush(palette::accent);
    painter.drawPie(
        QRectF(middle.x() - radius * 0.36, middle.y() - radius * 0.36, radius * 0.72, radius * 0.72), 20 * 16,
        140 * 16);
    painter.setBrush(palette::night);
    painter.drawEllipse(middle, radius * 0.05, radius * 0.05);
    return picture;
}

} // namespace

QImage lake(int width, int height)
{
    QImage picture = sky(width, height, 1.25);
    const int shore = static_cast<int>(height * 0.62);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        ridge(painter, picture.size(), 0.52, 0.24, 5, 21, QColor(18, 42, 70));
        ridge(painter, picture.size(), 0.58, 0.13, 7, 24, QColor(11, 26, 48));
        ridge(painter, picture.size(), 0.615, 0.03, 12, 27, QColor(6, 14, 28));
        for (int i = 0; i < 30; ++i) {
            const double u = i < 17 ? 0.012 * i : 0.80 + 0.016 * (i - 17);
            fir(painter, u * width, shore + 1, height * (0.07 + 0.09 * wave(i, 30)), QColor(5, 11, 23));
        }
        cabin(painter, width * 0.245, shore, height * 0.06);
    }
    mirrored(picture, shore);
    return picture;
}

void drawScenes(Folder &out)
{
    const struct
    {
        const char16_t *name;
        QImage (*draw)(int, int);
        int width;
        int height;
    } pictures[] = {{u"art_lake", lake, 678, 264},       {u"art_lake", lake, 128, 72},
                    {u"art_forest", forest, 128, 72},    {u"art_harbour", harbour, 128, 72},
                    {u"art_dunes", dunes, 128, 72},      {u"art_orchard", orchard, 128, 72},
                    {u"art_orchard", orchard, 184, 102}, {u"art_orchard", orchard, 374, 208},
                    {u"art_vinyl", vinyl, 320, 320},     {u"art_forest", forest, 374, 208}};
    for (const auto &p : pictures) {
        out.save(p.draw(p.width, p.height), QStringLiteral("art"),
                 sized(QString::fromUtf16(p.name), p.width, p.height));
    }
}

} // namespace aurora
