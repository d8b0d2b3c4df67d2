#include "rows/ListRows.h"

#include "rows/ToolTip.h"

#include <algorithm>

namespace quillmere {

ListRows::ListRows(const QStringList &captions, Checks checks, QObject *parent)
    : QAbstractTableModel(parent), m_captions(captions), m_checks(checks)
{
}

void ListRows::clear()
{
    if (!m_rows.isEmpty())
        assign({});
}

void ListRows::add(const QString &text, const QStringList &subItems)
{
    const int row = count();
    beginInsertRows({}, row, row);
    m_rows.append(Row{text, subItems});
    endInsertRows();
    emit edited();
}

void ListRows::assign(QList<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void ListRows::untickAll()
{
    for (int row = 0; row < count(); ++row) {
        if (!m_rows.at(row).checked)
            continue;
        m_rows[row].checked = false;
        emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
    }
}

void ListRows::update(QList<Row> rows)
{
    untickAll();
    replaceDifferent(std::move(rows));
}

void ListRows::edit(QList<Row> rows)
{
    replaceDifferent(std::move(rows));
    emit edited();
}

void ListRows::replaceDifferent(QList<Row> rows)
{
    const auto isSame = [](const Row &a, const Row &b) {
        return a.text == b.text && a.subItems == b.subItems && a.checked == b.checked;
    };
    const int most = int(qMin(m_rows.size(), rows.size()));
    const int head = int(std::mismatch(m_rows.cbegin(), m_rows.cbegin() + most, rows.cbegin(), isSame).first -
                         m_rows.cbegin());
    int tail = 0;
    while (tail < most - head && isSame(m_rows.at(count() - 1 - tail), rows.at(rows.size() - 1 - tail)))
        ++tail;

    const int changed = most - head - tail;
    std::copy_n(rows.cbegin() + head, changed, m_rows.begin() + head);
    const int behind = head + changed;
    const int more = int(rows.size()) - count();
    if (more < 0) {
        beginRemoveRows({}, behind, behind - more - 1);
        m_rows.remove(behind, -more);
        endRemoveRows();
    } else if (more > 0) {
        beginInsertRows({}, behind, behind + more - 1);
        m_rows = std::move(rows);
        endInsertRows();
    }
    if (changed > 0)
        emit dataChanged(index(head, 0), index(behind - 1, columnCount() - 1));
}

void ListRows::remove(int row)
{
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
    emit edited();
}

void ListRows::setSub(int row, int number, const QString &text)
{
    Q_ASSERT(number > 0);
    if (m_rows.at(row).sub(number) == text)
        return;
    QStringList &subItems = m_rows[row].subItems;
    if (subItems.size() < number)
        subItems.resize(number);
    subItems[number - 1] = text;
    // A sub-item without a column is kept, and those who index it are told through the last column.
    const QModelIndex cell = index(row, qMin(number, columnCount() - 1));
    emit dataChanged(cell, cell, {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole});
    emit edited();
}

void ListRows::setChecked(int row, bool checked)
{
    if (m_rows.at(row).checked == checked)
        return;
    m_rows[row].checked = checked;
    const QModelIndex cell = index(row, 0);
    emit dataChanged(cell, cell, {Qt::CheckStateRole});
    emit checkChanged(row);
}

int ListRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

int ListRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_captions.size());
}

QVariant ListRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    if (role == Qt::CheckStateRole && index.column() == 0 && m_checks == Checks::Yes)
        return row.checked ? Qt::Checked : Qt::Unchecked;
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return {};
    const QString text = index.column() == 0 ? row.text : row.sub(index.column());
    // An empty tool tip would still cover the one of the view.
    if (role != Qt::ToolTipRole)
        return text;
    return text.isEmpty() ? QVariant() : plainToolTip(text);
}

bool ListRows::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::CheckStateRole ||
        index.column() != 0 || m_checks != Checks::Yes)
        return false;
    setChecked(index.row(), value.toInt() == Qt::Checked);
    return true;
}

QVariant ListRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= m_captions.size())
        return {};
    return m_captions.at(section);
}

Qt::ItemFlags ListRows::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == 0 && m_checks == Checks::Yes)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace quillmere
