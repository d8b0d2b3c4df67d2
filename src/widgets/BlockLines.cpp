#include "widgets/BlockLines.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {
constexpr QStringView divider = u"[*]";
}

QString linesOfBlocks(const ListRows &blocks)
{
    QString lines;
    for (const ListRows::Row &row : blocks.rows())
        lines += row.text + divider + row.sub(1) + u"\r\n";
    return lines;
}

QList<ListRows::Row> blocksOfLines(const QString &lines)
{
    QList<ListRows::Row> rows;
    for (QStringView line : splitExact(lines, u"\n")) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        const QList<QStringView> parts = splitExact(line, divider);
        if (parts.size() > 1)
            rows.append({parts[0].toString(), {parts[1].toString()}});
    }
    return rows;
}

} // namespace quillmere
