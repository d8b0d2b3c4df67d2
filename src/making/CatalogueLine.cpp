#include "making/CatalogueLine.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

bool isBlank(QStringView text)
{
    return text.trimmed().isEmpty();
}

// The blanks that the line before `start` begins with.
QStringView indentBefore(QStringView text, qsizetype start)
{
    const QStringView before = text.first(start).trimmed();
    const QStringView line = before.sliced(before.lastIndexOf(u'\n') + 1);
    qsizetype blanks = 0;
    while (blanks < line.size() && (line[blanks] == u' ' || line[blanks] == u'\t'))
        ++blanks;
    return line.first(blanks);
}

} // namespace

std::optional<RangeChange> entryBefore(QStringView closing, const QString &text, const QString &entry)
{
    const QList<QStringView> pieces = splitIgnoringCase(text, closing);
    if (pieces.size() < 2)
        return std::nullopt;
    const qint32 at = qint32(pieces.last().data() - text.constData() - closing.size());
    const qint32 start = qint32(at > 0 ? text.lastIndexOf(u'\n', at - 1) + 1 : 0);
    if (!isBlank(QStringView(text).sliced(start, at - start)))
        return RangeChange{{at, at}, {}, entry};
    const QStringView end = start > 1 && text[start - 2] == u'\r' ? u"\r\n" : u"\n";
    return RangeChange{{start, start}, {}, QString(indentBefore(text, start) + entry + end)};
}

} // namespace quillmere
