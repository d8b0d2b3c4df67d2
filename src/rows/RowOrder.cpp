#include "rows/RowOrder.h"

#include <QCollator>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <vector>

namespace quillmere {

namespace {

// The values, where each cell is a number or empty.
std::optional<std::vector<double>> numbersIn(const QStringList &cells)
{
    std::vector<double> numbers;
    numbers.reserve(size_t(cells.size()));
    for (const QString &cell : cells) {
        bool isNumber = true;
        const double number =
            cell.isEmpty() ? -std::numeric_limits<double>::infinity() : cell.toDouble(&isNumber);
        if (!isNumber || (!cell.isEmpty() && !std::isfinite(number)))
            return std::nullopt;
        numbers.push_back(number);
    }
    return numbers;
}

// Comparing two texts by the rules of a language takes long, comparing the keys made of them does not.
std::vector<QCollatorSortKey> keysOf(const QStringList &cells)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(cells.size()));
    for (const QString &cell : cells)
        keys.push_back(collator.sortKey(cell.toCaseFolded())); // where there are no rules, case counts
    return keys;
}

template <typename Key>
void sortBy(const std::vector<Key> &keys, Qt::SortOrder order, QList<int> &rows)
{
    std::stable_sort(rows.begin(), rows.end(), [&keys, order](int a, int b) {
        return order == Qt::AscendingOrder ? keys[size_t(a)] < keys[size_t(b)]
                                           : keys[size_t(b)] < keys[size_t(a)];
    });
}

} // namespace

QList<int> sortedRows(const QStringList &cells, Qt::SortOrder order)
{
    QList<int> rows(cells.size());
    std::iota(rows.begin(), rows.end(), 0);
    if (const auto numbers = numbersIn(cells))
        sortBy(*numbers, order, rows);
    else
        sortBy(keysOf(cells), order, rows);
    return rows;
}

} // namespace quillmere
