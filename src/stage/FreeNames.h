#pragma once

#include "outline/Outline.h"

#include <QHash>
#include <QSet>

namespace quillmere {

// Names for blocks that no block of a window has, in whatever letter case. What is given out is taken.
class FreeNames
{
public:
    explicit FreeNames(const Outline &outline);

    // False where the name is taken.
    bool take(const QString &name);
    // The next free one: the number at its end counted up, or a 2 put behind it.
    QString after(const QString &name);
    // The first free one of `stem1`, `stem2`, ...
    QString numbered(const QString &stem) { return freeFrom(stem, 1, 0); }

private:
    QString freeFrom(const QString &stem, qint64 number, qsizetype digits);

    QSet<QString> m_taken; // folded
    // By stem, from a number that is taken to one behind it where the search goes on: copies of a thousand
    // rows with numbers do not look at each other's numbers again and again.
    QHash<QString, QHash<qint64, qint64>> m_next;
};

} // namespace quillmere
