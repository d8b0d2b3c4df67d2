#include "stage/ElementChanges.h"

#include "stage/FreeNames.h"
#include "stage/TextLayout.h"
#include "stage/WholeElements.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

const Element &elementOf(const Outline &outline, int block)
{
    return outline.element(outline.blocks()[size_t(block)]);
}

// Whether nothing but the element stands on its lines.
bool hasOwnLines(const TextLines &lines, Range range)
{
    return lines.indentAt(range.start) && lines.behindLine(range.end) >= 0;
}

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

} // namespace

QString whyNotWhole(const Outline &outline, int block)
{
    if (block < 0 || size_t(block) >= outline.blocks().size())
        return QStringLiteral("There is no block");
    const Element &element = elementOf(outline, block);
    if (element.inComment)
        return calledInText(outline, block) + u" stands in a comment";
    if (element.end != End::Tag && element.end != End::Self)
        return calledInText(outline, block) + u" has no closing tag";
    return {};
}

QList<int> wholeBlocks(const Outline &outline, const QList<int> &blocks)
{
    QList<int> whole;
    std::copy_if(blocks.begin(), blocks.end(), std::back_inserter(whole),
                 [&](int block) { return whyNotWhole(outline, block).isEmpty(); });
    return outermost(outline, whole);
}

Edited edited(const Outline &outline, const ChangeList &changes, const QList<qsizetype> &selected)
{
    Edited done{changes.changes(), {}};
    if (selected.isEmpty())
        return done;
    const Outline after(withChanges(outline.text(), changes.changes()));
    const auto &rows = after.blocks();
    for (const qsizetype position : selected) {
        const auto row =
            std::lower_bound(rows.begin(), rows.end(), position, [&](qint32 element, qsizetype at) {
                return after.element(element).tag.start < at;
            });
        if (row != rows.end() && after.element(*row).tag.start == position)
            done.selection.append(int(row - rows.begin()));
    }
    return done;
}

Edited deleted(const Outline &outline, const QList<int> &blocks)
{
    QList<int> rows = wholeBlocks(outline, blocks);
    std::sort(rows.begin(), rows.end());
    const TextLines lines(outline.text());
    ChangeList changes;
    for (qsizetype first = 0; first < rows.size();) {
        // Those that stand on one line together.
        qsizetype last = first;
        const auto rangeOf = [&](qsizetype i) { return elementOf(outline, rows[i]).range(); };
        const auto isBlankUpTo = [&](qsizetype i) {
            const QStringView between = outline.at({rangeOf(i - 1).end, rangeOf(i).start});
            return std::all_of(between.begin(), between.end(),
                               [](QChar c) { return c == u' ' || c == u'\t'; });
        };
        while (last + 1 < rows.size() && isBlankUpTo(last + 1))
            ++last;
        const Range all = {rangeOf(first).start, rangeOf(last).end};
        if (hasOwnLines(lines, all)) {
            const qsizetype start = all.start - lines.indentAt(all.start)->size();
            changes.add(start, lines.behindLine(all.end) - start, {});
            first = last + 1;
        } else {
            for (; first <= last; ++first)
                changes.add(rangeOf(first).start, rangeOf(first).size(), {});
        }
    }
    return edited(outline, changes, {});
}

namespace {

// The text of an element as it is to be beside the one it was copied from.
QString copyOf(const Outline &outline, int block, int by, FreeNames &names)
{
    QList<TextChange> changes;
    if (const std::optional<RectValue> rect = rectOfRow(outline, block)) {
        Box box = rect->box;
        box.x += by;
        box.y += by;
        changes = rectChanges(outline, {{block, box}});
    }
    const Element &element = elementOf(outline, block);
    for (size_t row = size_t(block); row < outline.blocks().size() && outline.blocks()[row] < element.next;
         ++row) {
        const std::optional<Attribute> name = outline.nameAttribute(outline.blocks()[row]);
        if (name && !name->value.isEmpty())
            changes.append(
                {name->value.start, name->value.size(), names.after(outline.at(name->value).toString())});
    }
    std::sort(changes.begin(), changes.end(),
              [](const TextChange &a, const TextChange &b) { return a.start < b.start; });
    for (TextChange &change : changes)
        change.start -= element.tag.start;
    return withChanges(outline.at(element.range()).toString(), changes);
}

} // namespace

