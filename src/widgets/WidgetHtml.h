#pragma once

#include <QString>

#include <functional>

namespace quillmere {

class ListRows;

// Full path of the picture with this ID, or empty.
using ImageLookup = std::function<QString(const QString &id)>;

// Draws the markup of one or more widget windows as an HTML page: a div a block, placed by a style rule keyed
// on its name. Refills lvBlock (text = class, sub-item 1 = name), one row a block. Fonts come from the rows
// of lvFont. Lengths are pixels without a unit, so the page has to be shown in quirks mode. What a block
// leaves unset it takes from the block before it. Time is linear in the text.
QString BuildWidgetHtml(const QString &markup, const ImageLookup &GetImg, const ListRows &lvFont,
                        ListRows &lvBlock);

} // namespace quillmere
