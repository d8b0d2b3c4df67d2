#include "quick/QuickList.h"

#include "markup/Matching.h"
#include "quick/FuzzyMatch.h"

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostRead = 200; // units of a text
constexpr int kUsed = 12;            // what it counts that something was used lately
constexpr QChar kCommands = u'>';
constexpr int kCaption = 40; // that a command's own caption, without its menus, begins with the letters
constexpr int kWhole = 20;   // that it ends with them, too

int captionScore(QStringView pattern, QStringView command)
{
    QString caption = command.sliced(command.lastIndexOf(kCommands) + 1).toString();
    caption.removeIf([](QChar letter) { return letter.isSpace(); });
    if (pattern.isEmpty() || !caption.startsWith(pattern))
        return 0;
    return kCaption + (caption.size() == pattern.size() ? kWhole : 0);
}

} // namespace

QString QuickList::nameOf(const QuickEntry &entry)
{
    return QString::number(int(entry.kind)) + u':' + entry.text;
}

void QuickList::setUsed(const QStringList &names)
{
    m_used.clear();
    for (qsizetype i = 0; i < names.size(); ++i)
        m_used.insert(names.at(i), int(names.size() - i));
}

void QuickList::assign(QList<QuickEntry> entries)
{
    m_entries = std::move(entries);
    m_isRanked = false;
    m_ranked.clear();
    m_folded.clear();
    m_folded.reserve(m_entries.size());
    m_wordStarts.clear();
    m_wordStarts.reserve(m_entries.size());
    m_usedOf.clear();
    m_usedOf.reserve(m_entries.size());
    for (const QuickEntry &entry : std::as_const(m_entries)) {
        const QStringView text = QStringView(entry.text).left(kMostRead);
        m_folded.append(foldedText(text));
        m_wordStarts.append(wordStartsOf(text));
        m_usedOf.append(m_used.isEmpty() ? 0 : m_used.value(nameOf(entry)));
    }
}

QString QuickList::patternOf(const QString &typed)
{
    QString pattern = foldedText(typed.startsWith(kCommands) ? QStringView(typed).sliced(1) : typed);
    pattern.removeIf([](QChar letter) { return letter.isSpace(); });
    return pattern;
}

// What does not fit a pattern fits no longer one that begins with it.
void QuickList::rank(QStringView pattern, bool areCommands)
{
    const bool isLonger =
        m_isRanked && m_areCommands == areCommands && !m_last.isEmpty() && pattern.startsWith(m_last);
    QList<Ranked> ranked;
    const auto look = [&](int number) {
        if ((m_entries.at(number).kind == QuickEntry::Kind::Command) != areCommands)
            return;
        if (!hasLettersInOrder(pattern, m_folded.at(number)))
            return;
        if (const auto score = fuzzyScore(pattern, m_folded.at(number), m_wordStarts.at(number)))
            ranked.append({*score + (m_usedOf.at(number) > 0 ? kUsed : 0) +
                               (areCommands ? captionScore(pattern, m_folded.at(number)) : 0),
                           number});
    };
    if (isLonger) {
        for (const Ranked &each : std::as_const(m_ranked))
            look(each.number);
    } else {
        for (int number = 0; number < m_entries.size(); ++number)
            look(number);
    }
    m_ranked.swap(ranked);
    m_last = pattern.toString();
    m_areCommands = areCommands;
    m_isRanked = true;
}

bool QuickList::isBefore(const Ranked &a, const Ranked &b) const
{
    if (a.score != b.score)
        return a.score > b.score;
    if (m_last.isEmpty() && m_usedOf.at(a.number) != m_usedOf.at(b.number))
        return m_usedOf.at(a.number) > m_usedOf.at(b.number);
    const QuickEntry &one = m_entries.at(a.number), &other = m_entries.at(b.number);
    if (!m_last.isEmpty() && !m_areCommands && one.text.size() != other.text.size())
        return one.text.size() < other.text.size();
    return one.kind != other.kind ? one.kind < other.kind : a.number < b.number;
}

QList<int> QuickList::matching(const QString &typed, int most, int *all)
{
    rank(patternOf(typed), typed.startsWith(kCommands));
    if (all)
        *all = int(m_ranked.size());
    const auto end = m_ranked.begin() + std::min<qsizetype>(most, m_ranked.size());
    std::partial_sort(m_ranked.begin(), end, m_ranked.end(),
                      [this](const Ranked &a, const Ranked &b) { return isBefore(a, b); });
    QList<int> numbers;
    for (auto each = m_ranked.begin(); each != end; ++each)
        numbers.append(each->number);
    return numbers;
}

QList<int> QuickList::placesIn(const QString &typed, int number) const
{
    return fuzzyPlaces(patternOf(typed), m_folded.at(number), m_wordStarts.at(number));
}

} // namespace quillmere
