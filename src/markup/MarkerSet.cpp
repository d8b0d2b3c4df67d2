#include "markup/MarkerSet.h"

#include "markup/Matching.h"

#include <algorithm>
#include <numeric>

namespace quillmere {

namespace {

char16_t secondOf(QStringView marker)
{
    return foldCase(marker[1].unicode());
}

template <auto member>
std::vector<QStringView> each(std::initializer_list<std::pair<QStringView, QStringView>> pairs)
{
    std::vector<QStringView> list;
    for (const auto &pair : pairs)
        list.push_back(pair.*member);
    return list;
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

int MarkerSet::at(QStringView text, qsizetype position) const
{
    if (position + 1 >= text.size())
        return -1;
    const char16_t second = foldCase(text[position + 1].unicode());
    if (second >= m_begins.size() - 1)
        return -1;
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

MarkerReplacement::MarkerReplacement(std::initializer_list<std::pair<QStringView, QStringView>> pairs)
    : m_markers(each<&std::pair<QStringView, QStringView>::first>(pairs)),
      m_instead(each<&std::pair<QStringView, QStringView>::second>(pairs))
{
}

MarkerReplacement::Plan MarkerReplacement::plan(QStringView text) const
{
    Plan plan{text, m_markers.findAll(text), text.size()};
    for (const auto &[position, marker] : plan.hits)
        plan.size += m_instead[size_t(marker)].size() - m_markers[marker].size();
    return plan;
}

void MarkerReplacement::append(QString &to, const Plan &plan) const
{
    qsizetype done = 0;
    for (const auto &[position, marker] : plan.hits) {
        to += plan.text.sliced(done, position - done);
        to += m_instead[size_t(marker)];
        done = position + m_markers[marker].size();
    }
    to += plan.text.sliced(done);
}

} // namespace quillmere
