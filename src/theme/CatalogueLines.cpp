#include "theme/CatalogueLines.h"

namespace quillmere {

namespace {

qsizetype startOfBlanks(QStringView text, qsizetype end)
{
    while (end > 0 && (text[end - 1] == u' ' || text[end - 1] == u'\t'))
        --end;
    return end;
}

} // namespace

std::optional<RangeChange> linesBefore(QStringView closing, QStringView like, const QString &text,
                                       const QStringList &lines)
{
    const qsizetype end = text.lastIndexOf(closing, -1, Qt::CaseInsensitive);
    if (end < 0)
        return std::nullopt;
    const QString ends = text.contains(u"\r\n") ? QStringLiteral("\r\n") : QStringLiteral("\n");
    const qsizetype blanks = startOfBlanks(text, end);
    const bool isLine = blanks == 0 || text[blanks - 1] == u'\n';
    const qint32 at = qint32(isLine ? blanks : end);
    const qsizetype before = text.lastIndexOf(like, end, Qt::CaseInsensitive);
    const qsizetype indent = before < 0 ? before : startOfBlanks(text, before);
    const QString margin = before < 0 ? QString() : text.sliced(indent, before - indent);
    QString after = isLine ? QString() : ends;
    for (const QString &line : lines)
        after += margin + line + ends;
    return RangeChange{{at, at}, {}, after};
}

} // namespace quillmere
