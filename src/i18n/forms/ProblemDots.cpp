#include "i18n/forms/ProblemDots.h"

#include "controls/ListView.h"
#include "rows/ToolTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillmere {

namespace {

constexpr int kWidth = 14, kDot = 8; // pixels

// Told apart by their form as well.
constexpr QRgb kColours[] = {0xFFD02020, 0xFFE08A00, 0xFF3A82D0};

QRect placeOf(const QStyleOptionViewItem &option)
{
    return QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter,
                               QSize(kWidth, option.rect.height()), option.rect);
}

} // namespace

ProblemDots::ProblemDots(ListView &list, const StringFilters &filters)
    : QStyledItemDelegate(&list), m_list(list), m_filters(filters)
{
    connect(&filters, &StringFilters::problemsChanged, list.viewport(), qOverload<>(&QWidget::update));
}

QSize ProblemDots::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool hasDot = m_filters.problemsOf(index.row()).has_value();
    return m_list.itemDelegate()->sizeHint(option, index) + QSize(hasDot ? kWidth : 0, 0);
}

void ProblemDots::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const std::optional<StringProblems> problems = m_filters.problemsOf(index.row());
    if (!problems) {
        m_list.itemDelegate()->paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    m_list.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, &m_list);
    const QRect place = placeOf(option);
    cell.rect.setWidth(option.rect.width() - kWidth);
    if (option.direction == Qt::RightToLeft)
        cell.rect.moveRight(option.rect.right());
    m_list.itemDelegate()->paint(painter, cell, index);
    QRectF dot(0, 0, kDot, kDot);
    dot.moveCenter(QRectF(place).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option.palette.base().color(), 1));
    painter->setBrush(QColor::fromRgba(kColours[int(problems->worst)]));
    if (problems->worst == StringProblems::Mark::Error)
        painter->drawRect(dot);
    else if (problems->worst == StringProblems::Mark::Warning)
        painter->drawPolygon(
            QPolygonF{QPointF(dot.center().x(), dot.top()), dot.bottomRight(), dot.bottomLeft()});
    else
        painter->drawEllipse(dot.adjusted(1, 1, -1, -1));
    painter->restore();
}

bool ProblemDots::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                            const QModelIndex &index)
{
    const QStringList messages = index.isValid() ? m_filters.messagesOf(index.row()) : QStringList();
    if (event->type() != QEvent::ToolTip || messages.isEmpty() || !placeOf(option).contains(event->pos()))
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), plainToolTip(messages.join(u'\n')), view);
    return true;
}

} // namespace quillmere
