#include "stage/ElementChanges.h"

#include "stage/FreeNames.h"
#include "stage/TextLayout.h"
#include "stage/WholeElements.h"

#include <QHash>

#include <algorithm>

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

} // namespace

QString whyNotWhole(const Outline &outline, int block)
{
    if (block < 0 || size_t(block) >= outline.blocks().size())
        return QStringLiteral("There is no block");
    const Element &element = elementOf(outline, block);
    if (element.inComment)
        return calledInText(outline, block) + u" is in a comment";
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
