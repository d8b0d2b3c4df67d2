#include "markup/LineDifference.h"

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

// The greedy search for the shortest way through the grid of both texts: diagonal k holds the places where
// k more lines of `a` than of `b` are used up, and ends[k] is how far one gets on it with d edits.
class ShortestEdit
{
public:
    ShortestEdit(const Candidates &a, const Candidates &b) : m_a(a), m_b(b) {}

    // Calls keep(i, j) for every pair of equal lines on the way, from the last to the first. Calls nothing
    // where the way would be too long.
    template <typename Keep>
    void run(Keep keep)
    {
        const int found = search();
        if (found < 0)
            return;
        int x = int(m_a.size()), y = int(m_b.size());
        for (int d = found; x > 0 || y > 0; --d) {
            const int k = x - y;
            const int before = d == 0 ? 0 : isDown(d, k) ? k + 1 : k - 1;
            const int fromX = d == 0 ? 0 : end(d - 1, before);
            const int fromY = fromX - before;
            while (x > fromX && y > fromY) {
                --x, --y;
                keep(m_a[size_t(x)].line, m_b[size_t(y)].line);
            }
            x = fromX, y = fromY;
        }
    }

private:
    // Row d of the triangle has the diagonals -d to d.
    int &end(int d, int k) { return m_ends[size_t(d) * size_t(d) + size_t(k + d)]; }
    bool isDown(int d, int k) { return k == -d || (k != d && end(d - 1, k - 1) < end(d - 1, k + 1)); }

    // The number of edits of the shortest way, or -1.
    int search()
    {
        const int n = int(m_a.size()), m = int(m_b.size());
        qint64 steps = 0;
        for (int d = 0; d <= kMostEdits && steps < kMostSteps; ++d) {
            m_ends.resize(size_t(d + 1) * size_t(d + 1));
            for (int k = -d; k <= d; k += 2) {
                int x = 0;
                if (d > 0)
                    x = isDown(d, k) ? end(d - 1, k + 1) : end(d - 1, k - 1) + 1;
                int y = x - k;
                for (; x < n && y < m && m_a[size_t(x)].number == m_b[size_t(y)].number; ++x, ++y)
                    ++steps;
                end(d, k) = x;
                if (x >= n && y >= m)
                    return d;
            }
        }
        return -1;
    }

    const Candidates &m_a, &m_b;
    std::vector<int> m_ends;
};

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
    ShortestEdit(fromBoth, toBoth).run([&](qsizetype i, qsizetype j) { partners[i] = j; });
    return partners;
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

LineDifference compareLines(QStringView from, QStringView to, qsizetype context)
{
    const Lines a = linesOf(from), b = linesOf(to);
    const QList<Change> changes = changesOf(partnersOf(a, b), b.size());
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

} // namespace quillmere
