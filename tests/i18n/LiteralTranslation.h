#pragma once

#include "markup/LiteralTwins.h"
#include "rows/ListRows.h"

// The slow, step by step forms of what reads and fills the strings of a language.
namespace twins {

using Rows = QList<quillmere::ListRows::Row>;

inline Rows openLgXml(const QString &text)
{
    Rows rows;
    if (!text.contains(u"<language name=\"", Qt::CaseInsensitive))
        return rows;
    const QStringList pieces =
        text.split(QStringLiteral("<tran id=\""), Qt::KeepEmptyParts, Qt::CaseInsensitive);
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        const qsizetype quote = pieces[i].indexOf(u'"');
        const QString translation = splitField(pieces[i], QStringLiteral(">"), QStringLiteral("<"), 1, 0);
        rows.append({QString(), {quote < 0 ? QString() : pieces[i].left(quote), translation}});
    }
    return rows;
}

inline void fill(Rows &rows, const QString &dictionary)
{
    const QStringList lines = dictionary.split(QStringLiteral("\r\n"));
    for (auto &row : rows) {
        for (const QString &line : lines) {
            if (!line.contains(u"[*]"))
                continue;
            const QStringList parts = line.split(QStringLiteral("[*]"));
            if (!row.checked && row.sub(1).toLower() == parts[0].toLower()) {
                row.subItems[1] = parts[1];
                row.checked = true;
            }
        }
    }
}

} // namespace twins
