#include "colorpicker/ColourValue.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMost = 255;

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

} // namespace

Channels channelsOf(quint32 colour)
{
    return {int(colour & 255), int((colour & 65280) / 256), int((colour & 16711680) / 65536)};
}

quint32 colourValue(const Channels &channels)
{
    return quint32(channels.red) + quint32(channels.green) * 256 + quint32(channels.blue) * 65536;
}

qsizetype validLength(QStringView digits)
{
    int value = 0;
    for (qsizetype i = 0; i < digits.size() && isDigit(digits[i]); ++i) {
        value = value * 10 + digits[i].digitValue();
        if (value > kMost)
            return i;
    }
    return digits.size();
}

int channelValue(QStringView digits)
{
    int value = 0;
    for (const QChar unit : digits) {
        if (!isDigit(unit) || value > kMost)
            break;
        value = value * 10 + unit.digitValue();
    }
    return std::min(value, kMost);
}

} // namespace quillmere
