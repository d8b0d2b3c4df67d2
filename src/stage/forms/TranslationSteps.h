#pragma once

#include <QHash>
#include <QObject>

namespace quillmere {

class RowsHistory;
class SourceBox;

// Translations made in the picture, taken back and made again in turn with the steps of the window's text.
class TranslationSteps : public QObject
{
    Q_OBJECT

public:
    explicit TranslationSteps(const SourceBox &source, QObject *parent = nullptr);

    // Where the strings keep their steps; there are none before.
    void setStrings(RowsHistory &strings) { m_strings = &strings; }
    // A translation was put into the strings just now.
    void note();
    // False, and nothing is done, where a step of the text comes first.
    bool stepBack();
    bool stepForward();

private:
    // A number alone does not tell: the text may have gone back and another way since.
    struct TextState
    {
        int steps = 0;
        size_t hash = 0;
        bool operator==(const TextState &) const = default;
    };
    TextState textNow() const;
    bool isNext(qint64 step) const;

    const SourceBox &m_source;
    RowsHistory *m_strings = nullptr;
    QHash<qint64, TextState> m_made; // by the number of the strings' step
};

} // namespace quillmere
