#include "receiver/BlockText.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

QString rulesOf(const ReceiverTheme::Font &font)
{
    QString rules;
    bool isNumber = false;
    const double size = font.size.trimmed().toDouble(&isNumber);
    if (isNumber && size > 0 && size < 10000)
        rules += u"font-size:" + QString::number(size) + u"px;";
    if (!font.family.isEmpty())
        rules += u"font-family:" + font.family + u",sans-serif;";
    if (containsIgnoringCase(font.style, u"italic"))
        rules += u"font-style:italic;";
    if (containsIgnoringCase(font.style, u"bold"))
        rules += u"font-weight:bold;";
    return rules;
}

} // namespace

BlockText textOf(const BlockLook &look, const ReceiverTheme &theme)
{
    BlockText text;
    text.source = look.written(Kind::String).toString();
    if (text.source.isEmpty())
        return text;
    text.range = look.range(Kind::String);
    text.font = rulesOf(theme.font ? theme.font(look.value(Kind::Font).toString()) : ReceiverTheme::Font());
    text.alignment = look.alignment();
    return text;
}

QString shownText(const QString &source, const std::function<QString(const QString &source)> &translation)
{
    QString text = translation ? translation(source) : QString();
    if (text.isEmpty())
        text = source;
    for (QChar &unit : text) {
        if (unit.unicode() < 32)
            unit = u' ';
    }
    return text;
}

QString textSheet()
{
    return QStringLiteral(".t{display:flex;flex-direction:column;font-family:sans-serif;}"
                          ".t span{white-space:pre;}");
}

} // namespace quillmere
