#include "catalogues/FontCatalogue.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

namespace quillmere {

void LoadFontList(ListRows &lvFont, const Document &file)
{
    lvFont.clear();
    if (file.text().isEmpty())
        return;
    QList<ListRows::Row> fonts;
    // What stands before the first element is no entry; behind it every piece is one, however little it
    // holds.
    for (QStringView piece : splitIgnoringCase(file.text(), u"<font>").sliced(1)) {
        const QString style = SplitField(piece, u"<style>", u"</style>", 1, 0);
        fonts.append(
            {QString(),
             {SplitField(piece, u"<name>", u"</name>", 1, 0), SplitField(piece, u"<file>", u"</file>", 1, 0),
              SplitField(piece, u"<size>", u"</size>", 1, 0),
              style.isEmpty() ? QStringLiteral("normal") : style}});
    }
    lvFont.assign(std::move(fonts));
}

} // namespace quillmere
