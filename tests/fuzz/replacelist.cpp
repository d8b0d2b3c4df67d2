#include "replace/ReplaceList.h"
#include "Fuzz.h"

// A list that was written is read as the same pairs, but for what an INI value cannot hold at its ends.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    // A list of a hundred thousand empty pairs shows nothing new and takes its time.
    if (ReplaceIni(text).ReadReplaceIni(u"total"_s).toDouble() > 500)
        return;
    const QList<Replacement> pairs = readReplaceList(text);
    bool plain = true;
    const auto look = [&plain](const QString &value) {
        check(value.size() <= 254 && !value.contains(u'\n'), "a value", value);
        const bool quoted =
            value.size() > 1 && value.front() == value.back() && holdsAny(value.left(1), u"\"'");
        const bool blank =
            !value.isEmpty() && (holdsAny(value.left(1), u" \t") || holdsAny(value.right(1), u" \t"));
        plain = plain && !quoted && !blank && !value.contains(u'\r');
    };
    for (const Replacement &pair : pairs) {
        look(pair.from);
        look(pair.to);
    }
    check(readReplaceList(replaceListText(pairs)).size() == pairs.size(), "as many as there were", text);
    check(!plain || readReplaceList(replaceListText(pairs)) == pairs, "what is written is read", text);

    const QString ended = withSourceLineEnds(input.text(1));
    same(withSourceLineEnds(ended), ended, "line ends stay");
    check(ended.count(u'\r') == ended.count(u"\r\n") && ended.count(u'\n') == ended.count(u"\r\n"), "CR LF",
          ended);
}
