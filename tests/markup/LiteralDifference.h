#pragma once

#include "markup/LineDifference.h"

#include <QStringList>

namespace literal {

// How many lines the longest common subsequence has, cell by cell.
inline qsizetype commonLines(const QStringList &a, const QStringList &b)
{
    QList<QList<qsizetype>> longest(a.size() + 1, QList<qsizetype>(b.size() + 1, 0));
    for (qsizetype i = 0; i < a.size() * b.size(); ++i) {
        const qsizetype x = i / b.size(), y = i % b.size();
        longest[x + 1][y + 1] =
            a[x] == b[y] ? longest[x][y] + 1 : std::max(longest[x][y + 1], longest[x + 1][y]);
    }
    return longest[a.size()][b.size()];
}

// What the hunks, from the last to the first, make of the lines; nothing where they say that lines are there
// which are not.
inline QStringList applied(const quillmere::LineDifference &difference, QStringList lines)
{
    using Kind = quillmere::LineDifference::Kind;
    for (auto hunk = difference.hunks.crbegin(); hunk != difference.hunks.crend(); ++hunk) {
        qsizetype at = hunk->from;
        for (const auto &line : hunk->lines) {
            if (line.kind == Kind::Added)
                lines.insert(at++, line.text.toString());
            else if (lines.value(at) != line.text)
                return {};
            else if (line.kind == Kind::Removed)
                lines.removeAt(at);
            else
                ++at;
        }
    }
    return lines;
}

} // namespace literal
