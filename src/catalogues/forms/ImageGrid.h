#pragma once

#include <QAbstractItemView>

namespace quillmere {

class ListView;
class Thumbnails;

// The rows of the image list as a grid of thumbnails with the ID below each. It lies over the list and shares
// with it what is selected, ticked, filtered and sorted, its keys and its context menu: whoever asks the list
// need not know which of the two is seen. Items have one size, so that their places need no layout.
class ImageGrid : public QAbstractItemView
{
    Q_OBJECT

public:
    ImageGrid(ListView &list, const Thumbnails &thumbnails);

    // Comes in the place of the list, or goes; the keyboard stays with the rows.
    void appear(bool on);
    // The rows in view, and those about to be.
    QModelIndexList inView() const;

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void reset() override;
    void dataChanged(const QModelIndex &first, const QModelIndex &last,
                     const QList<int> &roles = {}) override;
    void doItemsLayout() override;

signals:
    // Thumbnails are seen that are not made yet.
    void wanting();

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override { return 0; }
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &index) const override;
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void updateGeometries() override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void listRows();
    void layOutSoon();
    void measure();
    QModelIndex itemAt(int number) const;
    QRect placeOf(int number) const; // in the viewport
    void showToolTip(const QPoint &at, const QPoint &global);

    ListView &m_list;
    const Thumbnails &m_thumbnails;
    QList<int> m_rows;    // of the model, in the order in which they are seen
    QList<int> m_numbers; // of each row in that; -1 of one that is not seen
    QSize m_item{1, 1};   // pixels
    int m_columns = 1;
    QPersistentModelIndex m_hovered;
};

} // namespace quillmere
