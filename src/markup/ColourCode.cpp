#include "markup/ColourCode.h"

namespace quillmere {

namespace {

// -1 for what is no hexadecimal digit; signs and blanks, which number parsers let pass, are none.
int digit(QChar unit)
{
    const char16_t c = unit.unicode();
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    const char16_t lower = c | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

} // namespace

std::optional<Channels> channelsOf(QStringView code)
{
    if (code.size() != kColourCodeLength)
        return std::nullopt;
    int value = 0;
    for (const QChar unit : code.sliced(1)) {
        const int next = digit(unit);
        if (next < 0)
            return std::nullopt;
        value = value * 16 + next;
    }
    return Channels{value >> 16, value >> 8 & 255, value & 255};
}

QString colourCode(const Channels &colour)
{
    const int value = colour.red << 16 | colour.green << 8 | colour.blue;
    return u'#' + QStringLiteral("%1").arg(value, 6, 16, QLatin1Char('0')).toUpper();
}

} // namespace quillmere
