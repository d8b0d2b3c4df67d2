#include "theme/ThemeConfig.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

QList<ConfigEntry> configEntries(const QString &text)
{
    QList<ConfigEntry> entries;
    const QStringView config = SplitFieldView(text, u"<config>", u"</config>", 1, 0);
    for (QStringView piece : splitIgnoringCase(config, u"</"))
        entries.append({SplitField(piece, u"<", u">", 1, 0), SplitField(piece, u"<", u">", 1, 1)});
    return entries;
}

} // namespace quillmere
