#pragma once

#include "rows/ListRows.h"

namespace quillmere {

// The block list as text for the clipboard: class, "[*]", name and CR LF a row.
QString linesOfBlocks(const ListRows &blocks);

// The rows that such lines stand for; a line without "[*]" is none. Lines end in CR LF or in LF.
QList<ListRows::Row> blocksOfLines(const QString &lines);

} // namespace quillmere
