#pragma once

#include "markup/Matching.h"

#include <QHashSeed>
#include <QList>
#include <QStringView>

namespace quillmere {

// Numbers of names, found by the letters of the name whatever their case. It keeps no letters: `nameOf` gives
// those of a number, the same ones as long as the number is in here. Copies share their memory.
class FoldedNumbers
{
public:
    // -1 where no number has such a name.
    template <typename NameOf>
    qint32 find(QStringView name, NameOf nameOf) const
    {
        const qsizetype slot = slotOf(name, nameOf);
        return slot < 0 ? -1 : m_slots.at(slot);
    }

    // No number with the same letters may be in here.
    template <typename NameOf>
    void insert(qint32 number, NameOf nameOf)
    {
        if (2 * (m_taken + 1) > m_slots.size())
            makeRoom(nameOf);
        put(number, nameOf(number));
    }

    // Both have the same letters.
    template <typename NameOf>
    void replace(qint32 number, qint32 by, NameOf nameOf)
    {
        m_slots[slotOf(nameOf(number), nameOf)] = by;
    }

    template <typename NameOf>
    void remove(qint32 number, NameOf nameOf)
    {
        m_slots[slotOf(nameOf(number), nameOf)] = kGone;
        --m_count;
    }

private:
    static constexpr qint32 kFree = -1, kGone = -2;
    static constexpr qsizetype kFewest = 16;

    size_t firstSlot(QStringView name) const
    {
        static const size_t seed = QHashSeed::globalSeed();
        constexpr quint64 prime = 0x9E3779B97F4A7C15;
        quint64 hash = seed;
        for (const QChar unit : name)
            hash = (hash ^ foldCase(unit.unicode())) * prime;
        return size_t(hash >> 32) & size_t(m_slots.size() - 1);
    }

    template <typename NameOf>
    qsizetype slotOf(QStringView name, NameOf nameOf) const
    {
        if (m_slots.isEmpty())
            return -1;
        const qint32 *const all = m_slots.constData();
        for (size_t slot = firstSlot(name); all[slot] != kFree;
             slot = (slot + 1) & size_t(m_slots.size() - 1)) {
            if (all[slot] == kGone)
                continue;
            const QStringView other = nameOf(all[slot]);
            if (other.size() == name.size() && matchesIgnoringCase(other, 0, name))
                return qsizetype(slot);
        }
        return -1;
    }

    void put(qint32 number, QStringView name)
    {
        size_t slot = firstSlot(name);
        while (m_slots.at(qsizetype(slot)) != kFree)
            slot = (slot + 1) & size_t(m_slots.size() - 1);
        m_slots[qsizetype(slot)] = number;
        ++m_count;
        ++m_taken;
    }

    template <typename NameOf>
    void makeRoom(NameOf nameOf)
    {
        const QList<qint32> before = m_slots;
        qsizetype size = kFewest;
        while (size < 3 * (m_count + 1))
            size *= 2;
        m_slots = QList<qint32>(size, kFree);
        m_count = m_taken = 0;
        for (const qint32 number : before) {
            if (number >= 0)
                put(number, nameOf(number));
        }
    }

    QList<qint32> m_slots; // as many as a power of two; at least one is free
    qsizetype m_count = 0; // of the numbers in here
    qsizetype m_taken = 0; // slots that are not free
};

} // namespace quillmere
