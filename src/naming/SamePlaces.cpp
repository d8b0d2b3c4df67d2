#include "naming/SamePlaces.h"

#include <algorithm>

namespace quillmere {

namespace {

QString keyOf(const FoundPlace &place)
{
    return place.file + u'\n' + QString::number(int(place.of)) + u' ' + QString::number(place.line.start) +
           u' ' + place.line.text;
}

// The lists are in order.
qsizetype rankOf(qsizetype number, const QList<qsizetype> &numbers)
{
    return std::lower_bound(numbers.begin(), numbers.end(), number) - numbers.begin();
}

} // namespace

SamePlaces::Side::Side(const FoundPlaces &places) : found(places)
{
    for (qsizetype number = 0; number < places.places.size(); ++number) {
        byKey[keyOf(places.places[number])].append(number);
        byFile[places.places[number].file].append(number);
    }
}

SamePlaces::SamePlaces(const FoundPlaces &before, const FoundPlaces &now) : m_before(before), m_now(now) {}

qsizetype SamePlaces::numberOf(qsizetype before) const
{
    if (before < 0 || before >= m_before.found.places.size())
        return -1;
    const FoundPlace &place = m_before.found.places[before];
    const QString key = keyOf(place);
    const QList<qsizetype> same = m_before.of(key), sameNow = m_now.of(key);
    if (same.size() == sameNow.size())
        return sameNow[rankOf(before, same)];
    const QList<qsizetype> inFile = m_before.byFile.value(place.file),
                           inFileNow = m_now.byFile.value(place.file);
    if (inFile.size() != inFileNow.size())
        return -1;
    // Unless the one with that number is the same as another.
    const qsizetype number = inFileNow[rankOf(before, inFile)];
    const QString keyNow = keyOf(m_now.found.places[number]);
    return m_before.of(keyNow).size() == m_now.of(keyNow).size() ? -1 : number;
}

} // namespace quillmere
