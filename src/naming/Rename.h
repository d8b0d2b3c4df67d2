#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

// Why nothing of this kind, a block where there is none, can have this name, whatever others are called, as a
// sentence for a person; empty where one can.
QString whyNotName(std::optional<NameKind> kind, const QString &name);

// Why a file of the theme, here and on other systems, cannot have this name; empty where one can.
QString whyNotFile(const QString &name);

// Why a catalogue that was read so cannot be written with this name in it and stay in its code page, as a
// sentence for a person; empty where it can.
QString whyNotIn(const Encoding &encoding, const QString &name);

// Why a thing cannot have this name, as a sentence for a person; empty where it can.
QString whyNotRename(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
                     const ThemeIndex &index);

} // namespace quillmere
