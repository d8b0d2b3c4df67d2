#pragma once

#include <QElapsedTimer>
#include <QTreeView>

namespace quillmere {

// A tree view without branches that can show its rows sorted by a column, while the model, its row numbers,
// the selection and who walks the rows know only the model's own order. So there is no model in between that
// would number the rows anew for all who ask model() or currentIndex(): the view lays the rows out in the
// model's order, and this class says which row is seen at each of those places. Whatever asks where a row is,
// or what is at a point, gets the place where the person sees it.
//
// A row whose text changes stays where it is until rows come or go, several change at once, or the person
// sorts again: it would run away from who is at work on it.
class OrderedTree : public QTreeView
{
    Q_OBJECT

public:
    explicit OrderedTree(QWidget *parent = nullptr);

    void setModel(QAbstractItemModel *rows) override;

    // Whether a click on a header sorts: up, down, and as the model has the rows. They do from the start.
    void setSortable(bool sortable);
    bool isSortable() const { return m_sortable; }
    // Shows the rows sorted; by column -1 as the model has them. The current row stays where it is on the
    // screen, if it is to be seen.
    void sortBy(int column, Qt::SortOrder order);

    // As for any tree view. That one asks the model for a persistent index whenever somebody wants to know of
    // a row; here the answer for thousands of them takes no time.
    void setRowHidden(int row, const QModelIndex &parent, bool hide);
    bool isRowHidden(int row, const QModelIndex &) const { return m_hidden.value(row); }
    // The rows that are not hidden, in the order in which they are seen.
    QList<int> rowsSeen() const;

    // The row that is seen below another one, and the one that is seen above all others; none where there is
    // none.
    QModelIndex seenBelow(const QModelIndex &index) const;
    QModelIndex seenFirst() const;

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString &typed) override;
    void doItemsLayout() override;

protected:
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

private:
    void showSorted(int column, Qt::SortOrder order);
    bool isSorted() const { return m_column >= 0; }
    // Brings what is below up to date with the rows and the hidden ones among them.
    void placeRows() const;
    QModelIndex placeOf(const QModelIndex &index) const;
    QModelIndex seenAt(const QModelIndex &place) const;
    int columnToGoTo() const;

    bool m_sortable = true;
    int m_column = -1;
    Qt::SortOrder m_direction = Qt::AscendingOrder;
    mutable bool m_isSorted = false, m_isPlaced = false;
    QList<bool> m_hidden;              // of each row, up to the last that ever was
    mutable QList<int> m_order;        // all rows, sorted
    mutable QList<int> m_seen;         // those that are not hidden, in the order in which they are seen
    mutable QList<int> m_laidOut;      // the same in the order of the model
    mutable QList<int> m_numberInSeen; // of each row; -1 of a hidden one
    mutable QList<int> m_numberInLaidOut;
    QString m_typed; // to look for
    QElapsedTimer m_sinceTyped;
};

} // namespace quillmere
