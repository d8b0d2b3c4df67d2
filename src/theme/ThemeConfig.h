#pragma once

#include "outline/Range.h"

#include <QList>
#include <QString>

namespace quillmere {

struct ConfigEntry
{
    QString name;
    QString value; // as written
    Range range;   // of the element, with both tags
};
// The entries of the <config> element of a theme.xml, in the order of the text. The last one holds what
// stands behind the last closing tag, and no more than that.
QList<ConfigEntry> configEntries(const QString &text);

} // namespace quillmere
