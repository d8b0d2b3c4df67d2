#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

// Why a thing cannot have this name, as a sentence for a person; empty where it can.
QString whyNotRename(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
                     const ThemeIndex &index);

} // namespace quillmere
