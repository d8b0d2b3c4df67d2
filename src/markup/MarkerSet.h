#pragma once

#include "markup/Matching.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace quillmere {

// Units of ASCII at which a pass over a text stops.
class StopUnits
{
public:
    constexpr explicit StopUnits(std::u16string_view units = {})
    {
        for (const char16_t unit : units)
            add(unit);
    }
    constexpr void add(char16_t unit) { m_isStop[unit] = true; }

    // Position of the next one at or behind `from`, or the size of the text.
    qsizetype next(QStringView text, qsizetype from) const
    {
        const char16_t *units = text.utf16();
        const qsizetype size = text.size();
        while (from < size && !(units[from] < m_isStop.size() && m_isStop[units[from]]))
            ++from;
        return from;
    }

private:
    std::array<bool, 128> m_isStop = {};
};

// Several markers that a pass over a text looks for at once, where a search for each would be a pass of its
// own. Letter case is ignored.
class MarkerSet
{
public:
    // Each begins with a unit of ASCII that is no letter, its second unit is in ASCII too, and none begins
    // another one. They are views; what they show must stay.
    explicit MarkerSet(std::vector<QStringView> markers);

    // The number of the marker that the text has at `position`, or -1.
    int at(QStringView text, qsizetype position) const
    {
        if (position + 1 >= text.size())
            return -1;
        const char16_t second = foldCase(text[position + 1].unicode());
        const bool none = second >= m_begins.size() - 1 || m_begins[second] == m_begins[second + size_t(1)];
        return none ? -1 : withSecond(second, text, position);
    }
    QStringView operator[](int marker) const { return m_markers[size_t(marker)]; }

    struct Hit
    {
        qsizetype position;
        int marker;
    };
    // Everyone there is, in order, without overlap.
    std::vector<Hit> findAll(QStringView text) const;

private:
    int withSecond(char16_t second, QStringView text, qsizetype position) const;

    std::vector<QStringView> m_markers;
    StopUnits m_firsts;
    std::vector<int> m_bySecond;           // numbers of the markers, in the order of their second units
    std::array<quint8, 129> m_begins = {}; // where those with a second unit begin in m_bySecond
};

// Replaces several markers in one pass. That is the same as one after the other wherever no marker overlaps
// another one and nothing that is put in is a part of one.
class MarkerReplacement
{
public:
    // Markers as above, and what comes instead.
    explicit MarkerReplacement(const std::vector<std::pair<QStringView, QStringView>> &pairs);

    // Everything there is to be replaced, in order.
    std::vector<MarkerSet::Hit> find(QStringView text) const { return m_markers.findAll(text); }
    // The text with these replaced.
    QString applied(QStringView text, const std::vector<MarkerSet::Hit> &hits) const;
    QString applied(QStringView text) const { return applied(text, find(text)); }

private:
    MarkerSet m_markers;
    std::vector<QStringView> m_instead;
};

} // namespace quillmere
