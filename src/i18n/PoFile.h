#pragma once

#include "i18n/ExchangeUnits.h"

namespace quillmere {

// PO, the files of gettext. A unit is an entry, a fuzzy one has the flag; that it was translated is not said.
QString poText(const ExchangeTable &table);

// Reads a text whose lines end in LF. Obsolete entries are passed over, contexts too: a language has one
// translation for a source. An entry with plural forms is refused. LineError where it is no PO file.
ExchangeTable readPo(QStringView text);

} // namespace quillmere
