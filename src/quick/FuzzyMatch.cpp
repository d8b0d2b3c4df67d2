#include "quick/FuzzyMatch.h"

#include <QVarLengthArray>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

constexpr int kLetter = 1;
constexpr int kTextStart = 2; // beside that of a word
constexpr int kWordStart = 8;
constexpr int kAdjacent = 9;
constexpr int kGap = 4;
constexpr qsizetype kSeen = 64; // units whose words count
constexpr int kNever = std::numeric_limits<int>::min() / 2;

using Scores = QVarLengthArray<int, 256>;

int scoreAt(qsizetype place, quint64 wordStarts)
{
    return kLetter + (place == 0 ? kTextStart : 0) +
           (place < kSeen && (wordStarts >> place & 1) ? kWordStart : 0);
}

// From the scores of the ways that end with the letter before at each place, those that end with this one.
void addLetter(QChar letter, bool isFirst, QStringView text, quint64 wordStarts, const Scores &before,
               Scores &after)
{
    int best = kNever; // of the ways that end before the place before
    for (qsizetype place = 0; place < text.size(); ++place) {
        int score = kNever;
        if (text[place] == letter) {
            const int adjacent = place > 0 && !isFirst ? before[place - 1] + kAdjacent : kNever;
            const int way = isFirst ? 0 : std::max(adjacent, best - kGap);
            if (way > kNever / 2)
                score = way + scoreAt(place, wordStarts);
        }
        after[place] = score;
        if (place > 0)
            best = std::max(best, before[place - 1]);
    }
}

} // namespace

bool hasLettersInOrder(QStringView pattern, QStringView text)
{
    qsizetype at = 0;
    for (const QChar letter : pattern) {
        at = text.indexOf(letter, at);
        if (at < 0)
            return false;
        ++at;
    }
    return true;
}

std::optional<int> fuzzyScore(QStringView pattern, QStringView text, quint64 wordStarts)
{
    if (!hasLettersInOrder(pattern, text))
        return std::nullopt;
    if (pattern.isEmpty())
        return 0;
    Scores one(text.size(), kNever), other(text.size());
    Scores *before = &one, *after = &other;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        addLetter(pattern[i], i == 0, text, wordStarts, *before, *after);
        std::swap(before, after);
    }
    return *std::max_element(before->begin(), before->end());
}

QList<int> fuzzyPlaces(QStringView pattern, QStringView text, quint64 wordStarts)
{
    if (pattern.isEmpty() || !hasLettersInOrder(pattern, text))
        return {};
    std::vector<Scores> rows(size_t(pattern.size()), Scores(text.size(), kNever));
    for (qsizetype i = 0; i < pattern.size(); ++i)
        addLetter(pattern[i], i == 0, text, wordStarts, rows[size_t(std::max<qsizetype>(i - 1, 0))],
                  rows[size_t(i)]);
    QList<int> places(pattern.size());
    const Scores &last = rows.back();
    qsizetype at = std::max_element(last.begin(), last.end()) - last.begin();
    for (qsizetype i = pattern.size() - 1;; --i) {
        places[i] = int(at);
        if (i == 0)
            return places;
        const int way = rows[size_t(i)][at] - scoreAt(at, wordStarts);
        const Scores &previous = rows[size_t(i - 1)];
        if (previous[at - 1] + kAdjacent == way) {
            --at;
            continue;
        }
        qsizetype from = 0;
        while (previous[from] - kGap != way)
            ++from;
        at = from;
    }
}

quint64 wordStartsOf(QStringView text)
{
    quint64 starts = 0;
    QChar before = u' ';
    bool wasPart = false;
    for (qsizetype i = 0; i < std::min(text.size(), kSeen); ++i) {
        const QChar letter = text[i];
        const bool isPart = letter.isLetterOrNumber() || letter.isSurrogate();
        if (isPart && (!wasPart || (letter.isUpper() && before.isLower())))
            starts |= quint64(1) << i;
        before = letter;
        wasPart = isPart;
    }
    return starts;
}

} // namespace quillmere
