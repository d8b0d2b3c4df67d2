#include "Fuzz.h"
#include "source/SourceTokens.h"

// The spans of a line are in order, do not overlap and stay inside; text outside tags has none; the partner
// of a bracket's partner is the bracket.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    LineState state = LineState::Text;
    for (const QString &line : text.split(u'\n')) {
        const LineState before = state;
        qsizetype end = 0;
        for (const TokenSpan &span : tokensOf(line, state)) {
            check(span.start >= end && span.length > 0 && span.start + span.length <= line.size(), "spans",
                  line);
            check(span.token != Token::Text, "text has no span", line);
            end = span.start + span.length;
        }
        check(before != LineState::Text || line.contains(u'<') || (state == LineState::Text && end == 0),
              "a line without a tag", line);
    }
    for (qsizetype at = -1; at <= text.size(); ++at) {
        const qsizetype partner = partnerOfBracket(text, at);
        check(partner < 0 || partnerOfBracket(text, partner) == at, "partners", text);
    }
    check(startsBlock(text) == (text.contains(u"<widget ", Qt::CaseInsensitive) ||
                                text.contains(u"<style ", Qt::CaseInsensitive)),
          "begins a block", text);
}
