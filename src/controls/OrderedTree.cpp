#include "controls/OrderedTree.h"

#include "rows/RowOrder.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace quillmere {

OrderedTree::OrderedTree(QWidget *parent) : QTreeView(parent)
{
    header()->setSortIndicatorClearable(true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header(), &QHeaderView::sortIndicatorChanged, this, &OrderedTree::showSorted);
    setSortable(true);
}

void OrderedTree::setSortable(bool sortable)
{
    m_sortable = sortable;
    header()->setSortIndicatorShown(sortable);
    header()->setSectionsClickable(sortable);
    header()->setSortIndicatorClearable(sortable);
    if (!sortable)
        showSorted(-1, Qt::AscendingOrder);
}

void OrderedTree::setModel(QAbstractItemModel *rows)
{
    if (model())
        disconnect(model(), nullptr, this, nullptr);
    QTreeView::setModel(rows);
    m_hidden.clear();
    const auto anew = [this] { m_isSorted = m_isPlaced = false; };
    connect(rows, &QAbstractItemModel::modelReset, this, [this, anew] {
        m_hidden.clear();
        anew();
    });
    connect(rows, &QAbstractItemModel::layoutChanged, this, [this, anew] {
        for (int row = 0; row < m_hidden.size(); ++row)
            m_hidden[row] = QTreeView::isRowHidden(row, {});
        anew();
    });
    connect(rows, &QAbstractItemModel::rowsInserted, this,
            [this, anew](const QModelIndex &, int first, int last) {
                if (first < m_hidden.size())
                    m_hidden.insert(first, last - first + 1, false);
                anew();
            });
    connect(rows, &QAbstractItemModel::rowsRemoved, this,
            [this, anew](const QModelIndex &, int first, int last) {
                const qsizetype end = std::min<qsizetype>(last + 1, m_hidden.size());
                if (first < end)
                    m_hidden.remove(first, end - first);
                anew();
            });
    connect(rows, &QAbstractItemModel::dataChanged, this,
            [this, anew](const QModelIndex &first, const QModelIndex &last) {
                if (!isSorted() || first.row() == last.row())
                    return;
                anew();
                viewport()->update();
            });
}

void OrderedTree::setRowHidden(int row, const QModelIndex &parent, bool hide)
{
    QTreeView::setRowHidden(row, parent, hide);
    if (row < 0 || row >= model()->rowCount(parent))
        return;
    if (row >= m_hidden.size())
        m_hidden.resize(model()->rowCount(parent));
    m_hidden[row] = hide;
}

void OrderedTree::sortBy(int column, Qt::SortOrder order)
{
    header()->setSortIndicator(column, order);
}

void OrderedTree::showSorted(int column, Qt::SortOrder order)
{
    if (!m_sortable)
        column = -1;
    const QRect before = visualRect(currentIndex());
    m_column = column;
    m_direction = order;
    m_isSorted = m_isPlaced = false;
    if (isSorted())
        placeRows(); // by the texts as they are now
    if (before.isValid() && viewport()->rect().intersects(before)) {
        const int moved = visualRect(currentIndex()).top() - before.top();
        const int unit = verticalScrollMode() == ScrollPerItem ? before.height() : 1;
        verticalScrollBar()->setValue(verticalScrollBar()->value() + moved / unit);
    }
    viewport()->update();
}

void OrderedTree::placeRows() const
{
    const_cast<OrderedTree *>(this)->executeDelayedItemsLayout(); // rows may have been hidden since the last
    const int count = model()->rowCount();
    if (!m_isSorted || m_order.size() != count) {
        QStringList cells;
        cells.reserve(count);
        for (int row = 0; row < count; ++row)
            cells.append(model()->index(row, m_column).data().toString());
        m_order = sortedRows(cells, m_direction);
        m_isSorted = true;
        m_isPlaced = false;
    }
    if (m_isPlaced)
        return;
    m_isPlaced = true;
    m_numberInLaidOut.fill(-1, count);
    m_numberInSeen.fill(-1, count);
    m_laidOut.clear();
    m_seen.clear();
    for (int row = 0; row < count; ++row) {
        if (isRowHidden(row, {}))
            continue;
        m_numberInLaidOut[row] = int(m_laidOut.size());
        m_laidOut.append(row);
    }
    for (const int row : std::as_const(m_order)) {
        if (m_numberInLaidOut.at(row) < 0)
            continue;
        m_numberInSeen[row] = int(m_seen.size());
        m_seen.append(row);
    }
}

QList<int> OrderedTree::rowsSeen() const
{
    if (isSorted()) {
        placeRows();
        return m_seen;
    }
    QList<int> rows;
    for (int row = 0; row < model()->rowCount(); ++row) {
        if (!isRowHidden(row, {}))
            rows.append(row);
    }
    return rows;
}

// Rows are hidden and shown again with a new layout.
void OrderedTree::doItemsLayout()
{
    m_isPlaced = false;
    QTreeView::doItemsLayout();
}

QModelIndex OrderedTree::placeOf(const QModelIndex &index) const
{
    if (!isSorted() || !index.isValid())
        return index;
    placeRows();
    const int number = m_numberInSeen.value(index.row(), -1);
    return number < 0 ? index : index.sibling(m_laidOut.at(number), index.column());
}

