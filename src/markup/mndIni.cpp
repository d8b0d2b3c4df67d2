#include "markup/mndIni.h"

#include "markup/Matching.h"

#include <algorithm>
#include <optional>

namespace quillmere {

namespace {

constexpr qsizetype blanksPerSide = 100;

// Piece number `index` of the text, or nothing when there are fewer pieces.
std::optional<QStringView> pieceAt(QStringView text, QStringView separator, int index)
{
    if (index < 0 || text.isEmpty() || (separator.isEmpty() && index > 0))
        return std::nullopt;
    if (separator.isEmpty())
        return text;

    qsizetype start = 0;
    for (int i = 0; i < index; ++i) {
        const qsizetype hit = indexOfIgnoringCase(text, separator, start);
        if (hit < 0)
            return std::nullopt;
        start = hit + separator.size();
    }
    const qsizetype end = indexOfIgnoringCase(text, separator, start);
    return end < 0 ? text.sliced(start) : text.sliced(start, end - start);
}

bool isStripped(QChar unit)
{
    return unit.unicode() >= 1 && unit.unicode() <= 32;
}

} // namespace

QStringView SplitFieldView(QStringView text, QStringView separator1, QStringView separator2, int index1,
                           int index2)
{
    if (!containsExact(text, separator1))
        return {};
    const QStringView field = pieceAt(text, separator1, index1).value_or(QStringView());
    if (separator2.isEmpty() || !containsExact(field, separator2))
        return field;
    return pieceAt(field, separator2, index2).value_or(field);
}

QString SplitField(QStringView text, QStringView separator1, QStringView separator2, int index1, int index2)
{
    return SplitFieldView(text, separator1, separator2, index1, index2).toString();
}

QString StripControlChars(QString &s)
{
    const auto first = std::find_if_not(s.cbegin(), s.cend(), isStripped);
    const auto last = std::find_if_not(s.crbegin(), std::make_reverse_iterator(first), isStripped).base();
    if (last - first < s.size())
        s = s.sliced(first - s.cbegin(), last - first);
    return s;
}

QString &CloseUpEquals(QString &text)
{
    const auto touchesEquals = [&text](qsizetype blank) {
        return (blank > 0 && text.at(blank - 1) == u'=') ||
               (blank + 1 < text.size() && text.at(blank + 1) == u'=');
    };
    qsizetype read = text.indexOf(u' ');
    while (read >= 0 && !touchesEquals(read))
        read = text.indexOf(u' ', read + 1);
    if (read < 0)
        return text;

    // A blank that touches a "=" from behind a run of blanks is the last of its run: go back to the first.
    while (read > 0 && text.at(read - 1) == u' ')
        --read;
    QChar *units = text.data();
    const qsizetype size = text.size();
    qsizetype write = read;
    while (read < size) {
        if (units[read] != u' ') {
            units[write++] = units[read++];
            continue;
        }
        qsizetype end = read;
        while (end < size && units[end] == u' ')
            ++end;
        const int sides = int(write > 0 && units[write - 1] == u'=') + int(end < size && units[end] == u'=');
        const qsizetype kept = std::max<qsizetype>(end - read - sides * blanksPerSide, 0);
        std::fill_n(units + write, kept, u' ');
        write += kept;
        read = end;
    }
    text.truncate(write);
    return text;
}

} // namespace quillmere
