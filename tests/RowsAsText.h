#pragma once

#include "rows/ListRows.h"

// One line a row: a "*" where checked, the text, the sub-items, divided by "|".
inline QString rowsAsText(const QList<quillmere::ListRows::Row> &rows)
{
    QString text;
    for (const auto &row : rows)
        text += (row.checked ? u"*" : u"") + row.text + u'|' + row.subItems.join(u'|') + u'\n';
    return text;
}
