#include "markup/Comments.h"

#include "markup/Matching.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <queue>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

constexpr QStringView opener = u"<!--";
constexpr QStringView closer = u"-->";

// Moments number the removals. A piece of text has come to be at the moment of the last removal inside it, 0
// where it is as it was in the beginning.
using Moment = int;

// Newton's iteration: an odd number is its own inverse in three bits, and each step doubles them.
constexpr quint64 inverseModulo64Bits(quint64 odd)
{
    quint64 inverse = odd;
    for (int bits = 3; bits < 64; bits *= 2)
        inverse *= 2 - odd * inverse;
    return inverse;
}

// Hash of the text put in so far, from which the hash of any stretch of its end follows: each unit is
// multiplied by a higher power of the base, and a stretch is moved down to power 0.
class Fingerprint
{
public:
    void put(char16_t unit)
    {
        m_sum += unit * m_power;
        m_power *= base;
        m_inverse *= inverseBase;
    }

    void takeBack(char16_t unit)
    {
        m_power *= inverseBase;
        m_inverse *= base;
        m_sum -= unit * m_power;
    }

    quint64 since(const Fingerprint &start) const { return (m_sum - start.m_sum) * start.m_inverse; }

private:
    static constexpr quint64 base = 0x9E3779B97F4A7C15;
    static constexpr quint64 inverseBase = inverseModulo64Bits(base);

    quint64 m_sum = 0;
    quint64 m_power = 1;
    quint64 m_inverse = 1;
};

// The comments removed so far, letter case ignored, with the moments of their removal.
class RemovedComments
{
public:
    static constexpr Moment never = std::numeric_limits<Moment>::max();

    // Every length there is among them. Since the comments have been part of the text, these are few: at most
    // about the square root of twice its length.
    const std::set<qsizetype> &lengths() const { return m_lengths; }

    bool mayContain(quint64 hash) const { return m_entries.contains(hash); }

    // When the comment went away as a copy, if it has been there since the moment `since`.
    Moment firstRemovalAfter(Moment since, quint64 hash, QStringView comment) const
    {
        const auto [begin, end] = m_entries.equal_range(hash);
        for (auto it = begin; it != end; ++it) {
            const std::vector<Moment> &moments = it->second.moments;
            if (moments.back() > since && isSame(it->second.folded, comment))
                return *std::upper_bound(moments.begin(), moments.end(), since);
        }
        return never;
    }

    void add(Moment now, quint64 hash, QStringView comment)
    {
        const auto [begin, end] = m_entries.equal_range(hash);
        for (auto it = begin; it != end; ++it) {
            if (isSame(it->second.folded, comment)) {
                it->second.moments.push_back(now);
                return;
            }
        }
        m_entries.emplace(hash, Entry{foldedText(comment), {now}});
        m_lengths.insert(comment.size());
    }

private:
    struct Entry
    {
        QString folded;
        std::vector<Moment> moments;
    };

    static bool isSame(const QString &folded, QStringView comment)
    {
        return folded.size() == comment.size() && matchesIgnoringCase(comment, 0, folded);
    }

    std::unordered_multimap<quint64, Entry> m_entries;
    std::set<qsizetype> m_lengths;
};

// Removes comment by comment, from the left, in one pass over the text.
//
// With each comment its copies go, wherever they stand, and nothing to the right has been looked at yet. So
// the pass notes what was removed and when, and catches up on reaching a copy. What makes this exact: a
// comment holds "-->" only at its end, so a copy always begins at an opener and ends at the next closer
// behind it, and all there is to ask at a closer is which of the openers waiting for it begins a copy, and
// which of those went first. A copy must have been there when the comment was removed; one that came together
// only later, because something inside it went or because a removal joined the halves of a marker, stays
// until its own turn.
class CommentPass
{
public:
    explicit CommentPass(QStringView text) : m_result(text.size(), Qt::Uninitialized)
    {
        // Written to the place it is read from or to one before it, never ahead.
        m_out = reinterpret_cast<char16_t *>(m_result.data());
        for (const QChar unit : text)
            put(unit.unicode());
        m_result.truncate(m_size);
    }

