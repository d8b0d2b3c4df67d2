#include "rows/RowsText.h"

#include <algorithm>

namespace quillmere {

namespace {

QString escaped(QString cell)
{
    return cell.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"));
}

QString unescaped(QStringView cell)
{
    QString text;
    for (qsizetype i = 0; i < cell.size(); ++i) {
        if (cell[i] != u'\\' || i + 1 == cell.size()) {
            text += cell[i];
            continue;
        }
        const QChar mark = cell[++i];
        text += mark == u'n' ? QChar(u'\n') : mark == u't' ? QChar(u'\t') : mark;
    }
    return text;
}

} // namespace

bool isSameButForChecks(const QList<ListRows::Row> &a, const QList<ListRows::Row> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const ListRows::Row &one, const ListRows::Row &other) {
                          return one.text == other.text && one.subItems == other.subItems;
                      });
}

QString rowsToText(const QList<ListRows::Row> &rows)
{
    QString text;
    for (const ListRows::Row &row : rows) {
        text += QString((row.checked ? u'*' : u'-') + escaped(row.text));
        for (const QString &cell : row.subItems)
            text += QString(u'\t' + escaped(cell));
        text += u'\n';
    }
    return text;
}

std::optional<QList<ListRows::Row>> rowsFromText(const QString &text)
{
    QList<ListRows::Row> rows;
    if (text.isEmpty())
        return rows;
    if (!text.endsWith(u'\n'))
        return {};
    for (QStringView line : QStringView(text).chopped(1).split(u'\n')) {
        if (!line.startsWith(u'*') && !line.startsWith(u'-'))
            return {};
        const QList<QStringView> cells = line.sliced(1).split(u'\t');
        ListRows::Row row{unescaped(cells.first()), {}, line.startsWith(u'*')};
        for (QStringView cell : cells.sliced(1))
            row.subItems.append(unescaped(cell));
        rows.append(row);
    }
    return rows;
}

} // namespace quillmere
