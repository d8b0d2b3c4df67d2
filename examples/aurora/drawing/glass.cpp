// Panels, rows, keys and bars. The receiver never scales a single picture, so each stands here in the very
// size of the widget that shows it.
#include "sheets.h"

#include <QLinearGradient>
#include <QPainter>
#include <QSize>

#include <initializer_list>

namespace aurora {

namespace {

using Sizes = std::initializer_list<QSize>;

// Lines of one pixel along the inside; corners stay square because the widgets are.
void edge(QPainter &painter, const QSize &size, double top, double rest)
{
    const int w = size.width();
    const int h = size.height();
    painter.fillRect(0, 0, w, 1, faded(palette::ice, top));
    painter.fillRect(0, h - 1, w, 1, faded(palette::ice, rest));
    painter.fillRect(0, 1, 1, h - 2, faded(palette::ice, rest));
    painter.fillRect(w - 1, 1, 1, h - 2, faded(palette::ice, rest));
}

QImage panel(const QSize &size)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    QLinearGradient body(0, 0, 0, size.height());
    body.setColorAt(0, QColor(20, 44, 88, 150));
    body.setColorAt(1, QColor(8, 19, 45, 186));
    painter.fillRect(picture.rect(), body);
    QLinearGradient sheen(0, 0, size.width() * 0.6, size.height() * 0.6);
    sheen.setColorAt(0, faded(palette::ice, 0.09));
    sheen.setColorAt(1, faded(palette::ice, 0));
    painter.fillRect(picture.rect(), sheen);
    edge(painter, size, 0.24, 0.08);
    return picture;
}

QImage plate(const QSize &size, const QColor &left, const QColor &right, double line)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    QLinearGradient body(0, 0, size.width(), 0);
    body.setColorAt(0, left);
    body.setColorAt(1, right);
    painter.fillRect(picture.rect(), body);
    edge(painter, size, line, line * 0.4);
    return picture;
}

QImage row(const QSize &size)
{
    return plate(size, QColor(160, 200, 255, 20), QColor(160, 200, 255, 10), 0.05);
}

QImage focus(const QSize &size)
{
    QImage picture = plate(size, faded(palette::teal, 0.98), faded(palette::blue, 0.86), 0.30);
    QPainter painter(&picture);
    painter.fillRect(0, 0, 4, size.height(), palette::accent);
    return picture;
}

QImage cell(const QSize &size)
{
    return plate(size, QColor(34, 62, 116, 150), QColor(26, 50, 100, 130), 0.10);
}

QImage cellNow(const QSize &size)
{
    return plate(size, QColor(38, 96, 150, 190), QColor(30, 76, 134, 170), 0.20);
}

QImage key(const QSize &size)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    QLinearGradient body(0, 0, 0, size.height());
    body.setColorAt(0, QColor(62, 98, 160, 150));
    body.setColorAt(1, QColor(30, 56, 108, 150));
    painter.fillRect(picture.rect(), body);
    edge(painter, size, 0.30, 0.10);
    return picture;
}

QImage keyFocus(const QSize &size)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    QLinearGradient body(0, 0, 0, size.height());
    body.setColorAt(0, QColor(20, 150, 150));
    body.setColorAt(1, QColor(12, 96, 124));
    painter.fillRect(picture.rect(), body);
    edge(painter, size, 0.55, 0.30);
    painter.fillRect(0, size.height() - 3, size.width(), 3, palette::accent);
    return picture;
}

QImage track(const QSize &size)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), QColor(4, 10, 26, 190));
    painter.fillRect(0, 0, size.width(), 1, QColor(0, 0, 0, 120));
    return picture;
}

QImage fill(const QSize &size)
{
    QImage picture = blank(size.width(), size.height());
    QPainter painter(&picture);
    QLinearGradient body(0, 0, size.width(), 0);
    body.setColorAt(0, QColor(20, 138, 160));
    body.setColorAt(1, palette::accent);
    painter.fillRect(picture.rect(), body);
    painter.fillRect(0, 0, size.width(), 1, faded(palette::ice, 0.45));
    painter.fillRect(size.width() - 3, 0, 3, size.height(), palette::ice);
    return picture;
}

void drawEach(Folder &out, const char16_t *name, QImage (*draw)(const QSize &), Sizes sizes)
{
    for (const QSize &size : sizes) {
        out.save(draw(size), QStringLiteral("glass"),
                 sized(QString::fromUtf16(name), size.width(), size.height()));
    }
}

// Eight pieces of 16 pixels for frames that the receiver stretches to any size.
void drawFrame(Folder &out)
{
    QImage whole = blank(48, 48);
    {
        QPainter painter(&whole);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(faded(palette::accent, 0.8), 2));
        painter.setBrush(QColor(19, 38, 74, 230));
        painter.drawRoundedRect(QRectF(1, 1, 46, 46), 10, 10);
    }
    const struct
    {
        const char16_t *side;
        int column;
        int line;
    } pieces[] = {{u"lt", 0, 0}, {u"t", 1, 0},  {u"rt", 2, 0}, {u"l", 0, 1},
                  {u"r", 2, 1},  {u"lb", 0, 2}, {u"b", 1, 2},  {u"rb", 2, 2}};
    for (const auto &piece : pieces) {
        out.save(whole.copy(piece.column * 16, piece.line * 16, 16, 16), QStringLiteral("glass"),
                 QStringLiteral("frame_") + QString::fromUtf16(piece.side));
    }
}

} // namespace

void drawGlass(Folder &out)
{
    drawEach(out, u"panel", panel,
             {{80, 80},    {320, 512},  {352, 208},  {352, 512}, {384, 576}, {400, 512},
              {424, 512},  {480, 384},  {480, 512},  {512, 80},  {560, 272}, {560, 512},
              {568, 512},  {648, 512},  {704, 512},  {728, 512}, {808, 512}, {1152, 136},
              {1152, 144}, {1152, 192}, {1152, 432}, {1152, 512}});
    drawEach(out, u"row", row,
             {{144, 142},
              {184, 44},
              {286, 56},
              {318, 48},
              {350, 48},
              {352, 38},
              {366, 62},
              {446, 56},
              {526, 56},
              {670, 56},
              {670, 90},
              {774, 56},
              {1118, 60}});
    drawEach(out, u"focus", focus,
             {{286, 56},
              {318, 48},
              {350, 48},
              {366, 62},
              {446, 56},
              {526, 56},
              {556, 44},
              {670, 90},
              {774, 56},
              {1118, 60}});
    drawEach(out, u"cell", cell, {{76, 44}, {156, 44}, {236, 44}, {316, 44}, {396, 44}, {476, 44}});
    drawEach(out, u"cell_now", cellNow, {{236, 44}, {316, 44}, {396, 44}});
    drawEach(out, u"key", key, {{103, 66}, {214, 66}, {436, 66}});
    drawEach(out, u"key_focus", keyFocus, {{64, 80}, {103, 66}});
    drawEach(out, u"button", key, {{56, 56}, {112, 40}, {120, 40}, {200, 48}});
    drawEach(out, u"button_focus", keyFocus, {{56, 56}, {120, 40}});
    drawEach(out, u"track", track,
             {{128, 8}, {326, 8}, {336, 8}, {352, 8}, {374, 8}, {528, 8}, {600, 8}, {896, 8}});
    drawEach(out, u"fill", fill,
             {{105, 8},
              {120, 8},
              {124, 8},
              {142, 8},
              {153, 8},
              {202, 8},
              {225, 8},
              {307, 8},
              {317, 8},
              {360, 8},
              {645, 8}});
    drawFrame(out);
}

} // namespace aurora
