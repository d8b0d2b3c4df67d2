#pragma once

#include "browser/PagePlace.h"
#include "outline/Outline.h"
#include "stage/Hits.h"

namespace quillmere {

// Which block each div of the page is, for the page of this very text: in the order of the document, without
// what is not drawn. A block is known by its name and by which one of that name it is, so where the page has
// more or fewer divs of a name than there are blocks, none of them is told.
QList<Place> placesOfBlocks(const Outline &outline, const QList<PagePlace> &divs);

} // namespace quillmere
