#pragma once

#include "naming/FoundPlaces.h"

namespace quillmere {

// Tells which of the places that were found now is one of those found before, while the texts have changed:
// the one in the same line of the same file, wherever that has gone, and where a line became another one,
// that with the same number in the file. Time of making is that of both, asking is quick.
class SamePlaces
{
public:
    // Both stay as they are for as long as something is asked.
    SamePlaces(const FoundPlaces &before, const FoundPlaces &now);

    // The number of a place among those now; -1 where it has gone, or cannot be told from others.
    qsizetype numberOf(qsizetype before) const;

private:
    struct Side
    {
        explicit Side(const FoundPlaces &found);
        QList<qsizetype> of(const QString &key) const { return byKey.value(key); }

        const FoundPlaces &found;
        QHash<QString, QList<qsizetype>> byKey, byFile;
    };

    Side m_before, m_now;
};

} // namespace quillmere
