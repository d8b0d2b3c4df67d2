#pragma once

#include "i18n/ExchangeUnits.h"

namespace quillmere {

// Tables for spreadsheets: a line with the names of the columns Source, Translation, State and Places, then
// a line a unit. Cells are quoted as in RFC 4180 whatever separates them.
QString tableText(const ExchangeTable &table, QChar separator);

// Reads a text whose lines end in LF. Columns may stand in any order, beside others; State may be missing.
// What separates them is `separator`, or what a first line `sep=` says, else whatever of comma, semicolon and
// tab gives the columns. LineError where there are none, or quotes do not match.
ExchangeTable readTable(QStringView text, QChar separator);

} // namespace quillmere
