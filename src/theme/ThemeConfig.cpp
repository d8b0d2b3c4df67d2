#include "theme/ThemeConfig.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

namespace {

// From the opening tag in the piece to behind the closing tag, which the cut has taken apart.
Range elementOf(QStringView piece, const QString &text)
{
    const qsizetype from = piece.data() - text.constData();
    const qsizetype opening = piece.indexOf(u'<');
    if (opening < 0)
        return {qint32(from), qint32(from)};
    const qsizetype behind = from + piece.size();
    const qsizetype closing = text.indexOf(u'>', behind);
    return {qint32(from + opening), qint32(closing < 0 ? behind : closing + 1)};
}

} // namespace

QList<ConfigEntry> configEntries(const QString &text)
{
    QList<ConfigEntry> entries;
    const QStringView config = SplitFieldView(text, u"<config>", u"</config>", 1, 0);
    for (QStringView piece : splitIgnoringCase(config, u"</"))
        entries.append({SplitField(piece, u"<", u">", 1, 0), SplitField(piece, u"<", u">", 1, 1),
                        elementOf(piece, text)});
    return entries;
}

} // namespace quillmere
