#include "theme/CatalogueScreen.h"

#include "markup/mndIni.h"

namespace quillmere {

CatalogueScreen screenIn(const QString &catalogue)
{
    const QStringView width = SplitFieldView(catalogue, u"<width>", u"</width>", 1, 0);
    const QStringView height = SplitFieldView(catalogue, u"<height>", u"</height>", 1, 0);
    const auto rangeOf = [&catalogue](QStringView value) {
        const qint32 start = value.isNull() ? 0 : qint32(value.data() - catalogue.constData());
        return Range{start, start + qint32(value.size())};
    };
    return {{width.trimmed().toInt(), height.trimmed().toInt()}, rangeOf(width), rangeOf(height)};
}

} // namespace quillmere
