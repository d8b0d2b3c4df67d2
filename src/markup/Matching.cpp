#include "markup/Matching.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

bool isAsciiLetter(char16_t unit)
{
    const char16_t lower = unit | 0x20;
    return lower >= u'a' && lower <= u'z';
}

// Only letters are folded onto, so an ASCII unit that is no letter matches nothing but itself and can be
// looked for with the vectorised search for one unit. Blanks are common in markup and make a poor anchor, yet
// a better one than none. -1 where every unit may have a case.
qsizetype anchorOf(QStringView marker)
{
    qsizetype blank = -1;
    for (qsizetype i = 0; i < marker.size(); ++i) {
        const char16_t unit = marker[i].unicode();
        if (unit >= 0x80 || isAsciiLetter(unit))
            continue;
        if (unit != u' ')
            return i;
        if (blank < 0)
            blank = i;
    }
    return blank;
}

// Both parts are as long as `size`.
bool equalFolded(const QChar *left, const QChar *right, qsizetype size)
{
    return std::equal(left, left + size, right, [](QChar a, QChar b) {
        return a == b || foldCase(a.unicode()) == foldCase(b.unicode());
    });
}

// Looks for one marker again and again, so that the anchor is chosen once.
class Finder
{
public:
    Finder(QStringView text, QStringView marker) : Finder(text, marker, anchorOf(marker)) {}
    // `anchor` is the index of a unit of the marker that matches nothing but itself in this text.
    Finder(QStringView text, QStringView marker, qsizetype anchor)
        : m_text(text), m_marker(marker), m_anchor(anchor)
    {
    }

    // `from` is not negative and the marker not empty.
    qsizetype next(qsizetype from) const
    {
        return m_anchor >= 0 ? nextAtAnchor(from) : nextAtFirstUnit(from);
    }

private:
    bool matchesAt(qsizetype position) const
    {
        return equalFolded(m_text.data() + position, m_marker.data(), m_marker.size());
    }

    qsizetype nextAtAnchor(qsizetype from) const
    {
        const qsizetype last = m_text.size() - m_marker.size();
        while (from <= last) {
            const qsizetype hit = m_text.indexOf(m_marker[m_anchor], from + m_anchor);
            if (hit < 0 || hit - m_anchor > last)
                return -1;
            if (matchesAt(hit - m_anchor))
                return hit - m_anchor;
            from = hit - m_anchor + 1;
        }
        return -1;
    }

    qsizetype nextAtFirstUnit(qsizetype from) const
    {
        const char16_t first = foldCase(m_marker[0].unicode());
        const qsizetype last = m_text.size() - m_marker.size();
        for (; from <= last; ++from) {
            if (foldCase(m_text[from].unicode()) == first && matchesAt(from))
                return from;
        }
        return -1;
    }

    QStringView m_text;
    QStringView m_marker;
    qsizetype m_anchor;
};

// `find` gives the next occurrence at or behind a position.
template <typename Find>
QList<QStringView> splitWith(QStringView text, qsizetype separatorSize, Find find)
{
    QList<QStringView> pieces;
    if (text.isEmpty())
        return pieces;
    qsizetype from = 0;
    if (separatorSize > 0) {
        for (qsizetype hit = find(0); hit >= 0; hit = find(from)) {
            pieces.append(text.sliced(from, hit - from));
            from = hit + separatorSize;
        }
    }
    pieces.append(text.sliced(from));
    return pieces;
}

// The hits are in order and do not overlap; each is `size` long. Makes a new text rather than rewriting the
// old one: `to` may be a view into the old one.
template <typename Hits>
void replaceHits(QString &text, const Hits &hits, qsizetype size, QStringView to)
{
    QString result(text.size() + hits.size() * (to.size() - size), Qt::Uninitialized);
    QChar *out = result.data();
    const QChar *in = text.constData();
    qsizetype done = 0;
    for (const qsizetype hit : hits) {
        out = std::copy(in + done, in + hit, out);
        out = std::copy(to.begin(), to.end(), out);
        done = hit + size;
    }
    std::copy(in + done, in + text.size(), out);
    text = std::move(result);
}

