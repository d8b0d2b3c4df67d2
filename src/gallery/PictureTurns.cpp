#include "gallery/PictureTurns.h"

#include <algorithm>
#include <utility>

namespace quillmere {

void PictureTurns::renumber(const QList<int> &before)
{
    nothingInHand();
    std::vector<Turn> turns(size_t(before.size()));
    for (qsizetype number = 0; number < before.size(); ++number) {
        if (before[number] >= 0)
            turns[size_t(number)] = m_turns[size_t(before[number])];
    }
    m_turns = std::move(turns);
    m_seen.clear();
}

void PictureTurns::setSeen(const QList<int> &seen)
{
    m_seen = seen;
    ++m_looks;
    for (const int number : seen)
        m_turns[size_t(number)].seen = m_looks;
}

int PictureTurns::next()
{
    for (const int number : std::as_const(m_seen)) {
        Turn &turn = m_turns[size_t(number)];
        if (turn.drawn == m_now || turn.inHand > 0)
            continue;
        turn.inHand = m_now;
        return number;
    }
    return -1;
}

QList<int> PictureTurns::done(int number)
{
    Turn &turn = m_turns[size_t(number)];
    turn.drawn = std::exchange(turn.inHand, 0);
    return overRoom();
}

QList<int> PictureTurns::overRoom()
{
    QList<int> kept;
    for (size_t number = 0; number < m_turns.size(); ++number) {
        if (m_turns[number].drawn > 0)
            kept.append(int(number));
    }
    const qsizetype over = kept.size() - m_room;
    if (over <= 0)
        return {};
    const auto seen = [this](int number) { return m_turns[size_t(number)].seen; };
    kept.removeIf([&](int number) { return seen(number) == m_looks; });
    std::ranges::stable_sort(kept, {}, seen);
    kept.resize(std::min(kept.size(), over));
    for (const int number : std::as_const(kept))
        m_turns[size_t(number)].drawn = 0;
    return kept;
}

void PictureTurns::nothingInHand()
{
    for (Turn &turn : m_turns)
        turn.inHand = 0;
}

} // namespace quillmere
