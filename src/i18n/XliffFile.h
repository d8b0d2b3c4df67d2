#pragma once

#include "i18n/ExchangeUnits.h"

namespace quillmere {

// XLIFF 1.2. A character that XML cannot hold is an empty element <ph>.
QString xliffText(const ExchangeTable &table);

// Reads a text whose lines end in LF. A unit with other elements in its texts than marks is refused.
// LineError where it is no XLIFF 1, has a document type, or is nested or attributed as no XLIFF is.
ExchangeTable readXliff(QStringView text);

} // namespace quillmere
