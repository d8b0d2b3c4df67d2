#include "markup/Matching.h"
#include "Fuzz.h"

namespace {

bool matches(QStringView text, QStringView marker, qsizetype at, bool folded)
{
    for (qsizetype i = 0; i < marker.size(); ++i) {
        const QChar left = text[at + i], right = marker[i];
        if (folded ? left.toCaseFolded() != right.toCaseFolded() : left != right)
            return false;
    }
    return true;
}

// Position by position.
qsizetype find(QStringView text, QStringView marker, qsizetype from, bool folded)
{
    for (; from + marker.size() <= text.size() && !text.isEmpty(); ++from) {
        if (matches(text, marker, from, folded))
            return from;
    }
    return -1;
}

} // namespace

// Finding, splitting and replacing are as a search from position to position; many replacements at once are
// as one after the other.
void fuzz(const Input &input)
{
    const QString text = input.text(0), marker = input.text(1), to = input.text(2);
    const qsizetype from = input.choice(3, 256);
    check(indexOfExact(text, marker, from) == find(text, marker, from, false), "finds exactly", marker);
    check(indexOfIgnoringCase(text, marker, from) == find(text, marker, from, true), "finds any case",
          marker);
    check(containsExact(text, marker) == (find(text, marker, 0, false) >= 0), "contains exactly", marker);
    check(containsIgnoringCase(text, marker) == (find(text, marker, 0, true) >= 0), "contains any case",
          marker);

    for (const bool folded : {false, true}) {
        QStringList pieces;
        qsizetype done = 0;
        if (!marker.isEmpty()) {
            for (qsizetype hit; (hit = find(text, marker, done, folded)) >= 0; done = hit + marker.size())
                pieces.append(text.mid(done, hit - done));
        }
        if (!text.isEmpty())
            pieces.append(text.mid(done));
        QStringList split;
        for (QStringView piece : folded ? splitIgnoringCase(text, marker) : splitExact(text, marker))
            split.append(piece.toString());
        check(split == pieces, "splits", split.join(u'|'));
        QString replaced = text;
        if (folded)
            same(replaceIgnoringCase(replaced, marker, to), pieces.join(to), "replaces");
    }

    const QList<Replacement> pairs = {{marker, to}, {input.text(4), input.text(5)}, {to, input.text(6)}};
    QString atOnce = text, inTurn = text;
    for (const Replacement &pair : pairs)
        replaceIgnoringCase(inTurn, pair.from, pair.to);
    same(replaceAllIgnoringCase(atOnce, pairs), inTurn, "replaces all in turn");
}
