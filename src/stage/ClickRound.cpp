#include "stage/ClickRound.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {
constexpr double kSamePlace = 3; // pixels that a hand trembles by
} // namespace

bool ClickRound::isAt(const Click &click) const
{
    const QPointF away = click.at - m_at;
    return !m_blocks.isEmpty() && m_revision == click.revision && std::abs(away.x()) <= kSamePlace &&
           std::abs(away.y()) <= kSamePlace && m_blocks == click.blocks &&
           click.selection == QList<int>{m_blocks[m_index]};
}

int ClickRound::clicked(const Click &click)
{
    if (!isAt(click)) {
        m_at = click.at;
        m_revision = click.revision;
        m_blocks = click.blocks;
        m_index = m_before = 0;
    } else if (!click.isQuick) {
        m_before = m_index;
        m_index = (m_index + 1) % m_blocks.size();
    }
    return m_blocks.isEmpty() ? -1 : m_blocks[m_index];
}

int ClickRound::doubleClicked(const Click &click)
{
    if (!isAt(click))
        return clicked(click);
    m_index = m_before;
    return m_blocks[m_index];
}

void ClickRound::jump(const Click &click, int block)
{
    m_at = click.at;
    m_revision = click.revision;
    m_blocks = click.blocks;
    m_index = m_before = std::max<qsizetype>(0, m_blocks.indexOf(block));
}

} // namespace quillmere
