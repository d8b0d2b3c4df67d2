// What every sheet of the theme is drawn with: blank pictures, the palette, and the one way to disk.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace aurora {

namespace palette {
inline const QColor night(6, 11, 31);
inline const QColor deep(10, 24, 56);
inline const QColor sea(9, 44, 66);
inline const QColor teal(11, 124, 126);
inline const QColor blue(26, 74, 150);
inline const QColor accent(64, 224, 208);
inline const QColor ice(224, 244, 255);
} // namespace palette

// One pixel of light before it is rounded; 1.0 is full brightness and more is allowed until then.
struct Light
{
    double r = 0;
    double g = 0;
    double b = 0;
};

Light lightOf(const QColor &color);
Light blend(const Light &from, const Light &to, double share);
Light plus(const Light &base, const Light &glow, double strength);

// Rounds with an ordered pattern: a dark gradient in eight bits shows steps otherwise, and unlike random
// grain the pattern compresses well and is the same on every run.
QRgb rounded(const Light &light, int x, int y);

QImage blank(int width, int height);
QColor faded(const QColor &color, double alpha);

// Smooth noise of one variable between 0 and 1.
double wave(double x, int seed);

// Pictures are kept in folders by kind; the id is the file name without its ending.
class Folder
{
public:
    explicit Folder(QString root) : m_root(std::move(root)) {}
    void save(const QImage &picture, const QString &kind, const QString &id);
    int written() const { return m_written; }
    const QString &failure() const { return m_failure; }

private:
    QString m_root;
    QString m_failure;
    int m_written = 0;
};

// "panel" and 400 x 512 make "panel_400x512".
QString sized(const QString &name, int width, int height);

} // namespace aurora
