#include "controls/ReadableColours.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr double kReadable = 4.5; // contrast of text that WCAG asks for
constexpr float kSteps = 20;

double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        return part <= 0.04045F ? double(part) / 12.92 : std::pow((double(part) + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor &text, const QColor &ground)
{
    const double one = luminance(text), other = luminance(ground);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor mixed(const QColor &text, const QColor &ground, float share)
{
    const auto part = [share](float of, float on) { return of * share + on * (1 - share); };
    return QColor::fromRgbF(part(text.redF(), ground.redF()), part(text.greenF(), ground.greenF()),
                            part(text.blueF(), ground.blueF()));
}

// Half the text's strength where that can be read, as platforms have it, and as much more as it takes.
QPalette readablePlaceholders(const QPalette &palette)
{
    QPalette own;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor text = palette.color(group, QPalette::Text),
                     ground = palette.color(group, QPalette::Base);
        float share = 0.5F;
        while (share < 1 && contrast(mixed(text, ground, share), ground) < kReadable)
            share += 1 / kSteps;
        own.setColor(group, QPalette::PlaceholderText, mixed(text, ground, std::min(share, 1.F)));
    }
    return own;
}

} // namespace quillmere
