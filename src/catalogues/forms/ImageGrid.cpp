#include "catalogues/forms/ImageGrid.h"

#include "catalogues/forms/ImageGridItem.h"
#include "catalogues/forms/ThumbnailDelegate.h"
#include "catalogues/forms/Thumbnails.h"
#include "controls/ListView.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace quillmere {

ImageGrid::ImageGrid(ListView &list, const Thumbnails &thumbnails)
    : QAbstractItemView(list.parentWidget()), m_list(list), m_thumbnails(thumbnails)
{
    hide();
    setObjectName(u"grid" + list.objectName());
    setAccessibleName(list.accessibleName());
    setModel(list.model());
    delete selectionModel(); // its own
    setSelectionModel(list.selectionModel());
    setSelectionMode(list.selectionMode());
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // columns do not depend on it, then
    viewport()->setAttribute(Qt::WA_Hover);
    setTabOrder(&list, this);
    list.installEventFilter(this);
    connect(&list, &ListView::laidOut, this, &ImageGrid::layOutSoon);
    connect(list.header(), &QHeaderView::sortIndicatorChanged, this, &ImageGrid::layOutSoon);
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex &index) { emit m_list.rowClicked(index.row()); });
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { emit m_list.rowOpened(index.row()); });
}

void ImageGrid::appear(bool on)
{
    const bool hasKeyboard = m_list.hasFocus();
    m_list.setFocusProxy(on ? this : nullptr);
    for (QAction *action : m_list.actions())
        addAction(action); // for its keys
    setGeometry(m_list.geometry());
    setVisible(on);
    if (on) {
        raise();
        doItemsLayout();
        scrollTo(currentIndex(), PositionAtCenter);
    } else {
        m_list.scrollTo(currentIndex());
    }
    if (hasKeyboard)
        m_list.setFocus();
}

void ImageGrid::listRows()
{
    m_rows = m_list.rowsSeen();
    m_numbers.fill(-1, model()->rowCount());
    for (qsizetype number = 0; number < m_rows.size(); ++number)
        m_numbers[m_rows[number]] = int(number);
}

void ImageGrid::layOutSoon()
{
    if (isVisible())
        scheduleDelayedItemsLayout();
}

// Columns share the width.
void ImageGrid::measure()
{
    const int width = std::max(viewport()->width(), 1);
    const QSize least = leastGridItem(fontMetrics());
    m_columns = std::max(1, width / least.width());
    m_item = {width / m_columns, least.height()};
}

QModelIndex ImageGrid::itemAt(int number) const
{
    return number >= 0 && number < m_rows.size() ? model()->index(m_rows[number], kGridName) : QModelIndex();
}

QRect ImageGrid::placeOf(int number) const
{
    return {
        QPoint(number % m_columns * m_item.width(), number / m_columns * m_item.height() - verticalOffset()),
        m_item};
}

QRect ImageGrid::visualRect(const QModelIndex &index) const
{
    const int number = index.isValid() ? m_numbers.value(index.row(), -1) : -1;
    return number < 0 ? QRect() : placeOf(number);
}

QModelIndex ImageGrid::indexAt(const QPoint &point) const
{
    const int column = point.x() / m_item.width();
    const int line = (point.y() + verticalOffset()) / m_item.height();
    return point.x() < 0 || column >= m_columns || line < 0 ? QModelIndex()
                                                            : itemAt(line * m_columns + column);
}

int ImageGrid::verticalOffset() const
{
    return verticalScrollBar()->value();
}

void ImageGrid::rowsInserted(const QModelIndex &parent, int first, int last)
{
    QAbstractItemView::rowsInserted(parent, first, last);
    layOutSoon();
}

void ImageGrid::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles)
{
    QAbstractItemView::dataChanged(first, last, roles);
    if (first.row() != last.row())
        layOutSoon(); // they may be sorted anew
    else
        update(first.siblingAtColumn(kGridName));
}

void ImageGrid::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    executeDelayedItemsLayout(); // a row may have come just now
    const QRect place = visualRect(index);
    if (!place.isValid())
        return;
    const int below = place.bottom() + 1 - viewport()->height();
    int by = 0;
    if (hint == PositionAtCenter)
        by = (place.top() + below) / 2;
    else if (place.top() < 0 || hint == PositionAtTop)
        by = place.top();
    else if (below > 0 || hint == PositionAtBottom)
        by = std::min(below, place.top());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + by);
}

void ImageGrid::reset()
{
    QAbstractItemView::reset();
    m_rows.clear();
    m_numbers.clear();
    layOutSoon();
}

void ImageGrid::doItemsLayout()
{
    const bool wasSeen = viewport()->rect().intersects(visualRect(currentIndex()));
    listRows();
    QAbstractItemView::doItemsLayout();
    if (wasSeen)
        scrollTo(currentIndex());
}

void ImageGrid::updateGeometries()
{
    measure();
    const int lines = (int(m_rows.size()) + m_columns - 1) / m_columns;
    verticalScrollBar()->setSingleStep(m_item.height() / 2);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, lines * m_item.height() - viewport()->height()));
    QAbstractItemView::updateGeometries();
}

void ImageGrid::scrollContentsBy(int dx, int dy)
{
    scrollDirtyRegion(dx, dy);
    viewport()->scroll(dx, dy);
}

