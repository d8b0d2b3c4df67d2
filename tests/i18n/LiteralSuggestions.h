#pragma once

#include "i18n/TranslationMemory.h"
#include "markup/Matching.h"

#include <algorithm>

// The slow, step by step form of the search for translations of similar sources.
namespace twins {

struct Remembered
{
    QString source, translation, origin;
    bool isOfDictionary;
    int row;
};

// The whole table of distances.
inline int stepsBetween(const QString &a, const QString &b)
{
    QList<QList<int>> table(a.size() + 1, QList<int>(b.size() + 1));
    for (qsizetype i = 0; i <= a.size(); ++i) {
        for (qsizetype j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0)
                table[i][j] = int(i + j);
            else
                table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1,
                                        table[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
        }
    }
    return table[a.size()][b.size()];
}

inline int similarity(const QString &a, const QString &b)
{
    if (a == b)
        return 100;
    const qsizetype longer = std::max(a.size(), b.size());
    if (longer > quillmere::kLongestSimilar)
        return 0;
    const int steps = stepsBetween(quillmere::foldedText(a), quillmere::foldedText(b));
    return std::min(99, int(100 * (longer - steps) / longer));
}

inline QList<quillmere::Suggestion> suggestionsFor(const QString &source, const QList<Remembered> &all,
                                                   int ownRow)
{
    QList<quillmere::Suggestion> found;
    QList<bool> areOfDictionaries;
    for (const Remembered &each : all) {
        const int percent = similarity(source, each.source);
        if (percent < quillmere::kLeastSimilar || each.translation.trimmed().isEmpty() ||
            (each.row >= 0 && each.row == ownRow))
            continue;
        // A better one for the same translation takes its place.
        const auto same = std::find_if(found.begin(), found.end(), [&](const quillmere::Suggestion &other) {
            return other.translation == each.translation;
        });
        if (same != found.end() && same->percent >= percent)
            continue;
        if (same != found.end()) {
            areOfDictionaries.removeAt(same - found.begin());
            found.erase(same);
        }
        qsizetype place = 0;
        while (place < found.size() && found[place].percent >= percent)
            ++place;
        found.insert(place, {percent, each.source, each.translation, each.origin, false});
        areOfDictionaries.insert(place, each.isOfDictionary);
    }
    found = found.mid(0, quillmere::kMostSuggestions);
    for (qsizetype i = 0; i < found.size(); ++i) {
        for (qsizetype j = 0; j < found.size(); ++j) {
            if (areOfDictionaries[i] && areOfDictionaries[j] && found[i].percent >= 99 &&
                found[j].percent >= 99 && found[i].origin != found[j].origin &&
                quillmere::foldedText(found[i].source) == quillmere::foldedText(found[j].source))
                found[i].isDisputed = true;
        }
    }
    return found;
}

} // namespace twins
