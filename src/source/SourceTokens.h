#pragma once

#include <QList>
#include <QStringView>

namespace quillmere {

// The parts of theme text that the editor shows in different colours. Lines are looked at one by one; what a
// line leaves open goes on in the next.
enum class Token { Text, Bracket, Element, Attribute, Value, Comment };

struct TokenSpan
{
    qsizetype start = 0; // 0-based, UTF-16 units in the line
    qsizetype length = 0;
    Token token = Token::Text;
};

enum class LineState { Text, Tag, Value, Comment };

// The coloured spans of a line; plain text has none. `state` comes in as the line before left it.
QList<TokenSpan> tokensOf(QStringView line, LineState &state);

// True when a block of the document begins in this line: it holds "<widget " or "<style ", in any letter
// case.
bool startsBlock(QStringView line);

// Position of the ">" that ends the tag begun by the "<" at `position`, or the other way round; -1 when the
// character there is no bracket or has no partner.
qsizetype partnerOfBracket(QStringView text, qsizetype position);

} // namespace quillmere