QModelIndexList ImageGrid::inView() const
{
    QModelIndexList items;
    const int first = verticalOffset() / m_item.height() * m_columns;
    const int lines = viewport()->height() / m_item.height() + 2;
    for (int number = first; number < first + lines * m_columns && number < m_rows.size(); ++number)
        items.append(itemAt(number));
    return items;
}

QModelIndex ImageGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int last = int(m_rows.size()) - 1;
    const int now = currentIndex().isValid() ? m_numbers.value(currentIndex().row(), -1) : -1;
    if (now < 0 && action != MoveEnd)
        return itemAt(0);
    const int page = std::max(1, viewport()->height() / m_item.height()) * m_columns;
    switch (action) {
    case MoveHome:
        return itemAt(0);
    case MoveEnd:
        return itemAt(last);
    case MoveUp:
        return itemAt(now < m_columns ? now : now - m_columns);
    case MoveDown:
        // From the line before the last to its end where there is nothing below.
        return itemAt(now / m_columns == last / m_columns ? now : std::min(now + m_columns, last));
    case MovePageUp:
        return itemAt(now < page ? now % m_columns : now - page);
    case MovePageDown:
        return itemAt(std::min(now + page, last));
    case MoveLeft:
    case MovePrevious:
        return itemAt(std::max(now - 1, 0));
    case MoveRight:
    case MoveNext:
        return itemAt(std::min(now + 1, last));
    }
    return {};
}

bool ImageGrid::isIndexHidden(const QModelIndex &index) const
{
    return m_numbers.value(index.row(), -1) < 0;
}

void ImageGrid::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex index = indexAt(rect.topLeft());
    selectionModel()->select(index.isValid() ? QItemSelection(index, index) : QItemSelection(), command);
}

QRegion ImageGrid::visualRegionForSelection(const QItemSelection &) const
{
    return viewport()->rect(); // drawing what is seen takes little
}

bool ImageGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_list && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        setGeometry(m_list.geometry());
    return QAbstractItemView::eventFilter(watched, event);
}

void ImageGrid::keyPressEvent(QKeyEvent *event)
{
    const QList<int> ofRows = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete, Qt::Key_Space};
    if (ofRows.contains(event->key())) {
        QCoreApplication::sendEvent(&m_list, event);
        return;
    }
    const int before = m_list.selectedRow();
    QAbstractItemView::keyPressEvent(event);
    const int after = m_list.selectedRow();
    if (after >= 0 && after != before)
        emit m_list.rowClicked(after);
}

void ImageGrid::mouseReleaseEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    const QModelIndex box = index.siblingAtColumn(0);
    const bool isTick = event->button() == Qt::LeftButton && index.isValid() && index == currentIndex() &&
                        box.flags().testFlag(Qt::ItemIsUserCheckable) &&
                        gridTick(visualRect(index), *this).contains(event->position().toPoint());
    QAbstractItemView::mouseReleaseEvent(event);
    if (isTick)
        model()->setData(box,
                         box.data(Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked,
                         Qt::CheckStateRole);
}

// The list has the menu; it opens where the person asked for it.
void ImageGrid::contextMenuEvent(QContextMenuEvent *event)
{
    const QRect current = visualRect(currentIndex());
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint global = isKey ? viewport()->mapToGlobal(current.center()) : event->globalPos();
    m_list.scrollTo(currentIndex());
    // By neither mouse nor key, or it would open at the row's place in the list.
    QContextMenuEvent there(QContextMenuEvent::Other, m_list.viewport()->mapFromGlobal(global), global,
                            event->modifiers());
    QCoreApplication::sendEvent(m_list.viewport(), &there);
    event->setAccepted(there.isAccepted());
}

bool ImageGrid::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        showToolTip(help->pos(), help->globalPos());
        return true;
    }
    const bool isOver = event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter;
    if (isOver || event->type() == QEvent::HoverLeave) {
        const QModelIndex over =
            isOver ? indexAt(static_cast<QHoverEvent *>(event)->position().toPoint()) : QModelIndex();
        if (over != m_hovered) {
            viewport()->update(visualRect(m_hovered));
            viewport()->update(visualRect(over));
            m_hovered = over;
        }
    }
    return QAbstractItemView::viewportEvent(event);
}

void ImageGrid::showToolTip(const QPoint &at, const QPoint &global)
{
    const QModelIndex index = indexAt(at);
    const QString path = index.siblingAtColumn(0).data().toString();
    if (!index.isValid())
        QToolTip::hideText();
    else
        QToolTip::showText(global, thumbnailToolTip(gridName(index) + u'\n' + path, m_thumbnails.of(path)),
                           viewport(), visualRect(index));
}

void ImageGrid::paintEvent(QPaintEvent *event)
{
    executeDelayedItemsLayout();
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const int first = std::max(0, (event->rect().top() + verticalOffset()) / m_item.height()) * m_columns;
    for (int number = first; number < m_rows.size(); ++number) {
        option.rect = placeOf(number);
        if (option.rect.top() > event->rect().bottom())
            break;
        const QModelIndex index = itemAt(number);
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_MouseOver, index == m_hovered);
        option.state.setFlag(QStyle::State_HasFocus,
                             hasFocus() && index.row() == currentIndex().row() && currentIndex().isValid());
        const Thumbnail *thumbnail = m_thumbnails.of(index.siblingAtColumn(0).data().toString());
        if (!thumbnail)
            emit wanting();
        drawGridItem(painter, option, index, thumbnail);
    }
}

} // namespace quillmere
