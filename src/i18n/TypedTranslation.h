#pragma once

#include "rows/ListRows.h"

namespace quillmere {

// A translation on its way from the hand into a row; lines end in LF while it is typed.

// Why no language file can hold it; empty where one can.
QString reasonAgainst(QStringView typed);

// As the row holds it: with the line ends that its texts have, CR LF where they have none.
QString inRow(const QString &typed, const ListRows::Row &string);

} // namespace quillmere
