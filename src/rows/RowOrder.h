#pragma once

#include <QList>
#include <QStringList>

namespace quillmere {

// The order in which rows are seen that are sorted by one column, of which `cells` are the texts: row
// numbers, 0-based. A column of numbers goes by their value, any other by what its texts say to a reader of
// the system's language, ignoring letter case and with the numbers in them by value; empty cells are less
// than all others. Rows that are equal stay in the order they had, whichever way the sorting goes.
QList<int> sortedRows(const QStringList &cells, Qt::SortOrder order);

} // namespace quillmere
