#include "source/TextChanges.h"

#include "markup/FewestSteps.h"

#include <algorithm>
#include <vector>

namespace quillmere {

namespace {

constexpr qsizetype kAnchor = 16;     // so many equal units in a row, and both texts are taken to go on alike
constexpr qsizetype kMostBetween = 4; // units between two changes that are made as one
constexpr int kMostSteps = 160;       // units that may come and go between two such places
constexpr qsizetype kMostWork = 1 << 23; // looks at pairs of units, over all such searches

qsizetype sameAtEnd(QStringView a, QStringView b)
{
    return std::mismatch(a.crbegin(), a.crend(), b.crbegin(), b.crend()).first - a.crbegin();
}

qsizetype sameAtStart(QStringView a, QStringView b)
{
    return std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend()).first - a.cbegin();
}

qsizetype blanksAtStart(QStringView text)
{
    return std::find_if(text.cbegin(), text.cend(), [](QChar c) { return !c.isSpace(); }) - text.cbegin();
}

// Walks along both texts and notes where they differ.
class Comparison
{
public:
    Comparison(QStringView now, QStringView next) : m_now(now), m_next(next) {}

    QList<TextChange> run()
    {
        const qsizetype same = sameAtEnd(m_now, m_next);
        const qsizetype nowEnd = m_now.size() - same, nextEnd = m_next.size() - same;
        if (!walk(nowEnd, nextEnd))
            walkLines(nowEnd, nextEnd);
        return m_changes;
    }

private:
    // False where it does not find out, within what it may cost, how the texts go on behind a difference.
    bool walk(qsizetype nowEnd, qsizetype nextEnd)
    {
        for (;;) {
            const QStringView now = m_now.first(nowEnd).sliced(m_nowAt);
            const QStringView next = m_next.first(nextEnd).sliced(m_nextAt);
            const qsizetype same = sameAtStart(now, next);
            m_nowAt += same;
            m_nextAt += same;
            if (m_nowAt == nowEnd && m_nextAt == nextEnd)
                return true;
            if (!passBlanks(now.sliced(same), next.sliced(same)) &&
                !passSteps(now.sliced(same), next.sliced(same)))
                return false;
        }
    }

    // Lines that have each other's number are compared one by one.
    void walkLines(qsizetype nowEnd, qsizetype nextEnd)
    {
        const auto rest = [](QStringView text, qsizetype at, qsizetype end) {
            return text.first(end).sliced(at);
        };
        if (rest(m_now, m_nowAt, nowEnd).count(u'\n') != rest(m_next, m_nextAt, nextEnd).count(u'\n')) {
            change(nowEnd - m_nowAt, nextEnd - m_nextAt);
            return;
        }
        while (m_nowAt < nowEnd || m_nextAt < nextEnd) {
            const qsizetype nowBreak = m_now.indexOf(u'\n', m_nowAt);
            const qsizetype nextBreak = m_next.indexOf(u'\n', m_nextAt);
            const qsizetype nowLine = nowBreak < 0 ? nowEnd : std::min(nowBreak, nowEnd);
            const qsizetype nextLine = nextBreak < 0 ? nextEnd : std::min(nextBreak, nextEnd);
            if (!walk(nowLine, nextLine)) {
                const qsizetype same =
                    sameAtEnd(rest(m_now, m_nowAt, nowLine), rest(m_next, m_nextAt, nextLine));
                change(nowLine - m_nowAt - same, nextLine - m_nextAt - same);
            }
            m_nowAt = std::min(nowLine + 1, nowEnd);
            m_nextAt = std::min(nextLine + 1, nextEnd);
        }
    }

    // Notes a change of so many units here, and goes behind it.
    void change(qsizetype length, qsizetype by)
    {
        if (length > 0 || by > 0)
            add({m_nowAt, length, m_next.sliced(m_nextAt, by).toString()});
        m_nowAt += length;
        m_nextAt += by;
    }

    void add(TextChange change)
    {
        // Half a pair is no character that could come or go.
        if (change.start > 0 && m_now[change.start - 1].isHighSurrogate()) {
            change.text.prepend(m_now[--change.start]);
            ++change.length;
        }
        const qsizetype end = change.start + change.length;
        if (end < m_now.size() && m_now[end].isLowSurrogate()) {
            change.text.append(m_now[end]);
            ++change.length;
        }
        if (m_changes.isEmpty() || !join(m_changes.last(), change))
            m_changes.append(change);
    }

