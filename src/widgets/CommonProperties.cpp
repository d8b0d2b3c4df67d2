#include "widgets/CommonProperties.h"

#include <algorithm>

namespace quillmere {

namespace {

bool isSame(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// The elements of a block that are rows for it.
QList<qint32> rowsOf(const Outline &outline, int block)
{
    QList<qint32> rows;
    if (block < 0 || size_t(block) >= outline.blocks().size())
        return rows;
    const qint32 first = outline.blocks()[size_t(block)];
    const qint32 property = outline.property(first, Kind::Property);
    if (property < 0)
        return rows;
    QList<QStringView> names;
    for (const qint32 index : outline.propertiesOf(first)) {
        const Element &element = outline.element(index);
        const bool isLeaf = element.next == index + 1;
        const bool isClosed = element.end == End::Tag || element.end == End::Self;
        const bool isInside = index > property && index < outline.element(property).next;
        const QStringView name = outline.at(element.name());
        const auto hasName = [name](QStringView other) { return isSame(name, other); };
        if (!isLeaf || !isClosed || !isInside || element.inComment || element.inSignal ||
            std::ranges::any_of(names, hasName))
            continue;
        names.append(name);
        rows.append(index);
    }
    return rows;
}

qint32 rowNamed(const Outline &outline, const QList<qint32> &rows, QStringView name)
{
    for (const qint32 row : rows) {
        if (isSame(outline.at(outline.element(row).name()), name))
            return row;
    }
    return -1;
}

// The entries of a list in brackets; empty for anything else.
QList<QStringView> entries(QStringView content)
{
    const QStringView list = content.trimmed();
    if (!list.startsWith(u'[') || !list.endsWith(u']') || list.size() < 2)
        return {};
    return list.sliced(1, list.size() - 2).split(u',');
}

QString listed(const QList<QStringView> &entries)
{
    QString list;
    for (const QStringView entry : entries)
        list += (list.isEmpty() ? u'[' : u',') + entry.toString();
    return QString(list + u']');
}

// The entries of `with` in the places of those that are empty in `content`.
QString filled(const QString &content, QStringView with)
{
    QList<QStringView> merged = entries(content);
    const QList<QStringView> own = entries(with);
    if (merged.isEmpty() || merged.size() != own.size())
        return content;
    for (qsizetype i = 0; i < own.size(); ++i) {
        if (merged[i].trimmed().isEmpty())
            merged[i] = own[i];
    }
    return listed(merged);
}

// What two lists have in common; no longer a list where they are no such lists.
QString common(const QString &list, QStringView other)
{
    QList<QStringView> merged = entries(list);
    const QList<QStringView> own = entries(other);
    if (merged.isEmpty() || merged.size() != own.size())
        return {};
    for (qsizetype i = 0; i < own.size(); ++i) {
        if (merged[i].trimmed() != own[i].trimmed())
            merged[i] = {};
    }
    return listed(merged);
}

} // namespace

QList<ListRows::Row> commonProperties(const Outline &outline, const QList<int> &blocks)
{
    QList<ListRows::Row> found;
    if (blocks.isEmpty())
        return found;
    const QList<qint32> first = rowsOf(outline, blocks.first());
    for (const qint32 row : first) {
        const QString content = outline.valueOf(row).toString();
        found.append({outline.at(outline.element(row).name()).toString(), {content, content}});
    }
    for (const int block : blocks.sliced(1)) {
        const QList<qint32> rows = rowsOf(outline, block);
        for (qsizetype i = found.size() - 1; i >= 0; --i) {
            const qint32 row = rowNamed(outline, rows, found[i].text);
            if (row < 0) {
                found.removeAt(i);
                continue;
            }
            QStringList &contents = found[i].subItems;
            const QStringView own = outline.valueOf(row);
            if (contents[1] != own)
                contents[1] = common(contents[1], own);
            if (contents[0] != own)
                contents[0].clear();
        }
    }
    for (ListRows::Row &row : found) {
        if (!row.sub(1).isEmpty())
            row.subItems[1].clear();
    }
    return found;
}

QList<TextChange> propertyChanges(const Outline &outline, const QList<int> &blocks, QStringView name,
                                  const QString &content, bool keepsEmpty)
{
    QList<TextChange> changes;
    for (const int block : blocks) {
        const qint32 row = rowNamed(outline, rowsOf(outline, block), name);
        if (row < 0)
            continue;
        const Element &element = outline.element(row);
        const QStringView own = outline.valueOf(row);
        const QString next = keepsEmpty ? filled(content, own) : content;
        if (next == own)
            continue;
        if (element.end == End::Self) {
            const QString tag = outline.at(element.name()).toString();
            const Range all = element.range();
            changes.append({all.start, all.size(), u'<' + tag + u'>' + next + u"</" + tag + u'>'});
        } else {
            changes.append({element.content().start, element.content().size(), next});
        }
    }
    std::ranges::sort(changes, {}, &TextChange::start);
    const auto isSame = [](const TextChange &a, const TextChange &b) { return a.start == b.start; };
    changes.erase(std::unique(changes.begin(), changes.end(), isSame), changes.end());
    return changes;
}

} // namespace quillmere
