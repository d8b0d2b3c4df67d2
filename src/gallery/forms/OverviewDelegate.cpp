#include "gallery/forms/OverviewDelegate.h"

#include "gallery/forms/OverviewRows.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kAround = 10;    // pixels at each side of a picture
constexpr int kAbove = 8;      // and above it
constexpr int kBeforeName = 6; // and between it and its name
constexpr int kBelow = 6;
constexpr int kMark = 18; // of a mark
constexpr int kMarkInset = 6;
constexpr int kFocus = 2;      // the line around the current one
constexpr int kMostName = 200; // letters; more than fit anywhere

// Between two colours; 0 is the first.
QColor between(const QColor &a, const QColor &b, double at)
{
    const auto mix = [at](double x, double y) { return float(x + (y - x) * at); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

} // namespace

OverviewDelegate::OverviewDelegate(const OverviewRows &rows, QObject *parent)
    : QStyledItemDelegate(parent), m_rows(rows)
{
}

// Both screens that there are have these shares.
QSize OverviewDelegate::pictureOf(int itemWidth)
{
    const int width = std::max(itemWidth - 2 * kAround, 16);
    return {width, width * 9 / 16};
}

QSize OverviewDelegate::itemOf(int itemWidth, const QFontMetrics &font)
{
    return {itemWidth, kAbove + pictureOf(itemWidth).height() + kBeforeName + font.height() + kBelow};
}

QSize OverviewDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return itemOf(itemWidth, option.fontMetrics);
}

void OverviewDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    const int number = m_rows.numberAt(index);
    if (number < 0)
        return;
    painter->save();
    const QPalette &palette = option.palette;
    const bool isSelected = option.state & QStyle::State_Selected;
    const bool isActive = option.state & QStyle::State_Active && option.state & QStyle::State_HasFocus;
    const auto group = isSelected && !isActive ? QPalette::Inactive : QPalette::Active;
    const QRect item = option.rect.adjusted(3, 2, -3, -2);
    if (isSelected)
        painter->fillRect(item, palette.brush(group, QPalette::Highlight));
    else if (option.state & QStyle::State_MouseOver)
        painter->fillRect(item, between(palette.base().color(), palette.highlight().color(), 0.18));

    const QRect picture(option.rect.topLeft() + QPoint(kAround, kAbove), pictureOf(option.rect.width()));
    paintPicture(*painter, picture, option, number);
    paintMark(*painter, picture, number);

    const QRect line(picture.left(), picture.bottom() + 1 + kBeforeName, picture.width(),
                     option.fontMetrics.height());
    painter->setPen(palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    const QString name = m_rows.window(number).name.left(kMostName);
    painter->drawText(line, Qt::AlignCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(name, Qt::ElideMiddle, line.width()));
    if (isActive) {
        painter->setPen(QPen(palette.color(QPalette::Text), kFocus));
        painter->drawRect(item.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

void OverviewDelegate::paintPicture(QPainter &painter, const QRect &place, const QStyleOptionViewItem &option,
                                    int number) const
{
    const QPalette &palette = option.palette;
    const OverviewRows::Window &window = m_rows.window(number);
    const QColor line = between(palette.base().color(), palette.text().color(), 0.45);
    if (!window.picture.isNull()) {
        // While the list gets another size, pictures are drawn anew a moment later.
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(place, window.picture);
    } else {
        painter.fillRect(place, between(palette.base().color(), palette.text().color(), 0.08));
        QString text;
        if (window.look == OverviewRows::Look::NoDocument) {
            painter.fillRect(place, QBrush(between(palette.base().color(), palette.text().color(), 0.2),
                                           Qt::BDiagPattern));
            text = OverviewRows::tr("No document");
        } else if (window.look == OverviewRows::Look::NotDrawn) {
            text = OverviewRows::tr("Not drawn");
        }
        if (!text.isEmpty()) {
            const QRect words = option.fontMetrics.boundingRect(place, Qt::AlignCenter, text);
            painter.fillRect(words.adjusted(-8, -4, 8, 4), palette.base());
            painter.setPen(palette.color(QPalette::Text));
            painter.drawText(place, Qt::AlignCenter, text);
        }
    }
    painter.setPen(line);
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
}

// A sign on a ground of its own, since pictures have every colour; how many there are, the tooltip says.
void OverviewDelegate::paintMark(QPainter &painter, const QRect &picture, int number) const
{
    const WindowProblems &problems = m_rows.window(number).problems;
    const bool isError = problems.errors > 0;
    if (!isError && problems.warnings == 0)
        return;
    const QRectF ground(picture.right() - kMarkInset - kMark, picture.top() + kMarkInset, kMark, kMark);
    const QPointF middle = ground.center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(isError ? QColor(0xb3, 0x1b, 0x1b) : QColor(0xff, 0xc8, 0x3d));
    if (isError) {
        painter.drawEllipse(ground);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawLine(middle + QPointF(-3.5, -3.5), middle + QPointF(3.5, 3.5));
        painter.drawLine(middle + QPointF(-3.5, 3.5), middle + QPointF(3.5, -3.5));
    } else {
        QPainterPath triangle;
        triangle.addPolygon(
            QPolygonF({{middle.x(), ground.top()}, ground.bottomRight(), ground.bottomLeft()}));
        triangle.closeSubpath();
        painter.drawPath(triangle);
        painter.setPen(QPen(Qt::black, 2));
        painter.drawLine(middle + QPointF(0, -3), middle + QPointF(0, 2));
        painter.drawPoint(middle + QPointF(0, 5.5));
    }
    painter.restore();
}

} // namespace quillmere
