#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

// Bytes of a font that is nothing but its character map.

inline QByteArray bigEndian(quint32 number, int bytes)
{
    QByteArray result;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        result.append(char(number >> shift));
    return result;
}

// A map as it stands in the file, for Windows' Unicode.
inline QByteArray fontWithMap(const QByteArray &map, quint32 encoding = 10)
{
    const QByteArray cmap =
        bigEndian(0, 2) + bigEndian(1, 2) + bigEndian(3, 2) + bigEndian(encoding, 2) + bigEndian(12, 4) + map;
    return bigEndian(0x00010000, 4) + bigEndian(1, 2) + QByteArray(6, '\0') + "cmap" + bigEndian(0, 4) +
           bigEndian(28, 4) + bigEndian(quint32(cmap.size()), 4) + cmap;
}

// With the letters of these ranges, first and last.
inline QByteArray fontWithGroups(const QList<std::pair<quint32, quint32>> &ranges)
{
    QByteArray map = bigEndian(12, 2) + bigEndian(0, 2) + bigEndian(16 + 12 * quint32(ranges.size()), 4) +
                     bigEndian(0, 4) + bigEndian(quint32(ranges.size()), 4);
    for (const auto &[first, last] : ranges)
        map += bigEndian(first, 4) + bigEndian(last, 4) + bigEndian(7, 4);
    return fontWithMap(map);
}
