#include "widgets/BlockProperties.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

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

} // namespace

std::optional<BlockProperties> GetProperty(const QString &source, const QString &name)
{
    const QString quoted = u'"' + name + u'"';
    if (!containsExact(source, quoted))
        return std::nullopt;
    const QStringView behind =
        QStringView(source).sliced(indexOfIgnoringCase(source, quoted) + quoted.size());
    const qsizetype end = containsExact(behind, kClosing) ? indexOfIgnoringCase(behind, kClosing) : -1;
    const QStringView block = end < 0 ? behind : behind.first(end);
    if (containsExact(block, u"<widget "))
        return std::nullopt;
    BlockProperties properties;
    if (end >= 0)
        properties.segment = quoted + block;
    properties.rows = rowsOf(SplitFieldView(block, kOpening, u"", 1, 0));
    return properties;
}

QString SaveProperty(const QString &source, const QString &segment, const QList<ListRows::Row> &rows)
{
    if (!containsExact(segment, kOpening))
        return source;
    QString rebuilt = SplitField(segment, kOpening, u"", 0, 0) + kOpening + u"\r\n";
    for (const ListRows::Row &row : rows)
        rebuilt += u'<' + row.text + u'>' + row.sub(1) + u"</" + row.text + u">\r\n";
    QString result = source;
    return replaceIgnoringCase(result, segment, rebuilt);
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
