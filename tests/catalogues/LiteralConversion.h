#pragma once

#include "catalogues/ColourConversion.h"
#include "rows/ListRows.h"

#include <QStringList>

namespace literal {

// Colours converted row by row, three passes over the text for each.
inline QString convert(QString text, const quillmere::ListRows &lvColor, quillmere::ColourForm to)
{
    text.replace(QStringLiteral("> "), QStringLiteral(">"))
        .replace(QStringLiteral(" <"), QStringLiteral("<"));
    for (const auto &row : lvColor.rows()) {
        const QString from = row.sub(to == quillmere::ColourForm::Code ? 1 : 2);
        const QString by = row.sub(to == quillmere::ColourForm::Code ? 2 : 1);
        for (const char *around : {">[%1,", ",%1,", ",%1]<"}) {
            const QString place = QLatin1String(around);
            text.replace(place.arg(from), place.arg(by), Qt::CaseInsensitive);
        }
    }
    return text;
}

} // namespace literal
