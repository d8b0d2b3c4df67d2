#include "catalogues/NameSearch.h"

#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr quint64 kBase = 0x9E3779B97F4A7C15; // odd, so that multiplying by it loses nothing
constexpr int kFilterBits = 15;               // of the hash; so small a filter stays in the nearest cache

quint64 withUnit(quint64 hash, char16_t folded)
{
    return hash * kBase + folded + 1;
}

quint64 hashOf(QStringView folded)
{
    quint64 hash = 0;
    for (const QChar unit : folded)
        hash = withUnit(hash, unit.unicode());
    return hash;
}

// Notes the rows of the names that are this very text and takes those names away.
void take(HashedNames &names, quint64 hash, QStringView folded, MetRows &met)
{
    for (auto at = names.find(hash); at != names.end() && at.key() == hash;) {
        if (at->folded == folded) {
            met[at->row] = true;
            at = names.erase(at);
        } else {
            ++at;
        }
    }
}

} // namespace

void WholeNames::add(QStringView name, qsizetype row)
{
    if (m_lengths.size() <= size_t(name.size()))
        m_lengths.resize(name.size() + 1);
    m_lengths[name.size()] = true;
    const QString folded = foldedText(name);
    m_names.insert(hashOf(folded), {folded, row});
}

void WholeNames::meet(QStringView piece, MetRows &met)
{
    if (size_t(piece.size()) >= m_lengths.size() || !m_lengths[piece.size()])
        return;
    quint64 hash = 0;
    for (const QChar unit : piece)
        hash = withUnit(hash, foldCase(unit.unicode()));
    if (m_names.contains(hash))
        take(m_names, hash, foldedText(piece), met);
}

void NamesAnywhere::add(QStringView name, qsizetype row)
{
    Group &group = m_groups[name.size()];
    group.mayBe.resize(size_t(1) << kFilterBits);
    const QString folded = foldedText(name);
    const quint64 hash = hashOf(folded);
    group.names.insert(hash, {folded, row});
    group.mayBe[hash >> (64 - kFilterBits)] = true;
}

void NamesAnywhere::meet(QStringView text, MetRows &met)
{
    if (text.isEmpty() || m_groups.empty())
        return;
    const QString folded = foldedText(text);
    for (auto &[length, group] : m_groups)
        meetGroup(length, group, folded, met);
    std::erase_if(m_groups, [](const auto &group) { return group.second.names.isEmpty(); });
}

// The hash of a window as long as the names moves along the text.
void NamesAnywhere::meetGroup(qsizetype length, Group &group, QStringView folded, MetRows &met)
{
    if (length > folded.size())
        return;
    quint64 power = 1; // what the unit that leaves the window has been multiplied by
    for (qsizetype i = 0; i < length; ++i)
        power *= kBase;
    quint64 hash = hashOf(folded.first(length));
    for (qsizetype end = length;; ++end) {
        if (group.mayBe[hash >> (64 - kFilterBits)])
            take(group.names, hash, folded.sliced(end - length, length), met);
        if (length == 0 || end == folded.size() || group.names.isEmpty())
            return;
        hash = withUnit(hash, folded[end].unicode()) - (folded[end - length].unicode() + 1) * power;
    }
}

} // namespace quillmere
