#pragma once

#include "theme/ThemeEdit.h"

#include <QString>

#include <optional>

namespace quillmere {

// The change that puts an entry into the text of a catalogue, before its last `closing` tag (in letters of
// any case) and on a line of its own where that one has one. Nothing where there is no such tag.
std::optional<RangeChange> entryBefore(QStringView closing, const QString &text, const QString &entry);

} // namespace quillmere