    // Two changes with next to nothing between them are one: each costs the document and its undo history
    // more than a few units do.
    bool join(TextChange &last, const TextChange &change) const
    {
        const qsizetype end = last.start + last.length;
        const QStringView between = m_now.sliced(end, std::max<qsizetype>(change.start - end, 0));
        if (between.size() > kMostBetween || between.contains(u'\n'))
            return false;
        last.length += between.size() + change.length;
        last.text += between + change.text;
        return true;
    }

    static bool goesOnAlike(QStringView now, QStringView next)
    {
        return now.first(std::min(kAnchor, now.size())) == next.first(std::min(kAnchor, next.size()));
    }

    // Commands that indent differ in blanks only.
    bool passBlanks(QStringView now, QStringView next)
    {
        const qsizetype gone = blanksAtStart(now), come = blanksAtStart(next);
        if (gone + come == 0 || !goesOnAlike(now.sliced(gone), next.sliced(come)))
            return false;
        const qsizetype same = sameAtEnd(now.first(gone), next.first(come));
        change(gone - same, come - same);
        return true;
    }

    // Looks for the fewest units that come and go until both texts go on alike.
    bool passSteps(QStringView now, QStringView next)
    {
        const auto alike = [&](qsizetype at, qsizetype other) {
            qsizetype same = 0;
            if (at <= now.size() && other <= next.size())
                same = sameAtStart(now.sliced(at, std::min(kAnchor, now.size() - at)),
                                   next.sliced(other, std::min(kAnchor, next.size() - other)));
            m_work += 1 + same;
            return same;
        };
        const auto ends = [&](qsizetype at, qsizetype other, qsizetype same, int steps) {
            return (at == now.size() && other == next.size()) || (same >= kAnchor && steps > 0);
        };
        const auto goesOn = [&](int steps) { return steps <= kMostSteps && m_work < kMostWork; };
        const auto way = m_search.find(alike, ends, goesOn);
        if (way)
            noteSteps(*way);
        return way.has_value();
    }

    void noteSteps(const std::vector<FewestSteps::Step> &way)
    {
        const qsizetype nowStart = m_nowAt, nextStart = m_nextAt;
        for (auto step = way.cbegin(); step != way.cend();) {
            m_nowAt = nowStart + step->now;
            m_nextAt = nextStart + step->next;
            qsizetype gone = 0, come = 0;
            const FewestSteps::Step first = *step;
            while (step != way.cend() && step->now == first.now + gone && step->next == first.next + come) {
                (step->comes ? come : gone) += 1;
                ++step;
            }
            change(gone, come);
        }
    }

    QStringView m_now, m_next;
    qsizetype m_nowAt = 0, m_nextAt = 0;
    qsizetype m_work = 0;
    FewestSteps m_search; // has its memory again for each
    QList<TextChange> m_changes;
};

// Behind as many characters that are no blanks as before, and directly before the next one where it was
// directly before it.
qsizetype sameInk(QStringView now, qsizetype caret, QStringView next)
{
    const auto isInk = [](QChar c) { return !c.isSpace(); };
    const QStringView before = now.first(caret);
    qsizetype ink = std::count_if(before.begin(), before.end(), isInk);
    qsizetype at = 0;
    while (at < next.size() && ink > 0)
        ink -= isInk(next[at++]) ? 1 : 0;
    if (caret < now.size() && isInk(now[caret]))
        at += blanksAtStart(next.sliced(at));
    return at;
}

} // namespace

QList<TextChange> changesBetween(QStringView now, QStringView next)
{
    return Comparison(now, next).run();
}

qsizetype caretAfter(const QList<TextChange> &changes, QStringView now, qsizetype caret)
{
    qsizetype moved = 0;
    for (const TextChange &change : changes) {
        const qsizetype end = change.start + change.length;
        if (caret < change.start || (caret == change.start && change.length > 0))
            break;
        if (caret < end)
            return change.start + moved +
                   sameInk(now.sliced(change.start, change.length), caret - change.start, change.text);
        moved += change.text.size() - change.length;
    }
    return caret + moved;
}

} // namespace quillmere