QModelIndex OrderedTree::seenBelow(const QModelIndex &index) const
{
    if (!isSorted())
        return indexBelow(index);
    placeRows();
    const int number = m_numberInSeen.value(index.row(), -1);
    return number < 0 || number + 1 >= m_seen.size() ? QModelIndex()
                                                     : index.sibling(m_seen.at(number + 1), index.column());
}

QModelIndex OrderedTree::seenFirst() const
{
    if (isSorted()) {
        placeRows();
        return m_seen.isEmpty() ? QModelIndex() : model()->index(m_seen.first(), columnToGoTo());
    }
    for (int row = 0; row < model()->rowCount(); ++row) {
        if (!isRowHidden(row, {}))
            return model()->index(row, columnToGoTo());
    }
    return {};
}

QModelIndex OrderedTree::seenAt(const QModelIndex &place) const
{
    if (!isSorted() || !place.isValid())
        return place;
    placeRows();
    const int number = m_numberInLaidOut.value(place.row(), -1);
    return number < 0 ? place : place.sibling(m_seen.at(number), place.column());
}

QRect OrderedTree::visualRect(const QModelIndex &index) const
{
    return QTreeView::visualRect(placeOf(index));
}

QModelIndex OrderedTree::indexAt(const QPoint &point) const
{
    return seenAt(QTreeView::indexAt(point));
}

void OrderedTree::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QTreeView::scrollTo(placeOf(index), hint);
}

void OrderedTree::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, seenAt(index));
}

int OrderedTree::columnToGoTo() const
{
    if (currentIndex().isValid())
        return currentIndex().column();
    int column = 0;
    while (column < model()->columnCount() - 1 && isColumnHidden(column))
        ++column;
    return column;
}

QModelIndex OrderedTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const bool isAside = action == MoveLeft || action == MoveRight;
    if (!isSorted() || isAside)
        return QTreeView::moveCursor(action, modifiers);
    placeRows();
    if (m_seen.isEmpty())
        return {};
    const int last = int(m_seen.size()) - 1;
    const int now = m_numberInSeen.value(currentIndex().row(), -1);
    const int rowHeight = std::max(1, visualRect(model()->index(m_seen.first(), columnToGoTo())).height());
    const int page = std::max(1, viewport()->height() / rowHeight);
    int next = 0;
    if (action == MoveEnd)
        next = last;
    else if (action == MoveHome || now < 0)
        next = 0;
    else
        next = now + (action == MovePageUp                         ? -page
                      : action == MovePageDown                     ? page
                      : action == MoveUp || action == MovePrevious ? -1
                                                                   : 1);
    return model()->index(m_seen.at(std::clamp(next, 0, last)), columnToGoTo());
}

void OrderedTree::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex top = indexAt({rect.left(), std::min(rect.top(), rect.bottom())});
    const QModelIndex bottom = indexAt({rect.left(), std::max(rect.top(), rect.bottom())});
    if (!isSorted() || (!top.isValid() && !bottom.isValid())) {
        QTreeView::setSelection(rect, command);
        return;
    }
    placeRows();
    const int from = m_numberInSeen.value(top.row(), 0);
    const int to = m_numberInSeen.value(bottom.row(), int(m_seen.size()) - 1);
    QList<int> rows = m_seen.mid(from, to - from + 1);
    std::sort(rows.begin(), rows.end());
    QItemSelection selection;
    for (qsizetype i = 0; i < rows.size();) {
        qsizetype next = i + 1;
        while (next < rows.size() && rows[next] == rows[next - 1] + 1)
            ++next;
        selection.append(QItemSelectionRange(model()->index(rows[i], 0),
                                             model()->index(rows[next - 1], model()->columnCount() - 1)));
        i = next;
    }
    selectionModel()->select(selection, command);
}

QRegion OrderedTree::visualRegionForSelection(const QItemSelection &selection) const
{
    // Neighbours in the model stand apart here, and drawing what is seen anew takes little.
    if (isSorted() && !selection.isEmpty())
        return viewport()->rect();
    return QTreeView::visualRegionForSelection(selection);
}

// Goes to the next row whose text in the column sorted by begins with what was typed.
void OrderedTree::keyboardSearch(const QString &typed)
{
    if (!isSorted() || typed.isEmpty()) {
        QTreeView::keyboardSearch(typed);
        return;
    }
    const bool goesOn =
        m_sinceTyped.isValid() && m_sinceTyped.elapsed() < QApplication::keyboardInputInterval();
    m_sinceTyped.start();
    const bool isAgain = goesOn && m_typed == typed; // one letter several times leads from row to row
    m_typed = goesOn && !isAgain ? QString(m_typed + typed) : typed;
    placeRows();
    const qsizetype count = m_seen.size();
    const qsizetype now = m_numberInSeen.value(currentIndex().row(), -1);
    const qsizetype first = m_typed.size() > 1 ? std::max<qsizetype>(now, 0) : now + 1;
    for (qsizetype i = 0; i < count; ++i) {
        const int row = m_seen.at((first + i) % count);
        if (!model()->index(row, m_column).data().toString().startsWith(m_typed, Qt::CaseInsensitive))
            continue;
        setCurrentIndex(model()->index(row, columnToGoTo()));
        return;
    }
}

} // namespace quillmere
