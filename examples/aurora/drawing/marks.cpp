// Station marks and the small badges beside programme titles. The stations do not exist.
#include "sheets.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace aurora {

namespace {

// Each mark is drawn in white on a tile of 64 x 40 units.
void auroraMark(QPainter &p)
{
    for (int i = 0; i < 3; ++i) {
        QPainterPath band;
        band.moveTo(16 + 6 * i, 30);
        band.cubicTo(18 + 6 * i, 18, 30 + 6 * i, 24, 34 + 6 * i, 9);
        p.strokePath(band, QPen(faded(Qt::white, 1.0 - 0.25 * i), 3.4, Qt::SolidLine, Qt::RoundCap));
    }
}

void harbourMark(QPainter &p)
{
    p.drawLine(QPointF(32, 8), QPointF(32, 30));
    p.drawLine(QPointF(25, 14), QPointF(39, 14));
    p.drawArc(QRectF(20, 10, 24, 21), 200 * 16, 140 * 16);
}

void lanternMark(QPainter &p)
{
    p.drawRoundedRect(QRectF(25, 12, 14, 19), 3, 3);
    p.drawArc(QRectF(27, 6, 10, 11), 0, 180 * 16);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(32, 22), 2.6, 3.6);
}

void velvetMark(QPainter &p)
{
    QPainterPath curtain;
    curtain.moveTo(18, 9);
    curtain.quadTo(30, 14, 20, 31);
    curtain.moveTo(46, 9);
    curtain.quadTo(34, 14, 44, 31);
    curtain.moveTo(16, 9);
    curtain.lineTo(48, 9);
    p.drawPath(curtain);
}

void northMark(QPainter &p)
{
    p.setBrush(Qt::white);
    const QPointF arrow[] = {{32, 7}, {41, 31}, {32, 25}, {23, 31}};
    p.drawPolygon(arrow, 4);
}

void pineMark(QPainter &p)
{
    p.setBrush(Qt::white);
    const QPointF upper[] = {{32, 7}, {39, 18}, {25, 18}};
    const QPointF lower[] = {{32, 14}, {42, 28}, {22, 28}};
    p.drawPolygon(upper, 3);
    p.drawPolygon(lower, 3);
    p.drawLine(QPointF(32, 28), QPointF(32, 33));
}

void cometMark(QPainter &p)
{
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(40, 15), 5, 5);
    p.drawLine(QPointF(33, 19), QPointF(18, 30));
    p.drawLine(QPointF(32, 14), QPointF(21, 19));
    p.drawLine(QPointF(38, 23), QPointF(30, 31));
}

void saffronMark(QPainter &p)
{
    for (int i = 0; i < 6; ++i) {
        p.save();
        p.translate(32, 20);
        p.rotate(60 * i);
        p.drawEllipse(QPointF(0, -7.4), 3.2, 5.0);
        p.restore();
    }
}

void orbitMark(QPainter &p)
{
    p.drawEllipse(QPointF(32, 20), 5, 5);
    p.translate(32, 20);
    p.rotate(-24);
    p.drawEllipse(QPointF(0, 0), 17, 7);
}

void rippleMark(QPainter &p)
{
    for (int i = 0; i < 5; ++i) {
        const double reach = (i % 2 == 0 ? 5.0 : 9.0) + (i == 2 ? 5 : 0);
        p.drawLine(QPointF(20 + 6 * i, 20 - reach), QPointF(20 + 6 * i, 20 + reach));
    }
}

struct Mark
{
    const char16_t *name;
    void (*draw)(QPainter &);
    QRgb from;
    QRgb to;
};

constexpr Mark marks[] = {
    {u"aurora", auroraMark, 0xff12a594, 0xff2456c8},   {u"harbour", harbourMark, 0xff2f6fd6, 0xff123a86},
    {u"lantern", lanternMark, 0xffd8503f, 0xff8c1f3c}, {u"velvet", velvetMark, 0xff8a3fc0, 0xff4a1c7c},
    {u"north", northMark, 0xff2aa8d8, 0xff10608e},     {u"pine", pineMark, 0xff3f9a62, 0xff1a5440},
    {u"comet", cometMark, 0xfff0a030, 0xffd05a2a},     {u"saffron", saffronMark, 0xffe08a1e, 0xffa04a12},
    {u"orbit", orbitMark, 0xff4a58c8, 0xff22266e},     {u"ripple", rippleMark, 0xffd04a90, 0xff7c1f66},
};

QImage tile(const Mark &mark, int scale)
{
    QImage picture = blank(64 * scale, 40 * scale);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    QLinearGradient body(0, 0, 64, 40);
    body.setColorAt(0, QColor(mark.from));
    body.setColorAt(1, QColor(mark.to));
    painter.fillRect(QRectF(0, 0, 64, 40), body);
    painter.fillRect(QRectF(0, 0, 64, 1), faded(Qt::white, 0.25));
    painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    mark.draw(painter);
    return picture;
}

QImage badge(const QString &letters)
{
    QImage picture = blank(48, 24);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(160, 200, 255, 26));
    painter.setPen(QPen(faded(palette::ice, 0.55), 1));
    painter.drawRect(QRectF(0.5, 0.5, 47, 23));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(palette::ice);
    painter.drawText(QRectF(0, 0, 48, 24), Qt::AlignCenter, letters);
    return picture;
}

} // namespace

void drawMarks(Folder &out)
{
    const QString kind = QStringLiteral("logo");
    for (const Mark &mark : marks) {
        out.save(tile(mark, 1), kind, sized(QStringLiteral("logo_") + QString::fromUtf16(mark.name), 64, 40));
    }
    out.save(tile(marks[0], 2), kind, QStringLiteral("logo_aurora_128x80"));
    const struct
    {
        const char16_t *name;
        const char16_t *letters;
    } badges[] = {{u"hd", u"HD"}, {u"ac", u"5.1"}, {u"sub", u"SUB"}, {u"txt", u"TXT"}};
    for (const auto &b : badges) {
        out.save(badge(QString::fromUtf16(b.letters)), kind,
                 sized(QStringLiteral("badge_") + QString::fromUtf16(b.name), 48, 24));
    }
}

} // namespace aurora
