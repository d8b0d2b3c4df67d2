#include "widgets/SourceHighlighter.h"

#include "widgets/SourceTokens.h"

namespace quillmere {

SourceHighlighter::SourceHighlighter(QTextDocument *document) : QSyntaxHighlighter(document)
{
    setDark(false);
}

void SourceHighlighter::setDark(bool dark)
{
    // Text, bracket, element, attribute, value, comment; each at least 4.5 : 1 on its ground.
    static constexpr std::array<QRgb, 6> onLight = {0xff202020, 0xff5f6b7a, 0xff0b4f9e,
                                                    0xff7a3e9d, 0xff1b6e3c, 0xff6a737d};
    static constexpr std::array<QRgb, 6> onDark = {0xffe6e6e6, 0xff9aa7b5, 0xff7ab8ff,
                                                   0xffd0a8ff, 0xff8ddb8c, 0xff98a1ab};
    for (size_t token = 0; token < m_formats.size(); ++token)
        m_formats[token].setForeground(QColor::fromRgb((dark ? onDark : onLight)[token]));
    m_formats[size_t(Token::Comment)].setFontItalic(true);
    rehighlight();
}

void SourceHighlighter::highlightBlock(const QString &line)
{
    LineState state = previousBlockState() < 0 ? LineState::Text : LineState(previousBlockState());
    for (const TokenSpan &span : tokensOf(line, state))
        setFormat(int(span.start), int(span.length), m_formats[size_t(span.token)]);
    setCurrentBlockState(int(state));
}

} // namespace quillmere
