#include "stage/SelectionAfter.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {

// Where a unit of the text before stands afterwards; -1 where it has been taken away.
class Moved
{
public:
    explicit Moved(const QList<TextChange> &changes) : m_changes(changes)
    {
        qsizetype moved = 0;
        for (const TextChange &change : changes) {
            moved += change.text.size() - change.length;
            m_moved.append(moved);
        }
    }

    qsizetype operator()(qsizetype position) const
    {
        const auto behind =
            std::upper_bound(m_changes.begin(), m_changes.end(), position,
                             [](qsizetype at, const TextChange &change) { return at < change.start; });
        if (behind == m_changes.begin())
            return position;
        const TextChange &change = *(behind - 1);
        return position < change.start + change.length ? -1
                                                       : position + m_moved[behind - 1 - m_changes.begin()];
    }

private:
    const QList<TextChange> &m_changes;
    QList<qsizetype> m_moved; // behind each
};

int rowAt(const Outline &outline, qsizetype position)
{
    const auto &blocks = outline.blocks();
    const auto row =
        std::lower_bound(blocks.begin(), blocks.end(), position, [&](qint32 element, qsizetype at) {
            return outline.element(element).tag.start < at;
        });
    return row != blocks.end() && outline.element(*row).tag.start == position ? int(row - blocks.begin())
                                                                              : -1;
}

QStringView nameOf(const Outline &outline, int row)
{
    const std::optional<Attribute> name = outline.nameAttribute(outline.blocks()[size_t(row)]);
    return name ? outline.at(name->value) : QStringView();
}

// The rows of names, -1 for one that there are several of.
QHash<QStringView, int> rowsByName(const Outline &outline)
{
    QHash<QStringView, int> rows;
    rows.reserve(qsizetype(outline.blocks().size()));
    for (size_t row = 0; row < outline.blocks().size(); ++row) {
        const QStringView name = nameOf(outline, int(row));
        const auto known = rows.find(name);
        if (known != rows.end())
            *known = -1;
        else if (!name.isEmpty())
            rows.insert(name, int(row));
    }
    return rows;
}

// Of two blocks that begin alike, the comparison of texts takes the beginning of the first for that of the
// second: what comes in or goes between them is moved back to where its "<" is.
QList<TextChange> fromTheirTags(QList<TextChange> changes, const QString &text)
{
    qsizetype end = 0; // of the change before
    for (TextChange &change : changes) {
        const bool comes = change.length == 0;
        const qsizetype size = comes ? change.text.size() : change.length;
        const QString moved = comes ? change.text : text.mid(change.start, size);
        qsizetype back = 0; // the unit in front then is that many before the end of what has been moved
        const auto at = [&](qsizetype i) { return moved[((i % size) + size) % size]; };
        while ((comes || change.text.isEmpty()) && at(-back) != u'<' && change.start - back > end &&
               text[change.start - back - 1] == at(-back - 1))
            ++back;
        if (back > 0 && at(-back) == u'<') {
            change.start -= back;
            if (comes)
                change.text = moved.last(back % size) + moved.chopped(back % size);
        }
        end = change.start + change.length;
    }
    return changes;
}

} // namespace

QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after)
{
    if (blocks.isEmpty())
        return {};
    return selectionAfter(before, blocks, after,
                          fromTheirTags(changesBetween(before.text(), after.text()), before.text()));
}

QList<int> selectionAfter(const Outline &before, const QList<int> &blocks, const Outline &after,
                          const QList<TextChange> &changes)
{
    const Moved moved(changes);
    std::optional<QHash<QStringView, int>> old, now;
    QList<int> rows;
    QSet<int> found;
    for (const int block : blocks) {
        if (block < 0 || size_t(block) >= before.blocks().size())
            continue;
        const qsizetype place = moved(before.element(before.blocks()[size_t(block)]).tag.start);
        int row = place < 0 ? -1 : rowAt(after, place);
        const QStringView name = nameOf(before, block);
        if (row < 0 || nameOf(after, row) != name) {
            old = old ? old : rowsByName(before);
            now = now ? now : rowsByName(after);
            if (old->value(name, -1) == block && now->value(name, -1) >= 0)
                row = now->value(name);
        }
        if (row >= 0 && !found.contains(row))
            rows.append(row);
        found.insert(row);
    }
    return rows;
}

} // namespace quillmere