    const QString &result() const { return m_result; }

    // The pass came to a "-->" with no "<!--" before it, while there was a "<!--" behind it: all "-->" must
    // go.
    bool hasStrayCloser() const { return m_stray && (m_openerStays || !m_open.empty()); }

private:
    struct Opener
    {
        qsizetype position;
        Fingerprint before;
        Moment since; // the last removal between this opener and the next one
    };

    struct Junction
    {
        qsizetype position;
        Moment moment;
    };

    QStringView written(qsizetype from) const { return QStringView(m_out + from, m_size - from); }

    void put(char16_t unit)
    {
        m_out[m_size++] = unit;
        if (!m_open.empty())
            m_fingerprint.put(foldCase(unit));
        if (unit == u'-' && written(0).endsWith(opener))
            openComment();
        else if (unit == u'>' && written(0).endsWith(closer))
            closeComment();
    }

    void openComment()
    {
        Opener found{m_size - opener.size(), m_fingerprint, 0};
        if (m_open.empty()) {
            for (const QChar unit : opener)
                m_fingerprint.put(unit.unicode());
        } else {
            for (auto it = opener.rbegin(); it != opener.rend(); ++it)
                found.before.takeBack(it->unicode());
        }
        for (auto it = m_junctions.rbegin(); it != m_junctions.rend() && it->position > found.position; ++it)
            found.since = std::max(found.since, it->moment);
        m_open.push_back(found);
    }

    void closeComment()
    {
        if (m_open.empty()) {
            m_stray = true;
            return;
        }
        Moment moment = RemovedComments::never;
        const std::size_t copy = firstCopy(moment);
        if (moment != RemovedComments::never) {
            cut(copy, moment);
        } else if (m_stray) {
            // The stray one comes first; this closer goes with it and leaves its openers open for good.
            m_openerStays = true;
            m_open.clear();
        } else {
            ++m_now;
            m_removed.add(m_now, m_fingerprint.since(m_open[0].before), written(m_open[0].position));
            cut(0, m_now);
        }
    }

    // Which of the open comments that end here went first as a copy, and when.
    std::size_t firstCopy(Moment &moment) const
    {
        std::size_t copy = 0;
        for (const qsizetype length : m_removed.lengths()) {
            const qsizetype start = m_size - length;
            if (start < m_open.front().position)
                break;
            const auto found = std::ranges::lower_bound(m_open, start, {}, &Opener::position);
            if (found == m_open.end() || found->position != start)
                continue;
            const quint64 hash = m_fingerprint.since(found->before);
            if (!m_removed.mayContain(hash))
                continue;
            const Moment since =
                std::max_element(found, m_open.end(), [](const Opener &left, const Opener &right) {
                    return left.since < right.since;
                })->since;
            const Moment removal = m_removed.firstRemovalAfter(since, hash, written(start));
            if (removal < moment) {
                moment = removal;
                copy = std::size_t(found - m_open.begin());
            }
        }
        return copy;
    }

    void cut(std::size_t index, Moment moment)
    {
        m_size = m_open[index].position;
        m_fingerprint = m_open[index].before;
        m_open.erase(m_open.begin() + std::ptrdiff_t(index), m_open.end());
        while (!m_junctions.empty() && m_junctions.back().position >= m_size) {
            if (m_junctions.back().position == m_size)
                moment = std::max(moment, m_junctions.back().moment);
            m_junctions.pop_back();
        }
        m_junctions.push_back({m_size, moment});
        if (!m_open.empty())
            m_open.back().since = std::max(m_open.back().since, moment);
    }

    QString m_result;
    char16_t *m_out = nullptr;
    qsizetype m_size = 0;
    std::vector<Opener> m_open;
    std::vector<Junction> m_junctions;
    Fingerprint m_fingerprint;
    RemovedComments m_removed;
    Moment m_now = 0;
    bool m_stray = false;
    bool m_openerStays = false;
};

