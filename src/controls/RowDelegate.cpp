#include "controls/RowDelegate.h"

#include "controls/ListView.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMostDrawn = 1000; // characters; more than any column shows
constexpr int kLeastBehind = 3;  // letters' widths that what follows a mark keeps where the line is cut

QFont bold(QFont font)
{
    font.setWeight(QFont::Bold);
    return font;
}

// The text in one line, cut at the front first: the mark tells more than what leads to it.
void drawMarked(QPainter &painter, const QRect &room, const QStyleOptionViewItem &item, TextMark mark)
{
    const QFontMetrics metrics(item.font);
    const QString marked = item.text.sliced(mark.start, mark.length);
    QString before = item.text.first(mark.start), behind = item.text.sliced(mark.start + mark.length);
    const int left = room.width() - QFontMetrics(bold(item.font)).horizontalAdvance(marked);
    const int least = std::min(metrics.horizontalAdvance(behind), kLeastBehind * metrics.averageCharWidth());
    before = metrics.elidedText(before, Qt::ElideLeft, std::max(0, left - least));
    behind = metrics.elidedText(behind, Qt::ElideRight, left - metrics.horizontalAdvance(before));

    QTextLayout layout(before + marked + behind, item.font);
    QTextLayout::FormatRange range;
    range.start = int(before.size());
    range.length = int(marked.size());
    range.format.setFontWeight(QFont::Bold);
    layout.setFormats({range});
    QTextOption option(item.direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    option.setTextDirection(item.direction);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(room.width());
    layout.endLayout();
    layout.draw(&painter, QPointF(room.left(), room.top() + (room.height() - line.height()) / 2));
}

} // namespace

RowDelegate::RowDelegate(ListView *list) : QStyledItemDelegate(list), m_list(list) {}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 4);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = m_list->columnElideMode(index.column());
    // Fitting a text of a damaged file into a column takes time for all of it, at every repaint.
    if (option->text.size() > kMostDrawn)
        option->text = option->textElideMode == Qt::ElideLeft ? option->text.right(kMostDrawn)
                                                              : option->text.left(kMostDrawn);
    if (option->text.isRightToLeft())
        option->direction = Qt::RightToLeft;
}

void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const TextMark mark = m_list->markAt(index);
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    if (mark.length <= 0 || mark.start < 0 || mark.start + mark.length > item.text.size()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QStyle *style = m_list->style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_list) + 1;
    const QRect room =
        style->subElementRect(QStyle::SE_ItemViewItemText, &item, m_list).adjusted(margin, 0, -margin, 0);
    QStyleOptionViewItem ground = item;
    ground.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &ground, painter, m_list);
    painter->save();
    painter->setClipRect(room);
    const QPalette::ColorGroup group = !(item.state & QStyle::State_Enabled) ? QPalette::Disabled
                                       : item.state & QStyle::State_Active   ? QPalette::Active
                                                                             : QPalette::Inactive;
    painter->setPen(item.palette.color(group, item.state & QStyle::State_Selected ? QPalette::HighlightedText
                                                                                  : QPalette::Text));
    drawMarked(*painter, room, item, mark);
    painter->restore();
}

} // namespace quillmere
