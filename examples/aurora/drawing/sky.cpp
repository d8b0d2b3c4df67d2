// The sky is computed pixel by pixel rather than painted: only so can the faint glow be rounded once, at the
// end.
#include "sheets.h"

#include <array>
#include <cmath>

namespace aurora {

namespace {

// A curtain hangs from a wavy lower edge: below it the light ends within a hand's breadth, above it fades
// slowly.
struct Curtain
{
    double edge;
    double swing;
    double pace;
    double phase;
    double height;
    double strength;
    QColor low;
    QColor high;
};

const std::array<Curtain, 3> &curtains()
{
    static const std::array<Curtain, 3> all{{
        {0.60, 0.075, 4.1, 0.4, 0.20, 0.50, QColor(38, 214, 178), QColor(28, 92, 190)},
        {0.42, 0.090, 3.2, 2.1, 0.26, 0.40, QColor(44, 190, 210), QColor(92, 60, 190)},
        {0.27, 0.060, 5.3, 4.4, 0.17, 0.26, QColor(70, 150, 230), QColor(120, 52, 170)},
    }};
    return all;
}

Light ground(double v)
{
    const Light top = lightOf(palette::night);
    const Light middle = lightOf(palette::deep);
    const Light bottom = lightOf(palette::sea);
    return v < 0.55 ? blend(top, middle, v / 0.55) : blend(middle, bottom, (v - 0.55) / 0.45 * 0.8);
}

double rays(double u, int seed)
{
    return 0.52 + 0.30 * wave(u * 26, seed) + 0.18 * wave(u * 83, seed + 7);
}

Light withCurtain(const Light &base, const Curtain &c, double u, double v, int seed)
{
    const double lean = u + 0.06 * (v - c.edge);
    const double edge = c.edge + c.swing * std::sin(c.pace * u + c.phase) +
                        0.4 * c.swing * std::sin(2.6 * c.pace * u + 1.7 * c.phase);
    const double above = edge - v;
    const double reach = c.height * (0.7 + 0.6 * wave(lean * 9, seed + 3));
    const double glow = above < 0 ? std::exp(above / 0.035) : std::exp(-above / reach);
    // The show leans to the right, where the screens keep their pictures.
    const double side = 0.35 + 0.65 * std::exp(-std::pow((u - 0.70) / 0.38, 2));
    const Light tint = blend(lightOf(c.low), lightOf(c.high), above / (1.5 * c.height));
    return plus(base, tint, glow * rays(lean, seed) * c.strength * side);
}

Light star(const Light &base, int x, int y, int width, int height)
{
    const double pick = wave(x, 1000 + y);
    if (pick < 0.99955 || width < 400 || y > height * 0.55) {
        return base;
    }
    return plus(base, {0.75, 0.85, 1.0}, 0.18 + 0.5 * wave(x + 0.5, 77 + y));
}

} // namespace

QImage sky(int width, int height, double strength)
{
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        const double v = (y + 0.5) / height;
        for (int x = 0; x < width; ++x) {
            const double u = (x + 0.5) / width;
            const Light bare = ground(v);
            Light lit = star(bare, x, y, width, height);
            int seed = 11;
            for (const Curtain &curtain : curtains()) {
                lit = withCurtain(lit, curtain, u, v, seed);
                seed += 20;
            }
            line[x] = rounded(blend(bare, lit, strength), x, y);
        }
    }
    return picture;
}

void drawBackgrounds(Folder &out)
{
    const QString kind = QStringLiteral("back");
    out.save(sky(1280, 720, 1.15), kind, QStringLiteral("bg_aurora"));
    out.save(sky(1280, 720, 0.5), kind, QStringLiteral("bg_dim"));
    out.save(lake(1280, 720), kind, QStringLiteral("video_sample"));
    out.save(lake(518, 292), kind, QStringLiteral("video_sample_518x292"));
}

} // namespace aurora