// How often units occur in a text, those of one remainder counted together.
using Counts = std::array<qsizetype, 256>;

Counts countUnits(QStringView text)
{
    Counts counts{};
    for (const QChar unit : text)
        ++counts[unit.unicode() % counts.size()];
    return counts;
}

// Index of the unit of a marker that is the rarest in the text.
qsizetype rarestOf(QStringView marker, const Counts &counts)
{
    const auto rarer = [&counts](QChar a, QChar b) {
        return counts[a.unicode() % counts.size()] < counts[b.unicode() % counts.size()];
    };
    return std::min_element(marker.begin(), marker.end(), rarer) - marker.begin();
}

} // namespace

char16_t foldCaseBeyondAscii(char16_t unit)
{
    const QChar whole(unit);
    return whole.isSurrogate() ? unit : whole.toCaseFolded().unicode();
}

QString foldedText(QStringView text)
{
    QString result;
    foldInto(result, text);
    return result;
}

void foldInto(QString &folded, QStringView text)
{
    folded.resize(text.size());
    std::transform(text.begin(), text.end(), folded.begin(),
                   [](QChar unit) { return QChar(foldCase(unit.unicode())); });
}

bool containsExact(QStringView text, QStringView marker)
{
    return indexOfExact(text, marker) >= 0;
}

bool containsIgnoringCase(QStringView text, QStringView marker)
{
    return indexOfIgnoringCase(text, marker) >= 0;
}

qsizetype indexOfExact(QStringView text, QStringView marker, qsizetype from)
{
    from = std::max<qsizetype>(from, 0);
    if (text.isEmpty() || from > text.size())
        return -1;
    return marker.isEmpty() ? from : text.indexOf(marker, from);
}

qsizetype indexOfIgnoringCase(QStringView text, QStringView marker, qsizetype from)
{
    from = std::max<qsizetype>(from, 0);
    if (text.isEmpty() || from > text.size())
        return -1;
    return marker.isEmpty() ? from : Finder(text, marker).next(from);
}

bool matchesIgnoringCase(QStringView text, qsizetype position, QStringView marker)
{
    return position >= 0 && position <= text.size() - marker.size() &&
           equalFolded(text.data() + position, marker.data(), marker.size());
}

QList<QStringView> splitExact(QStringView text, QStringView separator)
{
    return splitWith(text, separator.size(), [=](qsizetype from) { return text.indexOf(separator, from); });
}

QList<QStringView> splitIgnoringCase(QStringView text, QStringView separator)
{
    const Finder finder(text, separator);
    return splitWith(text, separator.size(), [&](qsizetype from) { return finder.next(from); });
}

QString &replaceIgnoringCase(QString &text, QStringView from, QStringView to)
{
    if (from.isEmpty() || text.isEmpty())
        return text;

    const Finder finder(text, from);
    QVarLengthArray<qsizetype, 256> hits;
    for (qsizetype hit = finder.next(0); hit >= 0; hit = finder.next(hit + from.size()))
        hits.append(hit);
    if (!hits.isEmpty())
        replaceHits(text, hits, from.size(), to);
    return text;
}

QString &replaceAllIgnoringCase(QString &text, const QList<Replacement> &replacements)
{
    // A folded text goes along. In it every unit can be an anchor, also those of markers that are all
    // letters.
    QString search = foldedText(text);
    const Counts counts = countUnits(search);
    QVarLengthArray<qsizetype, 256> hits;
    for (const Replacement &replacement : replacements) {
        const QString from = foldedText(replacement.from);
        if (from.isEmpty())
            continue;
        hits.clear();
        const Finder finder(search, from, rarestOf(from, counts));
        for (qsizetype hit = finder.next(0); hit >= 0; hit = finder.next(hit + from.size()))
            hits.append(hit);
        if (hits.isEmpty())
            continue;
        replaceHits(text, hits, from.size(), replacement.to);
        replaceHits(search, hits, from.size(), foldedText(replacement.to));
    }
    return text;
}

} // namespace quillmere
