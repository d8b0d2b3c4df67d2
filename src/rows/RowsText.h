#pragma once

#include "rows/ListRows.h"

#include <optional>

namespace quillmere {

// Rows as a text that gives them back to the letter, check marks too: a line a row, cells divided by tabs.
QString rowsToText(const QList<ListRows::Row> &rows);
// Nothing where the text is damaged.
std::optional<QList<ListRows::Row>> rowsFromText(const QString &text);

} // namespace quillmere
