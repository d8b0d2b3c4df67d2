#pragma once

#include "theme/ThemeEdit.h"

#include <QString>

#include <optional>

namespace quillmere {

// The change that puts an entry into the text of a catalogue, before its last `closing` tag (in letters of
// any case) and on a line of its own where that one has one. Nothing where there is no such tag.
std::optional<RangeChange> entryBefore(QStringView closing, const QString &text, const QString &entry);

// Why a catalogue that was read so cannot be written with this name in it and stay in its code page, as a
// sentence for a person; empty where it can.
QString whyNotIn(const Encoding &encoding, const QString &name);

} // namespace quillmere
