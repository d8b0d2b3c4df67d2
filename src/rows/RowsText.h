#pragma once

#include "rows/ListRows.h"

#include <optional>

namespace quillmere {

// Whether the same stands in both. A file knows nothing of check marks.
bool isSameButForChecks(const QList<ListRows::Row> &a, const QList<ListRows::Row> &b);

// Rows as a text that gives them back to the letter, check marks too: a line a row, cells divided by tabs.
QString rowsToText(const QList<ListRows::Row> &rows);
// Nothing where the text is damaged.
std::optional<QList<ListRows::Row>> rowsFromText(const QString &text);

} // namespace quillmere
