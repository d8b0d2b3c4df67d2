#include "i18n/TranslationMemory.h"

#include "markup/Matching.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <bit>
#include <optional>

namespace quillmere {

namespace {

constexpr QStringView kMarker = u"[*]";

quint64 lettersIn(QStringView folded)
{
    quint64 letters = 0;
    for (const QChar letter : folded)
        letters |= quint64(1) << (letter.unicode() % 64);
    return letters;
}

// How many steps may lie between texts of which the longer has so many units.
qsizetype stepsFor(int percent, qsizetype longer)
{
    return longer * (100 - percent) / 100;
}

// The number of steps from one text to the other, as long as there are no more than `most`; more otherwise.
// Of the table of all distances only a band beside its diagonal can lead there.
class BandedDistance
{
public:
    qsizetype operator()(QStringView a, QStringView b, qsizetype most)
    {
        if (std::abs(a.size() - b.size()) > most)
            return most + 1;
        const qsizetype far = most + 1;
        for (qsizetype j = 0; j <= std::min(b.size(), most); ++j)
            m_row[size_t(j)] = int(j);
        if (most < b.size())
            m_row[size_t(most + 1)] = int(far);
        for (qsizetype i = 1; i <= a.size(); ++i) {
            const qsizetype first = std::max<qsizetype>(1, i - most), last = std::min(b.size(), i + most);
            const QChar letter = a[i - 1];
            int corner = m_row[size_t(first - 1)];
            int left = m_row[size_t(first - 1)] = int(first == 1 ? std::min(i, far) : far);
            int least = left;
            for (qsizetype j = first; j <= last; ++j) {
                // Right of the band above stands a cell that nobody has filled.
                const int above = j == i + most ? int(far) : m_row[size_t(j)];
                left = std::min({above + 1, left + 1, corner + (letter == b[j - 1] ? 0 : 1)});
                corner = above;
                m_row[size_t(j)] = left;
                least = std::min(least, left);
            }
            if (least > most)
                return far;
        }
        return std::min<qsizetype>(m_row[size_t(b.size())], far);
    }

private:
    std::array<int, kLongestSimilar + 2> m_row{};
};

} // namespace

void TranslationMemory::add(QStringView source, QStringView translation, int row)
{
    if (source.isEmpty() || translation.trimmed().isEmpty())
        return;
    Entry entry;
    entry.source = source.toString();
    entry.translation = translation.toString();
    const QString folded = foldedText(entry.source);
    entry.at = m_folded.size();
    entry.length = folded.size();
    entry.letters = lettersIn(folded);
    entry.row = row;
    m_folded += folded;
    m_entries.push_back(entry);
}

void TranslationMemory::addDictionary(const QString &text)
{
    QSet<QString> known;
    const QStringView lineEnd = containsExact(text, u"\r\n") ? QStringView(u"\r\n") : QStringView(u"\n");
    for (const QStringView line : splitExact(text, lineEnd)) {
        const QList<QStringView> parts = splitExact(line, kMarker);
        if (parts.size() < 2)
            continue;
        const QString folded = foldedText(parts[0]);
        if (known.contains(folded))
            continue;
        known.insert(folded);
        add(parts[0], parts[1]);
    }
}

void TranslationMemory::makeIndex()
{
    const auto lengthOf = [](const Entry &entry) {
        return size_t(std::min(entry.length, kLongestSimilar + 1));
    };
    m_begins.assign(size_t(kLongestSimilar) + 3, 0);
    for (const Entry &entry : m_entries)
        ++m_begins[lengthOf(entry) + 1];
    for (size_t length = 1; length < m_begins.size(); ++length)
        m_begins[length] += m_begins[length - 1];
    m_byLength.resize(m_entries.size());
    std::vector<qint32> next(m_begins.begin(), m_begins.end() - 1);
    for (size_t entry = 0; entry < m_entries.size(); ++entry)
        m_byLength[size_t(next[lengthOf(m_entries[entry])]++)] = qint32(entry);
}

// The best so far, while one memory after the other is searched. The more similar they are, the fewer steps
// any other may be away.
class SimilarSearch
{
public:
    SimilarSearch(const QString &source, const std::stop_token &stop)
        : m_source(source), m_folded(foldedText(source)), m_letters(lettersIn(m_folded)), m_stop(stop)
    {
    }

