#include "source/TextFind.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

bool isOfWord(QChar unit)
{
    return unit.isLetterOrNumber() || unit.isSurrogate() || unit == u'_';
}

// Where the text begins or ends with no letter, nothing of a word goes on there.
bool isWholeWord(QStringView in, qsizetype at, qsizetype length)
{
    const auto divides = [in](qsizetype position) {
        return position == 0 || position == in.size() || !isOfWord(in[position - 1]) ||
               !isOfWord(in[position]);
    };
    return divides(at) && divides(at + length);
}

} // namespace

qsizetype findFrom(QStringView in, const FindText &what, qsizetype from)
{
    const qsizetype length = what.text.size();
    if (length == 0)
        return -1;
    const auto next = [&](qsizetype at) {
        return what.mindsCase ? indexOfExact(in, what.text, at) : indexOfIgnoringCase(in, what.text, at);
    };
    qsizetype at = next(from);
    while (what.wholeWords && at >= 0 && !isWholeWord(in, at, length))
        at = next(at + 1);
    return at;
}

QList<qsizetype> findAll(QStringView in, const FindText &what)
{
    QList<qsizetype> places;
    for (qsizetype at = findFrom(in, what); at >= 0; at = findFrom(in, what, at + what.text.size()))
        places.append(at);
    return places;
}

} // namespace quillmere
