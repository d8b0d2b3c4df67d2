#include "stage/WholeElements.h"

#include <QHash>

#include <algorithm>
#include <tuple>

namespace quillmere {

namespace {

// Blocks of one parent that change places. What stands between them stays where it is.
class Siblings
{
public:
    Siblings(const Outline &outline, const std::vector<bool> &isSelected, const QList<qint32> &blocks)
        : m_blocks(blocks), m_order(blocks.size())
    {
        for (qsizetype i = 0; i < blocks.size(); ++i) {
            m_order[i] = i;
            m_isSelected.append(isSelected[size_t(outline.element(blocks[i]).block)]);
        }
    }

    void move(Toward toward)
    {
        const qsizetype step = toward == Toward::Front ? 1 : -1;
        for (qsizetype i = toward == Toward::Front ? m_order.size() - 2 : 1; i >= 0 && i < m_order.size();
             i -= step) {
            if (!m_isSelected[i] || m_isSelected[i + step])
                continue;
            std::swap(m_order[i], m_order[i + step]);
            m_isSelected.swapItemsAt(i, i + step);
        }
    }

    struct Slot
    {
        Range was;  // what gives way
        Range gets; // what comes there
    };
    // In order; each with the blanks before it where all of them begin their lines.
    QList<Slot> slotsOf(const Outline &outline) const
    {
        const TextLines lines(outline.text());
        QList<Slot> found;
        bool allBegin = true;
        for (qsizetype i = 0; i < m_order.size(); ++i) {
            if (m_order[i] == i)
                continue;
            found.append(
                {outline.element(m_blocks[i]).range(), outline.element(m_blocks[m_order[i]]).range()});
            allBegin = allBegin && lines.indentAt(found.last().was.start);
        }
        for (Slot &slot : found) {
            for (Range *range : {&slot.was, &slot.gets})
                range->start -= allBegin ? qint32(lines.indentAt(range->start)->size()) : 0;
        }
        return found;
    }

private:
    QList<qint32> m_blocks;   // elements
    QList<qsizetype> m_order; // by place, which of them is there
    QList<bool> m_isSelected;
};

// The families of what is selected, each in the order of the text, the outer ones first.
QList<QList<qint32>> familiesOf(const Outline &outline, const QList<int> &selected)
{
    QHash<qint32, qsizetype> numbers; // by the element around them
    for (const int row : selected)
        numbers.insert(outline.element(outline.blocks()[size_t(row)]).parent, -1);
    QList<QList<qint32>> families;
    for (size_t row = 0; row < outline.blocks().size(); ++row) {
        const qint32 block = outline.blocks()[row];
        const auto number = numbers.find(outline.element(block).parent);
        if (number == numbers.end() || !whyNotWhole(outline, int(row)).isEmpty())
            continue;
        if (*number < 0) {
            *number = families.size();
            families.append(QList<qint32>());
        }
        families[*number].append(block);
    }
    return families;
}

// A place in the text before, and where that is afterwards which stands there and behind it.
struct Way
{
    qint32 from;
    bool isSlot; // where one ends and another begins, the one that begins counts
    qsizetype to;

    bool operator<(const Way &other) const
    {
        return std::tie(from, isSlot) < std::tie(other.from, other.isSlot);
    }
};

} // namespace

Edited moved(const Outline &outline, const QList<int> &blocks, Toward toward)
{
    const QList<int> selected = wholeBlocks(outline, blocks);
    std::vector<bool> isSelected(outline.blocks().size());
    for (const int row : selected)
        isSelected[size_t(row)] = true;
    QList<Siblings::Slot> all;
    for (const QList<qint32> &family : familiesOf(outline, selected)) {
        Siblings siblings(outline, isSelected, family);
        siblings.move(toward);
        const QList<Siblings::Slot> found = siblings.slotsOf(outline);
        // What stands in one that changes places goes with it, and changes none itself.
        const bool isIn = !found.isEmpty() && std::any_of(all.begin(), all.end(), [&](const auto &slot) {
            return slot.was.holds(found.first().was.start);
        });
        if (!isIn)
            all += found;
    }
    std::sort(all.begin(), all.end(), [](const auto &a, const auto &b) { return a.was.start < b.was.start; });
    ChangeList changes;
    QList<Way> ways = {{0, false, 0}};
    for (const Siblings::Slot &slot : std::as_const(all)) {
        ways.append({slot.gets.start, true, changes.moved(slot.was.start)});
        changes.add(slot.was.start, slot.was.size(), outline.at(slot.gets).toString());
        ways.append({slot.was.end, false, changes.moved(slot.was.end)});
    }
    std::sort(ways.begin(), ways.end());
    QList<qsizetype> places;
    for (const int row : selected) {
        const qint32 start = outline.element(outline.blocks()[size_t(row)]).tag.start;
        const Way way = *(std::upper_bound(ways.begin(), ways.end(), Way{start, true, 0}) - 1);
        places.append(way.to + start - way.from);
    }
    return edited(outline, changes, places);
}

} // namespace quillmere
