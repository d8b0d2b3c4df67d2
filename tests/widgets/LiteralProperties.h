#pragma once

#include "markup/LiteralTwins.h"
#include "rows/ListRows.h"

namespace literal {

// The rows of a property element, a character at a time.
inline QList<quillmere::ListRows::Row> propertyRows(const QString &properties)
{
    QList<quillmere::ListRows::Row> rows;
    QString buffer;
    bool found = false;
    for (qsizetype i = 0; i < properties.size(); ++i) {
        const bool slash = properties[i] == u'/';
        const bool ofTag = slash && (properties.mid(i, 2) == u"/>" || (i > 0 && properties[i - 1] == u'<'));
        found = ofTag || (slash && found);
        if (!ofTag)
            buffer += properties[i];
        if (found) {
            const QStringList parts = twins::splitField(buffer, QStringLiteral("<"), {}, 1, 0).split(u'>');
            rows.append({parts.value(0), {parts.value(1)}});
            buffer.clear();
        }
    }
    return rows;
}

} // namespace literal
