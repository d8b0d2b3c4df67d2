#include "canvas.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace aurora {

namespace {

// The 8 x 8 threshold matrix, built by the usual interleaving of the bits of x^y and y.
std::array<double, 64> thresholds()
{
    std::array<double, 64> table{};
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            int value = 0;
            for (int bit = 0; bit < 3; ++bit) {
                value = (value << 2) | ((((x ^ y) >> bit) & 1) << 1) | ((y >> bit) & 1);
            }
            table[static_cast<std::size_t>(y * 8 + x)] = (value + 0.5) / 64.0;
        }
    }
    return table;
}

double scatter(int n, int seed)
{
    auto h = static_cast<std::uint32_t>(n) * 2654435761u + static_cast<std::uint32_t>(seed) * 40503u;
    h ^= h >> 15;
    h *= 2246822519u;
    h ^= h >> 13;
    h *= 3266489917u;
    h ^= h >> 16;
    return h / 4294967295.0;
}

int channel(double value, double threshold)
{
    return static_cast<int>(std::floor(std::clamp(value, 0.0, 1.0) * 254.999 + threshold));
}

} // namespace

Light lightOf(const QColor &color)
{
    return {color.redF(), color.greenF(), color.blueF()};
}

Light blend(const Light &from, const Light &to, double share)
{
    const double s = std::clamp(share, 0.0, 1.0);
    return {from.r + (to.r - from.r) * s, from.g + (to.g - from.g) * s, from.b + (to.b - from.b) * s};
}

Light plus(const Light &base, const Light &glow, double strength)
{
    return {base.r + glow.r * strength, base.g + glow.g * strength, base.b + glow.b * strength};
}

QRgb rounded(const Light &light, int x, int y)
{
    static const std::array<double, 64> table = thresholds();
    const double t = table[static_cast<std::size_t>((y & 7) * 8 + (x & 7))];
    return qRgb(channel(light.r, t), channel(light.g, t), channel(light.b, t));
}

QImage blank(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

QColor faded(const QColor &color, double alpha)
{
    QColor result = color;
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}

double wave(double x, int seed)
{
    const double floor = std::floor(x);
    const int n = static_cast<int>(floor);
    const double f = x - floor;
    const double s = f * f * (3 - 2 * f);
    return scatter(n, seed) * (1 - s) + scatter(n + 1, seed) * s;
}

void Folder::save(const QImage &picture, const QString &kind, const QString &id)
{
    if (!m_failure.isEmpty()) {
        return;
    }
    const QString folder = m_root + u'/' + kind;
    const QString file = folder + u'/' + id + QStringLiteral(".png");
    // Quality 0 asks the PNG writer for its strongest compression.
    if (!QDir().mkpath(folder) || !picture.save(file, "PNG", 0)) {
        m_failure = file;
        return;
    }
    ++m_written;
}

QString sized(const QString &name, int width, int height)
{
    return QStringLiteral("%1_%2x%3").arg(name).arg(width).arg(height);
}

} // namespace aurora
