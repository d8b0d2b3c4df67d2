#include "i18n/LanguageStrings.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

QList<LanguageString> languageStrings(QStringView text)
{
    QList<LanguageString> strings;
    if (!containsIgnoringCase(text, u"<language name=\""))
        return strings;
    const QList<QStringView> pieces = splitIgnoringCase(text, u"<tran id=\"").sliced(1);
    strings.reserve(pieces.size());
    for (const QStringView piece : pieces)
        strings.append({SplitFieldView(piece, u"\"", {}, 0, 0), SplitFieldView(piece, u">", u"<", 1, 0)});
    return strings;
}

} // namespace quillmere
