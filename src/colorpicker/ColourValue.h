#pragma once

#include "markup/ColourCode.h"

#include <QtGlobal>

namespace quillmere {

// A colour as one number: red in the low byte, green in the middle, blue in the high one. What stands above
// its 24 bits does not count.
Channels channelsOf(quint32 colour);
quint32 colourValue(const Channels &channels);

// How many characters of a text of digits may stand so that its number is at most 255; all of them where the
// whole is. What follows the digits the text begins with does not count.
qsizetype validLength(QStringView digits);
// The number a text begins with, 0 where it begins with none, 255 where it is more.
int channelValue(QStringView digits);

} // namespace quillmere
