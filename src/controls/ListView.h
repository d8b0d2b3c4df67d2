#pragma once

#include "controls/OrderedTree.h"

#include <QHash>

#include <functional>

class QMenu;

namespace quillmere {

class ListColumns;

// What is marked in the text of a cell; nothing where the length is 0.
struct TextMark
{
    qsizetype start = 0, length = 0;
};

// A report list: shows rows, mostly those of a ListRows; whole rows are selected, columns share the width. A
// tooltip shows what is cut.
class ListView : public OrderedTree
{
    Q_OBJECT

public:
    // The accessible name is what a screen reader says for the list.
    ListView(const QString &name, const QString &accessibleName, QAbstractItemModel &rows,
             QWidget *parent = nullptr);

    // The selected row that has the focus, or the first selected one; -1 when none is selected. 0-based.
    int selectedRow() const;
    // Shares of the width for the columns, in order; a share of 0 hides the column. Missing ones are 1.
    void setColumnShares(const QList<int> &shares);
    // Where the texts of a column are cut that do not fit; the others are as textElideMode() says.
    void setColumnElideMode(int column, Qt::TextElideMode mode);
    Qt::TextElideMode columnElideMode(int column) const;
    // Marks a part of the text in the cells of a column.
    void setMarks(int column, std::function<TextMark(int row)> marks);
    TextMark markAt(const QModelIndex &index) const;
    void doItemsLayout() override;
    // What the context menu calls a double click on a row.
    void setOpenCaption(const QString &caption) { m_openCaption = caption; }
    ListColumns &columns() const { return *m_columns; }

signals:
    // A click on a row, or the arrow keys reached it.
    void rowClicked(int row);
    // A double click on a row, or Enter.
    void rowOpened(int row);
    // The context menu of a row is about to open, with Undo and Redo and what opens the row: whoever has more
    // to offer for the row adds it.
    void menuWanted(QMenu &menu, int row);
    // The Delete key on a selected row.
    void deletePressed(int row);
    // Rows have come, gone, or been hidden.
    void laidOut();

protected:
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    // Of the header.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addRowItems(QMenu &menu, const QModelIndex &at);
    bool isWhole(const QModelIndex &index) const;

    ListColumns *m_columns;
    QString m_openCaption = tr("Open");
    QHash<int, Qt::TextElideMode> m_elideModes;
    int m_markedColumn = -1;
    std::function<TextMark(int row)> m_marks;
};

} // namespace quillmere
