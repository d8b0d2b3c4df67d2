#include "controls/DrawnIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QStringList>

namespace quillmere {

namespace {

constexpr double kGround = 16, kLine = 1.3;

QPainterPath pathOf(const QString &lines)
{
    const QStringList words = lines.split(u' ', Qt::SkipEmptyParts);
    QPainterPath path;
    qsizetype at = 0;
    const auto number = [&] { return words.value(at++).toDouble(); };
    const auto point = [&] {
        const double x = number();
        return QPointF(x, number());
    };
    while (at < words.size()) {
        const QString word = words[at++];
        if (word == u"M") {
            path.moveTo(point());
        } else if (word == u"L") {
            path.lineTo(point());
        } else if (word == u"C") {
            const QPointF first = point(), second = point();
            path.cubicTo(first, second, point());
        } else if (word == u"O") {
            const QPointF middle = point();
            const double radius = number();
            path.addEllipse(middle, radius, radius);
        } else {
            path.closeSubpath();
        }
    }
    return path;
}

class LineEngine : public QIconEngine
{
public:
    explicit LineEngine(QPainterPath path) : m_path(std::move(path)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kGround, rect.height() / kGround);
        painter->setPen(QPen(palette.color(group, role), kLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(m_path);
        painter->restore();
    }

    // Not kept: the colours may be others the next time.
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({}, size), mode, state);
        return pixmap;
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal) override
    {
        return pixmap(size, mode, state);
    }

    QIconEngine *clone() const override { return new LineEngine(m_path); }

private:
    QPainterPath m_path;
};

} // namespace

QIcon drawnIcon(const QString &lines)
{
    return QIcon(new LineEngine(pathOf(lines)));
}

} // namespace quillmere
