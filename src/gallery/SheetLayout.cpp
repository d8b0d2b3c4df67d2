#include "gallery/SheetLayout.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kUsualWidth = 320, kLeastWidth = 48;
constexpr qint64 kMostPixels = 60'000'000; // of the whole: four bytes each

SheetLayout layoutOf(qsizetype count, int columns, QSize screen, int width)
{
    SheetLayout layout;
    layout.columns = columns;
    layout.picture = {width, std::max(1, width * screen.height() / std::max(1, screen.width()))};
    const qsizetype rows = (count + columns - 1) / columns;
    const qint64 wide = qint64(columns) * (layout.cell().width() + SheetLayout::kGap) + SheetLayout::kGap;
    const qint64 high = rows * (layout.cell().height() + SheetLayout::kGap) + SheetLayout::kGap;
    if (wide <= kMostPixels && high <= kMostPixels && wide * high <= kMostPixels)
        layout.whole = QSize(int(wide), int(high));
    return layout;
}

} // namespace

std::optional<SheetLayout> SheetLayout::of(qsizetype count, int columns, QSize screen)
{
    for (int width = kUsualWidth; width >= kLeastWidth; width -= 8) {
        const SheetLayout layout = layoutOf(count, columns, screen, width);
        if (!layout.whole.isEmpty())
            return layout;
    }
    return {};
}

QPoint SheetLayout::placeOf(qsizetype number) const
{
    return {kGap + int(number % columns) * (cell().width() + kGap),
            kGap + int(number / columns) * (cell().height() + kGap)};
}

} // namespace quillmere
