#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace quillmere {

// The three channels of a colour, 0 to 255 each.
struct Channels
{
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Channels &) const = default;
};

// Catalogues may hold codes of any length; only those of this one stand for a colour.
inline constexpr qsizetype kColourCodeLength = 7;

// The channels of a colour code: seven characters, of which the first may be any and the others are two
// hexadecimal digits a channel. Nothing for any other text.
std::optional<Channels> channelsOf(QStringView code);

// "#RRGGBB", in capitals.
QString colourCode(const Channels &colour);

} // namespace quillmere
