#include "markup/FormatXML.h"
#include "Fuzz.h"
#include "markup/LiteralTwins.h"
#include "markup/Matching.h"

namespace {

// True for a unit of a short form, tabs in it or not: others come in for it.
bool isInShortForm(const QString &text, qsizetype at)
{
    QString joined = text;
    qsizetype place = at - QStringView(text).first(at).count(u'\t');
    joined.remove(u'\t');
    for (const QStringView form : {u"<img/>", u"<string/>"}) {
        for (qsizetype from = std::max<qsizetype>(0, place - form.size() + 1); from <= place; ++from) {
            if (matchesIgnoringCase(joined, from, form))
                return true;
        }
    }
    return false;
}

} // namespace

// A document is laid out as step by step, and its units are found again.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    QString formatted = text;
    const QString returned = FormatXML(formatted);
    same(formatted, twins::formatXml(text), "formats");
    same(returned, formatted, "returns what it has made");
    constexpr qsizetype kUnits = 16;
    for (qsizetype at = 0; at < text.size(); at += text.size() / kUnits + 1) {
        if (QStringView(u" \t\r\n").contains(text[at]) || isInShortForm(text, at))
            continue;
        const FormattedPlace place = formattedPlace(text, at, at + 1, formatted);
        same(foldedText(QStringView(formatted).mid(place.start, place.end - place.start)),
             foldedText(QStringView(text).mid(at, 1)), "the unit is found");
    }
}
