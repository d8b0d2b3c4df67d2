#pragma once

#include "rows/ListRows.h"

#include <array>

namespace quillmere {

// The items of the View menu by the index of mnuV, and "Fixed" of the Window menu.
struct ViewOptions
{
    enum Item { Overflow, Name, Image, String, Size, Position };
    std::array<bool, 6> shown = {true, false, true, true, false, false};
    bool fixed = true;
};

// The size of the row named "font_prog", which every text without a font of its own takes; empty without such
// a row.
QString defaultFontSize(const ListRows &lvFont);

// The page as the browser gets it: the renderer's page with the base style sheet, the rules of the View menu,
// a rule hiding every ticked row of lvBlock, and the two key colours made transparent.
QString BuildPreviewPage(const QString &html, const ViewOptions &options, const QString &fontSize,
                         const QList<ListRows::Row> &lvBlock);
inline QString BuildPreviewPage(const QString &html, const ViewOptions &options, const QString &fontSize,
                                const ListRows &lvBlock)
{
    return BuildPreviewPage(html, options, fontSize, lvBlock.rows());
}

// The size of the browser for one of the two receiver screens, in twips: 600 more in both directions unless
// fixed.
struct TwipSize
{
    int width = 0;
    int height = 0;
};
enum class Screen { S1024x576, S1280x720 };
TwipSize browserSize(Screen screen, bool fixed);
// Which screen a browser of this width (twips) shows; 15970 lies between the two.
Screen screenOfWidth(int twips);
// The screen a theme is made for; 1024 x 576 where it names neither size.
Screen screenOfTheme(const QString &width, const QString &height);

} // namespace quillmere
