#pragma once

#include <QtGlobal>

#include <algorithm>
#include <optional>
#include <vector>

namespace quillmere {

// The greedy search for the fewest steps that lead along two sequences: an element of the first goes, or one
// of the other comes. For each number of steps it is known how far one gets on each diagonal (elements gone
// minus elements come). Memory grows with the square of the steps.
class FewestSteps
{
public:
    struct Step
    {
        qsizetype now, next; // elements of either sequence before it
        bool comes;
    };

    // `alike(now, next)`: how many elements are alike from there on, also where one sequence has ended.
    // `ends(now, next, alike, steps)`: whether the way may end there, behind so many elements alike.
    // `goesOn(steps)`: whether ways with so many steps are worth a look; nothing is found where they are not.
    template <typename Alike, typename Ends, typename GoesOn>
    std::optional<std::vector<Step>> find(Alike alike, Ends ends, GoesOn goesOn)
    {
        m_reached.clear();
        for (int steps = 0; goesOn(steps); ++steps) {
            m_reached.resize(size_t(steps + 1) * size_t(steps + 2) / 2);
            for (int diagonal = -steps; diagonal <= steps; diagonal += 2) {
                qsizetype now = 0;
                if (steps > 0)
                    now = comes(steps, diagonal) ? reached(steps - 1, diagonal + 1)
                                                 : reached(steps - 1, diagonal - 1) + 1;
                const qsizetype same = alike(now, now - diagonal);
                now += same;
                reached(steps, diagonal) = int(now);
                if (ends(now, now - diagonal, same, steps))
                    return wayTo(steps, diagonal);
            }
        }
        return {};
    }

private:
    // Row `steps` of the triangle has every second diagonal from -steps to steps.
    int &reached(int steps, int diagonal)
    {
        return m_reached[size_t(steps) * size_t(steps + 1) / 2 + size_t(diagonal + steps) / 2];
    }
    bool comes(int steps, int diagonal)
    {
        return diagonal == -steps ||
               (diagonal != steps && reached(steps - 1, diagonal - 1) < reached(steps - 1, diagonal + 1));
    }
    std::vector<Step> wayTo(int steps, int diagonal)
    {
        std::vector<Step> way;
        for (; steps > 0; --steps) {
            const bool come = comes(steps, diagonal);
            diagonal += come ? 1 : -1;
            const qsizetype from = reached(steps - 1, diagonal);
            way.push_back({from, from - diagonal, come});
        }
        std::reverse(way.begin(), way.end());
        return way;
    }

    std::vector<int> m_reached;
};

} // namespace quillmere
