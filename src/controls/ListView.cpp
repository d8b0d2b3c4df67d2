#include "controls/ListView.h"

#include "controls/ListColumns.h"
#include "controls/ReadableColours.h"
#include "controls/RowDelegate.h"
#include "controls/Tips.h"
#include "rows/ToolTip.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaMethod>
#include <QToolTip>

#include <utility>

namespace quillmere {

namespace {

constexpr float kDim = 0.35F; // of a selection's colour, in a list without the focus

// Of the context menu.
constexpr Tip kTips[] = {
    {"mnuRowOpen", "Does what a double click on the row does."},
    {"mnuRowRemove", "Removes the row from the list."},
    {"mnuRowCopy", "Copies the text of this cell."},
};

} // namespace

ListView::ListView(const QString &name, const QString &accessibleName, QAbstractItemModel &rows,
                   QWidget *parent)
    : OrderedTree(parent)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setModel(&rows);
    m_columns = new ListColumns(*this);
    setItemDelegate(new RowDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideLeft); // most lists begin with a path, and its end tells most
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->viewport()->installEventFilter(this);

    connect(this, &QTreeView::clicked, this,
            [this](const QModelIndex &index) { emit rowClicked(index.row()); });
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex &index) { emit rowOpened(index.row()); });
}

int ListView::selectedRow() const
{
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isRowSelected(current.row(), {}))
        return current.row();
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void ListView::setColumnShares(const QList<int> &shares)
{
    m_columns->setShares(shares);
}

void ListView::setColumnElideMode(int column, Qt::TextElideMode mode)
{
    m_elideModes.insert(column, mode);
}

Qt::TextElideMode ListView::columnElideMode(int column) const
{
    return m_elideModes.value(column, textElideMode());
}

void ListView::setMarks(int column, std::function<TextMark(int row)> marks)
{
    m_markedColumn = column;
    m_marks = std::move(marks);
}

TextMark ListView::markAt(const QModelIndex &index) const
{
    return m_marks && index.column() == m_markedColumn ? m_marks(index.row()) : TextMark();
}

void ListView::doItemsLayout()
{
    OrderedTree::doItemsLayout();
    emit laidOut();
}

// A selection is bright in the list that has the keyboard, and in no other.
void ListView::initViewItemOption(QStyleOptionViewItem *option) const
{
    OrderedTree::initViewItemOption(option);
    if (hasFocus() && isActiveWindow())
        return;
    const QColor bright = option->palette.color(QPalette::Active, QPalette::Highlight),
                 text = option->palette.color(QPalette::Text),
                 dim = mixed(bright, option->palette.color(QPalette::Base), kDim);
    option->palette.setColor(QPalette::Highlight, dim);
    option->palette.setColor(QPalette::HighlightedText, text);
}

void ListView::keyPressEvent(QKeyEvent *event)
{
    const int before = selectedRow();
    // The Menu key comes as a context menu event, this one does not everywhere.
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        const QPoint at = visualRect(currentIndex()).center();
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, at, viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(viewport(), &asked);
        event->accept();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && before >= 0) {
        emit rowOpened(before);
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Delete && before >= 0) {
        emit deletePressed(before);
        event->accept();
        return;
    }
    // Whichever column has the focus: the whole row is what is shown as current.
    if (event->key() == Qt::Key_Space && before >= 0 &&
        model()->flags(model()->index(before, 0)).testFlag(Qt::ItemIsUserCheckable)) {
        const QModelIndex box = model()->index(before, 0);
        const bool checked = box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model()->setData(box, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        event->accept();
        return;
    }
    QTreeView::keyPressEvent(event);
    const int after = selectedRow();
    if (after >= 0 && after != before)
        emit rowClicked(after);
}

void ListView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    m_columns->layOut();
}

void ListView::showEvent(QShowEvent *event)
{
    m_columns->remember();
    QTreeView::showEvent(event);
}

bool ListView::isWhole(const QModelIndex &index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QSize needed = itemDelegateForIndex(index)->sizeHint(option, index),
                there = visualRect(index).size();
    return needed.width() <= there.width() && needed.height() <= there.height();
}

bool ListView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const QModelIndex index = indexAt(static_cast<QHelpEvent *>(event)->pos());
        // What the rows have to say beyond their texts is said in any case.
        const bool isText = index.isValid() &&
                            index.data(Qt::ToolTipRole).toString() == plainToolTip(index.data().toString());
        const bool isUsual = itemDelegateForIndex(index) == itemDelegate();
        if (isText && isUsual && isWhole(index)) {
            QToolTip::hideText();
            return QAbstractScrollArea::viewportEvent(event); // there may be one of the list
        }
    }
    return QTreeView::viewportEvent(event);
}

void ListView::addRowItems(QMenu &menu, const QModelIndex &at)
{
    const QPersistentModelIndex cell = at; // the rows may become others while the menu is open
    const auto add = [&](const QString &caption, const char *name, const std::function<void()> &command) {
        QAction *item = menu.addAction(caption);
        item->setObjectName(QLatin1String(name));
        connect(item, &QAction::triggered, this, [cell, command] {
            if (cell.isValid())
                command();
        });
        return item;
    };
    if (isSignalConnected(QMetaMethod::fromSignal(&ListView::rowOpened)))
        menu.setDefaultAction(add(m_openCaption, "mnuRowOpen", [this, cell] { emit rowOpened(cell.row()); }));
    emit menuWanted(menu, at.row());
    menu.addSeparator();
    if (isSignalConnected(QMetaMethod::fromSignal(&ListView::deletePressed)))
        add(tr("Remove"), "mnuRowRemove", [this, cell] {
            emit deletePressed(cell.row());
        })->setShortcut(Qt::Key_Delete);
    add(tr("Copy Cell"), "mnuRowCopy", [cell] {
        QGuiApplication::clipboard()->setText(cell.data().toString());
    })->setShortcut(QKeySequence::Copy);
}

// Undo and Redo stand at the top, where people look for them.
void ListView::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard && isVisible();
    const int row = selectedRow();
    QModelIndex at = indexAt(event->pos());
    if (isKey || at.row() != row)
        at = row < 0 ? QModelIndex() : model()->index(row, std::max(0, currentIndex().column()));
    setFocus(); // the commands are about the list that has it
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnuRow"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction *action : actions()) {
        if (action->objectName().startsWith(u"mnuRows"))
            menu->addAction(action);
    }
    menu->addSeparator();
    if (at.isValid())
        addRowItems(*menu, at);
    menu->addSeparator();
    m_columns->addItems(*menu->addMenu(tr("Columns")));
    giveTips(*menu, kTips);
    menu->setToolTipsVisible(true);
    const QRect place = visualRect(at);
    menu->popup(isKey && at.isValid()
                    ? viewport()->mapToGlobal(QPoint(place.left() + place.height(), place.bottom()))
                    : event->globalPos());
    event->accept();
}

bool ListView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == header()->viewport() && event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int column = header()->logicalIndexAt(help->pos());
        if (column >= 0 && header()->sectionSizeHint(column) > header()->sectionSize(column)) {
            const QString caption = model()->headerData(column, Qt::Horizontal).toString();
            QToolTip::showText(help->globalPos(), plainToolTip(caption), header());
            return true;
        }
    }
    return QTreeView::eventFilter(watched, event);
}

} // namespace quillmere
