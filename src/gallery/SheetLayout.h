#pragma once

#include <QPoint>
#include <QSize>

#include <optional>

namespace quillmere {

// Where the pictures of many windows stand in one. Pixels.
struct SheetLayout
{
    static constexpr int kGap = 12;
    static constexpr int kCaption = 22; // height of the line below a picture

    int columns = 1;
    QSize picture; // of one window
    QSize whole;

    // `count` windows of a screen of this size in so many columns; pictures are as large as is usual, or
    // smaller where there are so many that the whole would not fit in memory. Nothing where none of a size
    // worth looking at fits.
    static std::optional<SheetLayout> of(qsizetype count, int columns, QSize screen);

    QSize cell() const { return picture + QSize(0, kCaption); }
    QPoint placeOf(qsizetype number) const;
};

} // namespace quillmere
