#include "widgets/BlockProperties.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

#include <QHash>

namespace quillmere {

namespace {

constexpr QStringView kOpening = u"<property>";
constexpr QStringView kClosing = u"</property>";

// `gathered` is what stands between two closing tags: "...<name>content<".
ListRows::Row rowOf(QStringView gathered)
{
    const QStringView element = SplitFieldView(gathered, u"<", u"", 1, 0);
    const QList<QStringView> parts = splitIgnoringCase(element, u">");
    return {parts.value(0).toString(), {parts.value(1).toString()}};
}

QList<ListRows::Row> rowsOf(QStringView properties)
{
    QList<ListRows::Row> rows;
    qsizetype start = 0;
    bool found = false;
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (properties[i] != u'/') {
            found = false;
            continue;
        }
        const bool ofTag =
            (i > 0 && properties[i - 1] == u'<') || (i + 1 < properties.size() && properties[i + 1] == u'>');
        found = found || ofTag; // a slash right behind that of a tag counts like it
        if (!found)
            continue;
        rows.append(rowOf(properties.sliced(start, ofTag ? i - start : i + 1 - start)));
        start = i + 1;
    }
    return rows;
}

// `named` begins the segment, `behind` follows it.
std::optional<BlockProperties> cutOut(const QString &named, QStringView behind)
{
    const qsizetype end = containsExact(behind, kClosing) ? indexOfIgnoringCase(behind, kClosing) : -1;
    const QStringView block = end < 0 ? behind : behind.first(end);
    if (containsExact(block, u"<widget "))
        return std::nullopt;
    BlockProperties properties;
    if (end >= 0)
        properties.segment = named + block;
    properties.rows = rowsOf(SplitFieldView(block, kOpening, u"", 1, 0));
    return properties;
}

QString rebuilt(const QString &segment, const QList<ListRows::Row> &rows)
{
    QString text = SplitField(segment, kOpening, u"", 0, 0) + kOpening + u"\r\n";
    for (const ListRows::Row &row : rows)
        text += u'<' + row.text + u'>' + row.sub(1) + u"</" + row.text + u">\r\n";
    return text;
}

} // namespace

std::optional<BlockProperties> GetProperty(const QString &source, const QString &name)
{
    const QString quoted = u'"' + name + u'"';
    if (!containsExact(source, quoted))
        return std::nullopt;
    return cutOut(quoted, QStringView(source).sliced(indexOfIgnoringCase(source, quoted) + quoted.size()));
}

Range headOfBlock(const Outline &outline, int block)
{
    if (block < 0 || size_t(block) >= outline.blocks().size())
        return {};
    const qint32 element = outline.blocks()[size_t(block)];
    const std::optional<Attribute> name = outline.nameAttribute(element);
    const auto isQuote = [&outline](qint32 at) {
        return at >= 0 && at < outline.text().size() && outline.text()[at] == u'"';
    };
    if (name && isQuote(name->value.start - 1) && isQuote(name->value.end))
        return {name->value.start - 1, name->value.end + 1};
    return outline.element(element).tag;
}

std::optional<BlockProperties> propertiesAt(const QString &source, Range head)
{
    return cutOut(head.in(source).toString(), QStringView(source).sliced(head.end));
}

QString SaveProperty(const QString &source, const QString &segment, const QList<ListRows::Row> &rows)
{
    if (!containsExact(segment, kOpening))
        return source;
    QString result = source;
    return replaceIgnoringCase(result, segment, rebuilt(segment, rows));
}

QString savePropertyAt(const QString &source, qsizetype start, const QString &segment,
                       const QList<ListRows::Row> &rows)
{
    if (!containsExact(segment, kOpening) || !QStringView(source).sliced(start).startsWith(segment))
        return source;
    return QString(source).replace(start, segment.size(), rebuilt(segment, rows));
}

LostElements elementsLost(const QString &segment, const QList<ListRows::Row> &rows)
{
    if (!containsExact(segment, kOpening))
        return {};
    const qsizetype from = indexOfIgnoringCase(segment, kOpening) + kOpening.size();
    const Outline held(segment.sliced(from));
    const Outline kept(rebuilt(segment, rows).sliced(from));
    QHash<QString, int> left;
    for (const Element &element : kept.elements())
        ++left[kept.at(element.name()).toString()];
    LostElements lost;
    for (const Element &element : held.elements()) {
        const QString name = held.at(element.name()).toString();
        if (--left[name] >= 0)
            continue;
        if (!lost.names.contains(name))
            lost.names.append(name);
        if (lost.at < 0)
            lost.at = from + element.tag.start;
    }
    return lost;
}

QStringList bracketedValues(const QString &content, int count)
{
    QStringList values;
    for (const QStringView piece : splitExact(content, u",").mid(0, count))
        values.append(piece.toString());
    if (!values.isEmpty()) {
        values.first().remove(u'[');
        values.last().remove(u']');
    }
    values.resize(count);
    return values;
}

QString bracketed(const QStringList &values)
{
    return QString(u'[' + values.join(u',') + u']');
}

} // namespace quillmere
