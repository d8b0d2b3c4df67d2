#pragma once

#include "outline/Range.h"

#include <QSize>
#include <QString>

namespace quillmere {

// The screen that a window catalogue is made for.
struct CatalogueScreen
{
    QSize size;          // pixels; empty where the text does not say both
    Range width, height; // of the texts between the tags
};
CatalogueScreen screenIn(const QString &catalogue);

} // namespace quillmere
