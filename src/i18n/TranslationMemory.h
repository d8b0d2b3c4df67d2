#pragma once

#include <QList>
#include <QString>

#include <memory>
#include <stop_token>
#include <vector>

namespace quillmere {

// How much two texts have in common, in percent: 100 for the same text, 99 at most for another one. What
// counts is how many letters (UTF-16 units, letter case aside) have to be put in, taken out or replaced, in
// relation to the longer text.
constexpr int kLeastSimilar = 75;
constexpr int kMostSuggestions = 9;
// Longer texts are similar to none but themselves. Units.
constexpr qsizetype kLongestSimilar = 500;

// A translation that was made elsewhere, of the same source or a similar one.
struct Suggestion
{
    int percent = 0; // how similar its source is
    QString source, translation;
    QString origin;          // where it stands
    bool isDisputed = false; // another dictionary translates this very source otherwise

    bool operator==(const Suggestion &) const = default;
};

// Translations of one place, to be searched for similar sources: a dictionary, or a language of some theme.
// Once it is made, any thread may search it.
class TranslationMemory
{
public:
    enum class Kind { Dictionary, Language };

    TranslationMemory(QString origin, Kind kind) : m_origin(std::move(origin)), m_kind(kind) {}
    // Entries without a translation do not count. `row` tells entries apart for whoever leaves one out.
    void add(QStringView source, QStringView translation, int row = -1);
    // From a text of lines SOURCE[*]TRANSLATION, see Dictionary.h: of several with one source, letter case
    // aside, the first.
    void addDictionary(const QString &text);
    // After the last entry, before the first search.
    void makeIndex();

    qsizetype count() const { return qsizetype(m_entries.size()); }

private:
    friend class SimilarSearch;

    struct Entry
    {
        QString source, translation;
        qsizetype at = 0, length = 0; // of the source in m_folded
        quint64 letters = 0;          // a bit for every letter it has, some of which share one
        int row = -1;
    };

    QString m_origin;
    Kind m_kind;
    std::vector<Entry> m_entries;
    QString m_folded; // the sources in one letter case
    // Numbers of the entries by length, and where each length begins among them; kLongestSimilar + 1 stands
    // for all that are longer.
    std::vector<qint32> m_byLength, m_begins;
};

using TranslationMemories = QList<std::shared_ptr<const TranslationMemory>>;

// The best translations for a source, each but once, the most similar first and then in the order of the
// memories and their entries. `ownRow` of the memory `own` is left out: it is the one that asks. Where it is
// told to stop, some are missing.
QList<Suggestion> suggestionsFor(const QString &source, const TranslationMemories &memories,
                                 const TranslationMemory *own = nullptr, int ownRow = -1,
                                 const std::stop_token &stop = {});

} // namespace quillmere
