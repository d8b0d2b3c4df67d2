#pragma once

namespace quillmere {

// Layout is kept in twips, 15 to a pixel.
constexpr int kTwipsPerPixel = 15;
constexpr int toPixels(int twips)
{
    return twips / kTwipsPerPixel;
}
constexpr int toTwips(int pixels)
{
    return pixels * kTwipsPerPixel;
}

} // namespace quillmere