// Removes every "-->", and does so again as long as a "-->" that came together at a place where one has gone
// stands before the first "<!--". Each time only the places where something has gone are looked at.
class StrayClosers
{
public:
    explicit StrayClosers(QStringView text) : m_text(text)
    {
        // Links count from 1; 0 and the last one are the ends of the chain.
        const qsizetype links = text.size() + 2;
        m_next.resize(std::size_t(links));
        m_previous.resize(std::size_t(links));
        for (qsizetype link = 0; link < links; ++link) {
            next(link) = link + 1;
            previous(link) = link - 1;
        }
        for (qsizetype link = 1; link <= text.size(); ++link)
            addMarkerAt(link);
    }

    QString remove()
    {
        while (!m_closers.empty() && m_closers.front() < firstOpener())
            removeRound();
        QString result;
        result.reserve(m_text.size());
        for (qsizetype link = next(0); link <= m_text.size(); link = next(link))
            result += m_text[link - 1];
        return result;
    }

private:
    static constexpr qsizetype gone = -1;

    qsizetype &next(qsizetype link) { return m_next[std::size_t(link)]; }
    qsizetype &previous(qsizetype link) { return m_previous[std::size_t(link)]; }

    bool isMarkerAt(qsizetype link, QStringView marker)
    {
        for (const QChar unit : marker) {
            if (link <= 0 || link > m_text.size() || m_text[link - 1] != unit)
                return false;
            link = next(link);
        }
        return true;
    }

    void addMarkerAt(qsizetype link)
    {
        if (isMarkerAt(link, closer))
            m_closers.push_back(link);
        else if (isMarkerAt(link, opener))
            m_openers.push(link);
    }

    // 0 where there is none. One that was there may have gone, or lost its "--" to a closer.
    qsizetype firstOpener()
    {
        while (!m_openers.empty() && !isMarkerAt(m_openers.top(), opener))
            m_openers.pop();
        return m_openers.empty() ? 0 : m_openers.top();
    }

    void removeRound()
    {
        std::vector<qsizetype> seams; // what stands before each closer
        for (const qsizetype start : m_closers) {
            seams.push_back(previous(start));
            qsizetype link = start;
            for (qsizetype units = closer.size(); units > 0; --units)
                link = std::exchange(next(link), gone);
            next(seams.back()) = link;
            previous(link) = seams.back();
        }
        m_closers.clear();
        for (qsizetype link : seams) {
            for (qsizetype units = opener.size() - 1; units > 0 && link > 0; --units) {
                addMarkerAt(link);
                link = previous(link);
            }
        }
        // Seams that are close to each other find the same marker.
        std::ranges::sort(m_closers);
        m_closers.erase(std::unique(m_closers.begin(), m_closers.end()), m_closers.end());
    }

    QStringView m_text;
    std::vector<qsizetype> m_next;
    std::vector<qsizetype> m_previous;
    std::vector<qsizetype> m_closers;
    std::priority_queue<qsizetype, std::vector<qsizetype>, std::greater<>> m_openers;
};

} // namespace

QString GetRemoveComment(QString &html)
{
    const qsizetype open = indexOfExact(html, opener);
    const qsizetype strayEnd = indexOfExact(html, closer);
    if (strayEnd >= 0 && (open < 0 || strayEnd < open)) {
        replaceIgnoringCase(html, closer, {});
    } else if (open >= 0) {
        // The closer may share its "--" with the opener: "<!-->" is a whole comment.
        const qsizetype end = indexOfExact(html, closer, open + 1);
        if (end >= 0)
            replaceIgnoringCase(html, QStringView(html).sliced(open, end + closer.size() - open), {});
    }
    return html;
}

QString RemoveComment(QString &html)
{
    while (containsExact(html, opener) && containsExact(html, closer)) {
        const CommentPass pass(html);
        html = pass.result();
        if (!pass.hasStrayCloser())
            break;
        html = StrayClosers(html).remove();
    }
    return html;
}

} // namespace quillmere
