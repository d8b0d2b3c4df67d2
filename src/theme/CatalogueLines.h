#pragma once

#include "theme/ThemeEdit.h"

#include <QStringList>

#include <optional>

namespace quillmere {

// The change that puts lines before the last `closing` tag of a catalogue, in letters of any case, indented
// as the last element that begins with `like`. Nothing where there is no such tag.
std::optional<RangeChange> linesBefore(QStringView closing, QStringView like, const QString &text,
                                       const QStringList &lines);

} // namespace quillmere
