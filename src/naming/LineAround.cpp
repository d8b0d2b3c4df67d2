#include "naming/LineAround.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostBefore = 60, kMostBehind = 140; // units around the range
constexpr qsizetype kMostName = 120;                     // units of a name
constexpr QChar kMore(u'\u2026');

QString plain(QStringView text)
{
    QString shown = text.toString();
    std::replace_if(
        shown.begin(), shown.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); }, QChar(u' '));
    return shown;
}

} // namespace

QString shownName(const QString &name)
{
    return name.size() <= kMostName ? plain(name)
                                    : QString(plain(QStringView(name).first(kMostName)) + kMore);
}

LineAround lineAround(QStringView text, Range range, qint32 number)
{
    const qsizetype first = range.start > 0 ? text.lastIndexOf(u'\n', range.start - 1) + 1 : 0;
    qsizetype last = text.indexOf(u'\n', range.start);
    if (last < 0)
        last = text.size();
    qsizetype from = first;
    while (from < range.start && text[from].isSpace())
        ++from;
    const bool isCutBefore = range.start - from > kMostBefore;
    if (isCutBefore)
        from = range.start - kMostBefore;
    const qsizetype nameEnd = std::min<qsizetype>({range.end, last, range.start + kMostName});
    qsizetype to = last;
    while (to > nameEnd && text[to - 1].isSpace())
        --to;
    const bool isCutBehind = to - nameEnd > kMostBehind;
    if (isCutBehind)
        to = nameEnd + kMostBehind;
    LineAround line;
    line.number = number;
    line.text = (isCutBefore ? QString(kMore) : QString()) + plain(text.sliced(from, to - from)) +
                (isCutBehind ? QString(kMore) : QString());
    line.start = qint32(range.start - from) + (isCutBefore ? 1 : 0);
    line.length = qint32(nameEnd - range.start);
    return line;
}

QString LineAround::with(const QString &other) const
{
    return QString(text).replace(start, length, shownName(other));
}

} // namespace quillmere