Edited duplicated(const Outline &outline, const QList<int> &blocks, int by)
{
    const QList<int> selected = wholeBlocks(outline, blocks);
    QList<int> rows = selected;
    std::sort(rows.begin(), rows.end());
    const TextLines lines(outline.text());
    FreeNames names(outline);
    ChangeList changes;
    QHash<int, qsizetype> places;
    for (const int row : std::as_const(rows)) {
        const Range range = elementOf(outline, row).range();
        QString before;
        if (hasOwnLines(lines, range))
            before = lines.lineBreak() + *lines.indentAt(range.start);
        places.insert(row, changes.moved(range.end) + before.size());
        changes.add(range.end, 0, before + copyOf(outline, row, by, names));
    }
    QList<qsizetype> copies;
    for (const int row : selected)
        copies.append(places.value(row));
    return edited(outline, changes, copies);
}

Edited moved(const Outline &outline, const QList<int> &blocks, Toward toward)
{
    const QList<int> selected = wholeBlocks(outline, blocks);
    std::vector<bool> isSelected(outline.blocks().size());
    QHash<qint32, QList<qint32>> families; // by the element around them
    for (const int row : selected) {
        isSelected[size_t(row)] = true;
        families.insert(elementOf(outline, row).parent, {});
    }
    QList<qint32> parents; // in the order of their first children
    for (size_t row = 0; row < outline.blocks().size(); ++row) {
        const auto family = families.find(elementOf(outline, int(row)).parent);
        if (family == families.end() || !whyNotWhole(outline, int(row)).isEmpty())
            continue;
        if (family->isEmpty())
            parents.append(family.key());
        family->append(outline.blocks()[row]);
    }
    QList<Siblings::Slot> all;
    for (const qint32 parent : std::as_const(parents)) {
        Siblings siblings(outline, isSelected, families.value(parent));
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
    constexpr qsizetype kFar = std::numeric_limits<qsizetype>::max();
    struct Way
    {
        qint32 from;
        qsizetype to;
    };
    QList<Way> ways;  // of all that stands behind a change, up to the next one
    QList<Way> moved; // of what stands in a slot
    for (const Siblings::Slot &slot : std::as_const(all)) {
        moved.append({slot.gets.start, changes.moved(slot.was.start)});
        changes.add(slot.was.start, slot.was.size(), outline.at(slot.gets).toString());
        moved.append({slot.gets.end, -1});
        ways.append({slot.was.end, changes.moved(slot.was.end)});
    }
    // Where one ends and another begins, the end comes first.
    const auto byStart = [](const Way &a, const Way &b) {
        return a.from < b.from || (a.from == b.from && a.to < b.to);
    };
    std::sort(moved.begin(), moved.end(), byStart);
    QList<qsizetype> selection;
    for (const int row : selected) {
        const qint32 start = elementOf(outline, row).tag.start;
        const auto inSlot = std::upper_bound(moved.begin(), moved.end(), Way{start, kFar}, byStart);
        const bool isIn = inSlot != moved.begin() && (inSlot - 1)->to >= 0;
        const auto behind = std::upper_bound(ways.begin(), ways.end(), Way{start, kFar}, byStart);
        if (isIn)
            selection.append((inSlot - 1)->to + start - (inSlot - 1)->from);
        else
            selection.append(behind == ways.begin() ? start : (behind - 1)->to + start - (behind - 1)->from);
    }
    return edited(outline, changes, selection);
}

QString copied(const Outline &outline, const QList<int> &blocks)
{
    QList<int> rows = wholeBlocks(outline, blocks);
    std::sort(rows.begin(), rows.end());
    const TextLines lines(outline.text());
    QStringList texts;
    for (const int row : std::as_const(rows)) {
        const Range range = elementOf(outline, row).range();
        texts.append(movedLines(outline.at(range), lines.indentAt(range.start).value_or(QString()), {}));
    }
    return texts.join(lines.lineBreak());
}

} // namespace quillmere
