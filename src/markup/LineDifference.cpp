#include "markup/LineDifference.h"

#include "markup/FewestSteps.h"
#include "markup/Matching.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace quillmere {

namespace {

// What the search may cost: memory grows with the square of the first, time with both.
constexpr int kMostEdits = 2000;
constexpr qint64 kMostSteps = 20'000'000;

using Lines = QList<QStringView>;

Lines linesOf(QStringView text)
{
    Lines lines = splitExact(text, u"\n");
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QStringView &line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    return lines;
}

// A line between the common head and tail that stands in both texts: where, and a number for what it says.
struct Candidate
{
    qsizetype line;
    int number;
};
using Candidates = std::vector<Candidate>;

// A line that only one of the texts has differs in any case, and leaving it out of the search is what makes
// most searches short.
void findCandidates(const Lines &from, const Lines &to, qsizetype head, qsizetype tail, Candidates &fromBoth,
                    Candidates &toBoth)
{
    QHash<QStringView, int> numbers;
    for (qsizetype i = head; i < from.size() - tail; ++i) {
        if (!numbers.contains(from[i]))
            numbers.insert(from[i], int(numbers.size()));
    }
    std::vector<bool> inBoth(size_t(numbers.size()));
    for (qsizetype j = head; j < to.size() - tail; ++j) {
        const auto known = numbers.constFind(to[j]);
        if (known == numbers.cend())
            continue;
        inBoth[size_t(*known)] = true;
        toBoth.push_back({j, *known});
    }
    for (qsizetype i = head; i < from.size() - tail; ++i) {
        if (const int number = numbers.value(from[i]); inBoth[size_t(number)])
            fromBoth.push_back({i, number});
    }
}

// Calls keep(i, j) for every pair of equal lines that stay. Calls nothing where finding them takes too long.
template <typename Keep>
void keepMost(const Candidates &a, const Candidates &b, Keep keep)
{
    const qsizetype n = qsizetype(a.size()), m = qsizetype(b.size());
    qint64 work = 0;
    const auto alike = [&](qsizetype x, qsizetype y) {
        qsizetype same = 0;
        while (x + same < n && y + same < m && a[size_t(x + same)].number == b[size_t(y + same)].number)
            ++same;
        work += same;
        return same;
    };
    const auto ends = [&](qsizetype x, qsizetype y, qsizetype, int) { return x >= n && y >= m; };
    const auto goesOn = [&](int steps) { return steps <= kMostEdits && work < kMostSteps; };
    const auto way = FewestSteps().find(alike, ends, goesOn);
    if (!way)
        return;
    qsizetype x = 0, y = 0;
    const auto keepUntil = [&](qsizetype end) {
        for (; x < end; ++x, ++y)
            keep(a[size_t(x)].line, b[size_t(y)].line);
    };
    for (const FewestSteps::Step &step : *way) {
        keepUntil(step.now);
        (step.comes ? y : x) += 1;
    }
    keepUntil(n);
}

// For each line of `a` the line of `b` that it is, or -1.
QList<qsizetype> partnersOf(const Lines &a, const Lines &b)
{
    const qsizetype shorter = std::min(a.size(), b.size());
    const qsizetype head = std::mismatch(a.begin(), a.begin() + shorter, b.begin()).first - a.begin();
    const qsizetype tail =
        std::mismatch(a.rbegin(), a.rbegin() + (shorter - head), b.rbegin()).first - a.rbegin();
    QList<qsizetype> partners(a.size(), -1);
    for (qsizetype i = 0; i < head; ++i)
        partners[i] = i;
    for (qsizetype i = 1; i <= tail; ++i)
        partners[a.size() - i] = b.size() - i;
    Candidates fromBoth, toBoth;
    findCandidates(a, b, head, tail, fromBoth, toBoth);
    keepMost(fromBoth, toBoth, [&](qsizetype i, qsizetype j) { partners[i] = j; });
    return partners;
}

Lines withoutIndent(Lines lines)
{
    for (QStringView &line : lines) {
        qsizetype ink = 0;
        while (ink < line.size() && (line[ink] == u' ' || line[ink] == u'\t'))
            ++ink;
        line = line.sliced(ink);
    }
    return lines;
}

// Lines [from, fromEnd) of one text stand for lines [to, toEnd) of the other.
struct Change
{
    qsizetype from, fromEnd, to, toEnd;
};

QList<Change> changesOf(const QList<qsizetype> &partners, qsizetype toSize)
{
    QList<Change> changes;
    qsizetype i = 0, j = 0;
    while (i < partners.size() || j < toSize) {
        Change change{i, i, j, j};
        while (change.fromEnd < partners.size() && partners[change.fromEnd] < 0)
            ++change.fromEnd;
        change.toEnd = change.fromEnd < partners.size() ? partners[change.fromEnd] : toSize;
        if (change.fromEnd > change.from || change.toEnd > change.to)
            changes.append(change);
        i = change.fromEnd + 1;
        j = change.toEnd + 1;
    }
    return changes;
}

// The changes [first, end) with lines around them.
LineDifference::Hunk hunkOf(const Lines &a, const Lines &b, const Change *first, const Change *end,
                            qsizetype context)
{
    const qsizetype before = std::min(context, first->from);
    LineDifference::Hunk hunk{first->from - before, first->to - before, {}};
    const auto add = [&hunk](LineDifference::Kind kind, const Lines &lines, qsizetype line, qsizetype last) {
        for (; line < last; ++line)
            hunk.lines.append({kind, lines[line]});
    };
    qsizetype done = hunk.from;
    for (const Change *change = first; change < end; ++change) {
        add(LineDifference::Kind::Same, a, done, change->from);
        add(LineDifference::Kind::Removed, a, change->from, change->fromEnd);
        add(LineDifference::Kind::Added, b, change->to, change->toEnd);
        done = change->fromEnd;
    }
    add(LineDifference::Kind::Same, a, done, std::min(done + context, a.size()));
    return hunk;
}

} // namespace

LineDifference compareLines(QStringView from, QStringView to, qsizetype context, Indentation indentation)
{
    const Lines a = linesOf(from), b = linesOf(to);
    const bool all = indentation == Indentation::Counts;
    const QList<Change> changes =
        changesOf(all ? partnersOf(a, b) : partnersOf(withoutIndent(a), withoutIndent(b)), b.size());
    LineDifference difference;
    const Change *const last = changes.constData() + changes.size();
    for (const Change *first = changes.constData(), *next; first < last; first = next) {
        for (next = first + 1; next < last; ++next) {
            if (next->from - (next - 1)->fromEnd > 2 * context)
                break;
        }
        difference.hunks.append(hunkOf(a, b, first, next, context));
    }
    for (const Change &change : changes) {
        difference.removed += change.fromEnd - change.from;
        difference.added += change.toEnd - change.to;
    }
    return difference;
}

qsizetype onlyIndented(QStringView from, QStringView to)
{
    const Lines a = linesOf(from), b = linesOf(to);
    const Lines inkOfA = withoutIndent(a);
    const QList<qsizetype> partners = partnersOf(inkOfA, withoutIndent(b));
    qsizetype count = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        count += partners[i] >= 0 && !inkOfA[i].isEmpty() && a[i] != b[partners[i]];
    return count;
}

} // namespace quillmere
