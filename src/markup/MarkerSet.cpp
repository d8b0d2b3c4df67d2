#include "markup/MarkerSet.h"

#include <algorithm>
#include <numeric>

namespace quillmere {

namespace {

char16_t secondOf(QStringView marker)
{
    return foldCase(marker[1].unicode());
}

} // namespace

MarkerSet::MarkerSet(std::vector<QStringView> markers)
    : m_markers(std::move(markers)), m_bySecond(m_markers.size())
{
    std::iota(m_bySecond.begin(), m_bySecond.end(), 0);
    std::ranges::stable_sort(m_bySecond, {}, [this](int marker) { return secondOf((*this)[marker]); });
    for (const QStringView marker : m_markers) {
        m_firsts.add(marker[0].unicode());
        ++m_begins[secondOf(marker) + size_t(1)];
    }
    std::partial_sum(m_begins.begin(), m_begins.end(), m_begins.begin());
}

int MarkerSet::withSecond(char16_t second, QStringView text, qsizetype position) const
{
    for (size_t i = m_begins[second]; i < m_begins[second + size_t(1)]; ++i) {
        if (matchesIgnoringCase(text, position, m_markers[size_t(m_bySecond[i])]))
            return m_bySecond[i];
    }
    return -1;
}

std::vector<MarkerSet::Hit> MarkerSet::findAll(QStringView text) const
{
    std::vector<Hit> hits;
    qsizetype at = m_firsts.next(text, 0);
    while (at < text.size()) {
        const int marker = this->at(text, at);
        if (marker >= 0)
            hits.push_back({at, marker});
        at = m_firsts.next(text, at + (marker >= 0 ? (*this)[marker].size() : 1));
    }
    return hits;
}

MarkerReplacement::MarkerReplacement(const std::vector<std::pair<QStringView, QStringView>> &pairs)
    : m_markers([&pairs] {
          std::vector<QStringView> markers;
          for (const auto &[marker, instead] : pairs)
              markers.push_back(marker);
          return markers;
      }())
{
    for (const auto &[marker, instead] : pairs)
        m_instead.push_back(instead);
}

QString MarkerReplacement::applied(QStringView text, const std::vector<MarkerSet::Hit> &hits) const
{
    qsizetype size = text.size();
    for (const auto &[position, marker] : hits)
        size += m_instead[size_t(marker)].size() - m_markers[marker].size();
    QString result;
    result.reserve(size);
    qsizetype done = 0;
    for (const auto &[position, marker] : hits) {
        result += text.sliced(done, position - done);
        result += m_instead[size_t(marker)];
        done = position + m_markers[marker].size();
    }
    return result += text.sliced(done);
}

} // namespace quillmere