    void search(const TranslationMemory &memory, int number, int withoutRow)
    {
        m_memory = &memory;
        m_number = number;
        m_withoutRow = withoutRow;
        const qsizetype length = m_folded.size();
        if (length > kLongestSimilar) {
            searchLength(kLongestSimilar + 1);
            return;
        }
        // Those of the same length first, which lets most of the others be passed over.
        for (qsizetype away = 0; away <= kLongestSimilar; ++away) {
            const qsizetype longer = length + away;
            const bool isShortIn = away < length && away <= stepsFor(kLeastSimilar, length);
            const bool isLongIn = longer <= kLongestSimilar && away <= stepsFor(kLeastSimilar, longer);
            if ((!isShortIn && !isLongIn) || m_stop.stop_requested())
                return;
            if (isShortIn && away > 0)
                searchLength(length - away);
            if (isLongIn)
                searchLength(longer);
        }
    }

    QList<Suggestion> result() const
    {
        QList<Suggestion> suggestions;
        for (const Found &found : m_best)
            suggestions.append({found.percent, found.entry->source, found.entry->translation,
                                found.memory->m_origin, isDisputed(found)});
        return suggestions;
    }

private:
    struct Found
    {
        int percent;
        qint64 order; // of the memory, and of the entry in it
        const TranslationMemory *memory;
        const TranslationMemory::Entry *entry;

        bool isBetterThan(const Found &other) const
        {
            return percent != other.percent ? percent > other.percent : order < other.order;
        }
    };

    void searchLength(qsizetype length)
    {
        const auto begin = m_memory->m_begins[size_t(length)], end = m_memory->m_begins[size_t(length) + 1];
        for (qint32 i = begin; i < end; ++i) {
            const qint32 number = m_memory->m_byLength[size_t(i)];
            const TranslationMemory::Entry &entry = m_memory->m_entries[size_t(number)];
            if (entry.row >= 0 && entry.row == m_withoutRow)
                continue;
            Found found = {0, (qint64(m_number) << 32) + number, m_memory, &entry};
            found.percent = similarity(entry, leastFor(found.order));
            if (found.percent > 0)
                put(found);
        }
    }

    // What an entry has to reach to be among the best.
    int leastFor(qint64 order) const
    {
        if (m_best.size() < kMostSuggestions)
            return kLeastSimilar;
        return m_best.last().percent + (order < m_best.last().order ? 0 : 1);
    }

    // 0 where it is less than `least`.
    int similarity(const TranslationMemory::Entry &entry, int least)
    {
        if (entry.source == m_source)
            return 100;
        if (least > 99 || m_folded.size() > kLongestSimilar)
            return 0;
        const qsizetype longer = std::max(entry.length, m_folded.size());
        const qsizetype most = stepsFor(least, longer);
        if (std::popcount(entry.letters & ~m_letters) > most ||
            std::popcount(m_letters & ~entry.letters) > most)
            return 0;
        const QStringView folded = QStringView(m_memory->m_folded).sliced(entry.at, entry.length);
        const qsizetype steps = m_distance(m_folded, folded, most);
        return steps > most ? 0 : int(std::min<qsizetype>(99, 100 * (longer - steps) / longer));
    }

    void put(const Found &found)
    {
        const auto same = std::find_if(m_best.begin(), m_best.end(), [&](const Found &other) {
            return other.entry->translation == found.entry->translation;
        });
        if (same != m_best.end()) {
            if (!found.isBetterThan(*same))
                return;
            m_best.erase(same);
        }
        const auto place = std::find_if(m_best.begin(), m_best.end(),
                                        [&](const Found &other) { return found.isBetterThan(other); });
        m_best.insert(place, found);
        if (m_best.size() > kMostSuggestions)
            m_best.removeLast();
    }

    bool isDisputed(const Found &found) const
    {
        const auto isDictionary = [](const Found &each) {
            return each.percent >= 99 && each.memory->m_kind == TranslationMemory::Kind::Dictionary;
        };
        return isDictionary(found) && std::any_of(m_best.begin(), m_best.end(), [&](const Found &other) {
                   return other.memory != found.memory && isDictionary(other) &&
                          other.entry->source.compare(found.entry->source, Qt::CaseInsensitive) == 0;
               });
    }

    const QString m_source, m_folded;
    const quint64 m_letters;
    const std::stop_token &m_stop;
    const TranslationMemory *m_memory = nullptr;
    int m_number = 0, m_withoutRow = -1;
    QList<Found> m_best; // best first
    BandedDistance m_distance;
};

QList<Suggestion> suggestionsFor(const QString &source, const TranslationMemories &memories,
                                 const TranslationMemory *own, int ownRow, const std::stop_token &stop)
{
    SimilarSearch search(source, stop);
    for (int number = 0; number < memories.size() && !source.isEmpty(); ++number) {
        const TranslationMemory &memory = *memories.at(number);
        search.search(memory, number, &memory == own ? ownRow : -1);
    }
    return search.result();
}

} // namespace quillmere
