#include "controls/ListColumns.h"

#include "controls/ListView.h"

#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSettings>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr int kLeast = 16;       // pixels
constexpr int kMost = 2000;      // pixels; a text of a damaged file may be much longer
constexpr int kLeastShared = 40; // pixels that a column keeps beside others made wider

} // namespace

ListColumns::ListColumns(ListView &list) : QObject(&list), m_list(list)
{
    QHeaderView *header = list.header();
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(kLeast);
    header->setSectionsMovable(false);
    m_own.fill(0, list.model()->columnCount());
    // The mouse drags a divider, or a double click on it fits the column; who else sets widths is this class.
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_layingOut && m_remembers && width > 0)
            takeWidth(column, width);
    });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint &at) {
        auto *menu = new QMenu(header);
        menu->setObjectName(QStringLiteral("mnuHeader"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        addItems(*menu);
        menu->popup(header->mapToGlobal(at));
    });
}

void ListColumns::setShares(const QList<int> &shares)
{
    const QScopedValueRollback layingOut(m_layingOut, true);
    m_shares = shares;
    for (int column = 0; column < m_own.size(); ++column)
        m_list.setColumnHidden(column, share(column) == 0);
}

int ListColumns::lastShown() const
{
    int last = int(m_own.size()) - 1;
    while (last > 0 && share(last) == 0)
        --last;
    return last;
}

void ListColumns::takeWidth(int column, int width)
{
    // Beyond the last column is nothing that could give way.
    if (column == lastShown()) {
        for (int other = 0; other < column; ++other)
            m_own[other] = share(other) > 0 ? m_list.columnWidth(other) : 0;
    }
    m_own[column] = std::clamp(width, kLeast, kMost);
    layOut();
    QList<QVariant> widths(m_own.begin(), m_own.end());
    if (!key().isEmpty())
        QSettings().setValue(key(), widths);
}

void ListColumns::layOut()
{
    const bool isNested = m_layingOut;
    const QScopedValueRollback layingOut(m_layingOut, true);
    const int whole = m_list.viewport()->width(), last = lastShown();
    int left = whole, shares = 0, allShares = 0;
    for (int column = 0; column <= last; ++column) {
        const int own = m_own.at(column);
        left -= own;
        shares += own > 0 ? 0 : share(column);
        allShares += share(column);
    }
    const bool anyOwn = shares < allShares;
    m_list.setHorizontalScrollBarPolicy(anyOwn ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    QList<int> widths = m_own;
    for (int column = 0; column <= last; ++column) {
        int &width = widths[column];
        if (share(column) > 0 && width == 0) {
            width = left * share(column) / shares;
            if (anyOwn)
                width = std::max(width, std::clamp(whole * share(column) / allShares, kLeast, kLeastShared));
            left -= width;
            shares -= share(column);
        }
    }
    giveWay(widths, left);
    if (anyOwn && left > 0)
        widths[last] += left; // no empty stretch behind it
    for (int column = 0; column <= last; ++column) {
        if (share(column) > 0)
            m_list.setColumnWidth(column, widths[column]);
    }
    // The first width has the list count its rows, and the scroll bar comes or goes.
    if (!isNested && m_list.viewport()->width() != whole)
        layOut();
}

// Where narrow columns keep more than their share, a wide one gives way: `left` is less than 0 then.
void ListColumns::giveWay(QList<int> &widths, int left) const
{
    for (int column = 0; column < widths.size() && left < 0; ++column) {
        if (m_own.at(column) > 0 || widths[column] <= kLeastShared)
            continue;
        const int given = std::min(-left, widths[column] - kLeastShared);
        widths[column] -= given;
        left += given;
    }
}

QString ListColumns::key() const
{
    const QString window = m_list.window()->objectName(), list = m_list.objectName();
    return window.isEmpty() || list.isEmpty() ? QString() : QString(u"columns/" + window + u'/' + list);
}

void ListColumns::remember()
{
    if (std::exchange(m_remembers, true))
        return;
    const QVariantList widths = key().isEmpty() ? QVariantList() : QSettings().value(key()).toList();
    if (widths.size() != m_own.size())
        return; // of another release, with other columns
    for (int column = 0; column < m_own.size(); ++column) {
        const int width = widths[column].toInt();
        m_own[column] = width > 0 && share(column) > 0 ? std::clamp(width, kLeast, kMost) : 0;
    }
    layOut();
}

void ListColumns::fitAll()
{
    for (int column = 0; column < m_own.size(); ++column) {
        if (share(column) > 0)
            m_list.resizeColumnToContents(column);
    }
}

void ListColumns::shareAll()
{
    m_own.fill(0);
    if (!key().isEmpty())
        QSettings().remove(key());
    layOut();
}

void ListColumns::addItems(QMenu &menu)
{
    menu.setToolTipsVisible(true);
    const auto add = [this, &menu](const QString &caption, const QString &name, const QString &tip,
                                   const auto &command) {
        QAction *item = menu.addAction(caption);
        item->setObjectName(name);
        item->setToolTip(tip);
        connect(item, &QAction::triggered, this, command);
        return item;
    };
    const QHeaderView *header = m_list.header();
    const int sorted = header->isSortIndicatorShown() ? header->sortIndicatorSection() : -1;
    const bool isUp = header->sortIndicatorOrder() == Qt::AscendingOrder;
    for (int column = 0; m_list.isSortable() && column < m_own.size(); ++column) {
        if (share(column) == 0)
            continue;
        const QString caption = m_list.model()->headerData(column, Qt::Horizontal).toString();
        const Qt::SortOrder order = column == sorted && isUp ? Qt::DescendingOrder : Qt::AscendingOrder;
        const QString what = caption.isEmpty() ? tr("Column %1").arg(column + 1) : caption;
        QAction *item =
            add((order == Qt::AscendingOrder ? tr("Sort by %1") : tr("Sort by %1, from the End")).arg(what),
                QStringLiteral("mnuSortBy(%1)").arg(column), tr("Sorts the rows by this column."),
                [this, column, order] { m_list.sortBy(column, order); });
        item->setCheckable(true);
        item->setChecked(column == sorted);
    }
    if (m_list.isSortable()) {
        QAction *item = add(tr("File Order"), QStringLiteral("mnuFileOrder"),
                            tr("Shows the rows in the order of the file."),
                            [this] { m_list.sortBy(-1, Qt::AscendingOrder); });
        item->setCheckable(true);
        item->setChecked(sorted < 0);
        menu.addSeparator();
    }
    add(tr("Fit Columns"), QStringLiteral("mnuFitColumns"), tr("Makes each column as wide as its texts."),
        [this] { fitAll(); });
    add(tr("Default Widths"), QStringLiteral("mnuDefaultWidths"), tr("Resets the widths of the columns."),
        [this] { shareAll(); })
        ->setEnabled(std::ranges::any_of(m_own, [](int width) { return width > 0; }));
}

} // namespace quillmere
