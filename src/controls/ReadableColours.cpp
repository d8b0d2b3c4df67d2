#include "controls/ReadableColours.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr double kReadable = 4.5; // contrast of text that WCAG asks for
constexpr double kSeen = 3;       // of what is no text
constexpr float kSteps = 20;

double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        return part <= 0.04045F ? double(part) / 12.92 : std::pow((double(part) + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The least share of the text that has this contrast, from `share` on.
QColor mixedUntil(double least, const QColor &text, const QColor &ground, float share)
{
    while (share < 1 && contrast(mixed(text, ground, share), ground) < least)
        share += 1 / kSteps;
    return mixed(text, ground, std::min(share, 1.F));
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

QColor seenOn(const QColor &ground, const QColor &text)
{
    return mixedUntil(kSeen, text, ground, 1 / kSteps);
}

QColor readableGround(QColor ground, const QColor &text)
{
    const QColor far = contrast(text, Qt::black) > contrast(text, Qt::white) ? Qt::black : Qt::white;
    while (contrast(text, ground) < kReadable && ground != far)
        ground = mixed(far, ground, 1 / kSteps);
    return ground;
}

QColor focusOn(const QPalette &palette, const QColor &ground)
{
    const QColor highlight = palette.color(QPalette::Highlight);
    return contrast(highlight, ground) >= kSeen ? highlight : seenOn(ground, palette.color(QPalette::Text));
}

// Half the text's strength where that can be read, as platforms have it, and as much more as it takes.
QPalette readablePlaceholders(const QPalette &palette)
{
    QPalette own;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        own.setColor(group, QPalette::PlaceholderText,
                     mixedUntil(kReadable, palette.color(group, QPalette::Text),
                                palette.color(group, QPalette::Base), 0.5F));
    return own;
}

} // namespace quillmere
