#include "preview/WidgetHtml.h"

#include "markup/WidgetDocument.h"
#include "preview/BlockRenderer.h"

namespace quillmere {

WidgetPage drawWidgets(const QString &markup, const ImageLookup &GetImg, const QList<ListRows::Row> &lvFont)
{
    WidgetBlocks cut = cutBlocks(markup);
    const QList<FontRow> fonts = fontRows(lvFont);
    BlockRenderer renderer(GetImg, fonts, cut.text.size());
    QList<ListRows::Row> rows;
    rows.reserve(cut.blocks.size());
    for (QStringView block : cut.blocks)
        rows.append(renderer.draw(block));
    cut = {};
    return {renderer.takeHtml(), std::move(rows)};
}

QString BuildWidgetHtml(const QString &markup, const ImageLookup &GetImg, const ListRows &lvFont,
                        ListRows &lvBlock)
{
    WidgetPage page = drawWidgets(markup, GetImg, lvFont.rows());
    lvBlock.assign(std::move(page.blocks));
    return page.html;
}

} // namespace quillmere
