// Line icons on a grid of 32 units, scaled to the size asked for. Strokes keep clear of the outer two units.
#include "sheets.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace aurora {

namespace {

void lines(QPainter &p, std::initializer_list<QPointF> points)
{
    p.drawPolyline(std::data(points), static_cast<int>(points.size()));
}

void solid(QPainter &p, std::initializer_list<QPointF> points)
{
    p.setBrush(p.pen().color());
    p.drawPolygon(std::data(points), static_cast<int>(points.size()));
    p.setBrush(Qt::NoBrush);
}

void point(QPainter &p, double x, double y, double r)
{
    p.setBrush(p.pen().color());
    p.drawEllipse(QPointF(x, y), r, r);
    p.setBrush(Qt::NoBrush);
}

void tv(QPainter &p)
{
    p.drawRoundedRect(QRectF(4, 7, 24, 16), 2, 2);
    lines(p, {{11, 27}, {21, 27}});
}

void guide(QPainter &p)
{
    p.drawRoundedRect(QRectF(4, 6, 24, 20), 2, 2);
    lines(p, {{4, 12}, {28, 12}});
    lines(p, {{12, 12}, {12, 26}});
    lines(p, {{16, 17}, {24, 17}});
    lines(p, {{16, 21.5}, {21, 21.5}});
}

void recordings(QPainter &p)
{
    p.drawRoundedRect(QRectF(4, 9, 24, 17), 2, 2);
    lines(p, {{8, 5}, {24, 5}});
    solid(p, {{14, 14}, {20, 17.5}, {14, 21}});
}

void radio(QPainter &p)
{
    p.drawRoundedRect(QRectF(4, 12, 24, 15), 2, 2);
    lines(p, {{8, 12}, {22, 5}});
    p.drawEllipse(QPointF(11.5, 19.5), 3.4, 3.4);
    lines(p, {{19, 17}, {24, 17}});
    lines(p, {{19, 22}, {24, 22}});
}

void star(QPainter &p)
{
    QPolygonF shape;
    for (int i = 0; i < 10; ++i) {
        const double r = i % 2 == 0 ? 12 : 5.2;
        const double a = std::numbers::pi * (i / 5.0 - 0.5);
        shape << QPointF(16 + r * std::cos(a), 17 + r * std::sin(a));
    }
    p.drawPolygon(shape);
}

void settings(QPainter &p)
{
    const double knobs[] = {11, 21, 14};
    for (int i = 0; i < 3; ++i) {
        const double y = 8 + 8 * i;
        lines(p, {{5, y}, {knobs[i] - 3, y}});
        lines(p, {{knobs[i] + 3, y}, {27, y}});
        p.drawEllipse(QPointF(knobs[i], y), 3, 3);
    }
}

void info(QPainter &p)
{
    p.drawEllipse(QPointF(16, 16), 12, 12);
    lines(p, {{16, 15}, {16, 22}});
    point(p, 16, 10.4, 0.8);
}

void search(QPainter &p)
{
    p.drawEllipse(QPointF(14, 14), 8.5, 8.5);
    lines(p, {{20.5, 20.5}, {27, 27}});
}

void lock(QPainter &p)
{
    p.drawRoundedRect(QRectF(7, 14, 18, 13), 2, 2);
    p.drawArc(QRectF(10.5, 5, 11, 16), 0, 180 * 16);
    lines(p, {{16, 19}, {16, 22}});
}

void speaker(QPainter &p)
{
    lines(p, {{4, 12.5}, {9, 12.5}, {16, 6.5}, {16, 25.5}, {9, 19.5}, {4, 19.5}, {4, 12.5}});
}

void volume(QPainter &p)
{
    speaker(p);
    p.drawArc(QRectF(14, 10.5, 8, 11), -60 * 16, 120 * 16);
    p.drawArc(QRectF(14, 6, 14, 20), -60 * 16, 120 * 16);
}

void mute(QPainter &p)
{
    speaker(p);
    lines(p, {{20.5, 12.5}, {27.5, 19.5}});
    lines(p, {{27.5, 12.5}, {20.5, 19.5}});
}

void audio(QPainter &p)
{
    lines(p, {{12, 23}, {12, 7}, {25, 5}, {25, 20}});
    p.drawEllipse(QPointF(8.8, 23), 3.2, 3.2);
    p.drawEllipse(QPointF(21.8, 20), 3.2, 3.2);
}

void subtitle(QPainter &p)
{
    p.drawRoundedRect(QRectF(4, 6, 24, 20), 2, 2);
    lines(p, {{8.5, 17}, {17, 17}});
    lines(p, {{21, 17}, {23.5, 17}});
    lines(p, {{8.5, 21.5}, {12, 21.5}});
    lines(p, {{16, 21.5}, {23.5, 21.5}});
}

void clock(QPainter &p)
{
    p.drawEllipse(QPointF(16, 16), 12, 12);
    lines(p, {{16, 9}, {16, 16}, {21, 19}});
}

void disk(QPainter &p)
{
    p.drawEllipse(QRectF(5, 5, 22, 7));
    lines(p, {{5, 8.5}, {5, 23.5}});
    lines(p, {{27, 8.5}, {27, 23.5}});
    p.drawArc(QRectF(5, 12.5, 22, 7), 180 * 16, 180 * 16);
    p.drawArc(QRectF(5, 20, 22, 7), 180 * 16, 180 * 16);
}

void memory(QPainter &p)
{
    p.drawRoundedRect(QRectF(8, 8, 16, 16), 2, 2);
    for (int i = 0; i < 3; ++i) {
        const double at = 11.5 + 4.5 * i;
        lines(p, {{at, 4}, {at, 8}});
        lines(p, {{at, 24}, {at, 28}});
        lines(p, {{4, at}, {8, at}});
        lines(p, {{24, at}, {28, at}});
    }
}

void signal(QPainter &p)
{
    for (int i = 0; i < 4; ++i) {
        lines(p, {{7.0 + 6 * i, 26}, {7.0 + 6 * i, 21.0 - 5 * i}});
    }
}

void question(QPainter &p)
{
    p.drawEllipse(QPointF(16, 16), 12, 12);
    p.drawArc(QRectF(12, 8.8, 8, 8), -80 * 16, 260 * 16);
    lines(p, {{16.3, 17}, {16.3, 19}});
    point(p, 16.3, 22.4, 0.7);
}

void pause(QPainter &p)
{
    lines(p, {{11.5, 8}, {11.5, 24}});
    lines(p, {{20.5, 8}, {20.5, 24}});
}

void rewind(QPainter &p)
{
    solid(p, {{15, 9}, {15, 23}, {5, 16}});
    solid(p, {{26, 9}, {26, 23}, {16, 16}});
}

void forward(QPainter &p)
{
    solid(p, {{6, 9}, {6, 23}, {16, 16}});
    solid(p, {{17, 9}, {17, 23}, {27, 16}});
}

void previous(QPainter &p)
{
    lines(p, {{8, 9}, {8, 23}});
    solid(p, {{23, 9}, {23, 23}, {12, 16}});
}

void next(QPainter &p)
{
    lines(p, {{24, 9}, {24, 23}});
    solid(p, {{9, 9}, {9, 23}, {20, 16}});
}

void record(QPainter &p)
{
    p.setPen(QPen(QColor(255, 107, 107), 2));
    point(p, 16, 16, 7);
}

void check(QPainter &p)
{
    lines(p, {{6, 17}, {13, 24}, {27, 9}});
}
void left(QPainter &p)
{
    lines(p, {{20, 7}, {11, 16}, {20, 25}});
}
void right(QPainter &p)
{
    lines(p, {{12, 7}, {21, 16}, {12, 25}});
}
void dot(QPainter &p)
{
    point(p, 16, 16, 8);
}

// The four coloured keys of the remote control: a lozenge, lit from above.
void colourKey(QPainter &p, const QColor &color)
{
    QLinearGradient body(0, 6, 0, 26);
    body.setColorAt(0, color.lighter(125));
    body.setColorAt(1, color.darker(115));
    p.setPen(Qt::NoPen);
    p.setBrush(body);
    p.drawRoundedRect(QRectF(3, 9, 26, 14), 7, 7);
}

void red(QPainter &p)
{
    colourKey(p, QColor(232, 72, 85));
}
void green(QPainter &p)
{
    colourKey(p, QColor(58, 190, 120));
}
void yellow(QPainter &p)
{
    colourKey(p, QColor(244, 196, 72));
}
void blue(QPainter &p)
{
    colourKey(p, QColor(72, 132, 240));
}

struct Icon
{
    const char16_t *name;
    void (*draw)(QPainter &);
    int size;
};

constexpr Icon icons[] = {
    {u"tv", tv, 32},
    {u"guide", guide, 32},
    {u"recordings", recordings, 32},
    {u"radio", radio, 32},
    {u"star", star, 32},
    {u"star", star, 24},
    {u"settings", settings, 32},
    {u"info", info, 32},
    {u"search", search, 32},
    {u"search", search, 48},
    {u"lock", lock, 32},
    {u"lock", lock, 48},
    {u"volume", volume, 32},
    {u"mute", mute, 48},
    {u"audio", audio, 32},
    {u"subtitle", subtitle, 32},
    {u"clock", clock, 32},
    {u"disk", disk, 32},
    {u"signal", signal, 32},
    {u"memory", memory, 32},
    {u"question", question, 48},
    {u"pause", pause, 32},
    {u"rewind", rewind, 32},
    {u"forward", forward, 32},
    {u"previous", previous, 32},
    {u"next", next, 32},
    {u"record", record, 32},
    {u"check", check, 24},
    {u"left", left, 24},
    {u"right", right, 24},
    {u"dot", dot, 24},
    {u"red", red, 24},
    {u"green", green, 24},
    {u"yellow", yellow, 24},
    {u"blue", blue, 24},
};

} // namespace

void drawIcons(Folder &out)
{
    for (const Icon &icon : icons) {
        QImage picture = blank(icon.size, icon.size);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(icon.size / 32.0, icon.size / 32.0);
        painter.setPen(QPen(palette::ice, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        icon.draw(painter);
        painter.end();
        out.save(picture, QStringLiteral("icon"),
                 QStringLiteral("icon_%1_%2").arg(QString::fromUtf16(icon.name)).arg(icon.size));
    }
}

} // namespace aurora
