#pragma once

#include "rows/ListRows.h"

#include <functional>

namespace quillmere {

// Full path of the picture with this ID, or empty.
using ImageLookup = std::function<QString(const QString &id)>;

struct WidgetPage
{
    QString html;
    QList<ListRows::Row> blocks; // text = class, sub-item 1 = name, one row a block
};

// Draws the markup of one or more widget windows as an HTML page: a div a block, placed by a style rule keyed
// on its name. Fonts come from the rows of lvFont. Lengths are pixels without a unit, so the page has to be
// shown in quirks mode. What a block leaves unset it takes from the block before it. Time is linear in the
// text. What GetImg throws comes through.
WidgetPage drawWidgets(const QString &markup, const ImageLookup &GetImg, const QList<ListRows::Row> &lvFont);
// The same; refills lvBlock and returns the page.
QString BuildWidgetHtml(const QString &markup, const ImageLookup &GetImg, const ListRows &lvFont,
                        ListRows &lvBlock);

} // namespace quillmere
