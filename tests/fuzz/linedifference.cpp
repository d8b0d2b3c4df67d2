#include "Fuzz.h"
#include "markup/LiteralDifference.h"

namespace {

QStringList linesOf(const QString &text)
{
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    return lines;
}

} // namespace

// As few lines differ as can be, and the difference makes one text of the other.
void fuzz(const Input &input)
{
    const QString from = input.text(0), to = input.text(1);
    const QStringList a = linesOf(from), b = linesOf(to);
    const LineDifference difference = compareLines(from, to, input.choice(2, 5));
    check(a.size() - difference.removed == literal::commonLines(a, b), "as few as can be", from);
    check(b.size() - difference.added == a.size() - difference.removed, "what comes and goes", from);
    same(literal::applied(difference, a).join(u'\n'), b.join(u'\n'), "one text of the other");
    qsizetype removed = 0;
    for (const LineDifference::Hunk &hunk : difference.hunks) {
        for (const LineDifference::Line &line : hunk.lines)
            removed += line.kind == LineDifference::Kind::Removed;
    }
    check(removed == difference.removed, "counts");
    const auto hasInk = [](const QString &line) {
        return std::ranges::any_of(line, [](QChar unit) { return unit != u' ' && unit != u'\t'; });
    };
    const QString further = u' ' + QString(from).replace(u"\n"_s, u"\n "_s);
    check(onlyIndented(from, further) == std::ranges::count_if(a, hasInk), "all lines further in", from);
    if (!from.isEmpty() && !from.endsWith(u'\n')) // or a line of blanks comes
        check(compareLines(from, further, 3, Indentation::Ignored).hunks.isEmpty(), "indentation alone",
              from);
    check(onlyIndented(from, from) == 0, "no line", from);
}
