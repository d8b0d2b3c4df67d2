#include "rows/RowIndex.h"

#include "markup/mndIni.h"
#include "rows/ListRows.h"

namespace quillmere {

namespace {

QString stripped(QString name)
{
    return StripControlChars(name);
}

} // namespace

RowIndex::RowIndex(const ListRows &rows, int subItem) : m_rows(rows), m_subItem(subItem)
{
    const auto forget = [this] { m_indexed = false; };
    QObject::connect(&rows, &QAbstractItemModel::dataChanged, &m_listener, forget);
    QObject::connect(&rows, &QAbstractItemModel::rowsInserted, &m_listener, forget);
    QObject::connect(&rows, &QAbstractItemModel::rowsRemoved, &m_listener, forget);
    QObject::connect(&rows, &QAbstractItemModel::modelReset, &m_listener, forget);
}

int RowIndex::Snapshot::find(const QString &name) const
{
    return m_rowOfName.value(stripped(name), -1);
}

RowIndex::Snapshot RowIndex::snapshot() const
{
    find({}); // for the index
    return m_names;
}

int RowIndex::find(const QString &name) const
{
    if (!m_indexed) {
        QHash<QString, int> rowOfName;
        rowOfName.reserve(m_rows.count());
        // From the end, so that the first row of a name is the one that stays.
        for (int row = m_rows.count() - 1; row >= 0; --row)
            rowOfName.insert(stripped(m_rows.sub(row, m_subItem)), row);
        m_names.m_rowOfName = std::move(rowOfName);
        m_indexed = true;
    }
    return m_names.find(name);
}

} // namespace quillmere
