#pragma once

#include "outline/Range.h"

#include <QList>

namespace quillmere {

// Where the receiver puts something in place of a part of a text: %d, %-5.1f, %1, %2$s, {name}; in the order
// of the text.
QList<Range> placesOfPlaceholders(QStringView text);

} // namespace quillmere
