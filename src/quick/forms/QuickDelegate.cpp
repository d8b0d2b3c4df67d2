#include "quick/forms/QuickDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace quillmere {

namespace {

constexpr qsizetype kMostShown = 500; // units of a name, more than a line holds
constexpr int kMargin = 8;            // pixels
constexpr int kKindWidth = 72;        // pixels, for the word at the right
constexpr float kFaint = 0.7F;        // of the letters of details

void drawText(QPainter &painter, const QRect &room, const QString &text, const QFont &font,
              const QList<int> &bold)
{
    QTextLayout layout(text, font);
    QList<QTextLayout::FormatRange> formats;
    for (const int place : bold) {
        QTextLayout::FormatRange range;
        range.start = place;
        range.length = 1;
        range.format.setFontWeight(QFont::Bold);
        range.format.setFontUnderline(true);
        formats.append(range);
    }
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(int(text.size()));
    layout.endLayout();
    painter.save();
    painter.setClipRect(room);
    layout.draw(&painter, QPointF(room.left(), room.top() + (room.height() - line.height()) / 2));
    painter.restore();
}

} // namespace

QSize QuickDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {0, option.fontMetrics.height() + kMargin};
}

void QuickDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    item.state |= QStyle::State_Active; // the keyboard is in the line above, and the list takes part
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    painter->save();
    const bool isSelected = item.state & QStyle::State_Selected;
    QColor letters = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    painter->setPen(letters);
    QRect rest = option.rect.adjusted(kMargin, 0, -kMargin, 0);
    // To lay out a name takes as long as the name, at each stroke of a key.
    const QString text = index.data().toString().left(kMostShown);
    const QString detail = index.data(Detail).toString().left(kMostShown);
    const QRect kind = rest.adjusted(rest.width() - kKindWidth, 0, 0, 0);
    rest.setRight(kind.left() - kMargin);
    const int textWidth = std::min(rest.width(), option.fontMetrics.horizontalAdvance(text) + 2 * kMargin);
    const QString shown = option.fontMetrics.elidedText(text, Qt::ElideRight, textWidth - kMargin);
    QList<int> places = index.data(Places).value<QList<int>>();
    if (shown != text)
        places.removeIf([last = shown.size() - 1](int place) { return place >= last; });
    drawText(*painter, QRect(rest.topLeft(), QSize(textWidth, rest.height())), shown, option.font, places);
    letters.setAlphaF(kFaint);
    painter->setPen(letters);
    painter->setFont(option.font);
    painter->drawText(kind, Qt::AlignRight | Qt::AlignVCenter, index.data(Kind).toString());
    rest.setLeft(rest.left() + textWidth + kMargin);
    if (rest.width() > 2 * kMargin)
        painter->drawText(rest, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(detail, Qt::ElideMiddle, rest.width()));
    painter->restore();
}

} // namespace quillmere
