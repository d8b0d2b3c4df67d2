#pragma once

#include "markup/WidgetDocument.h"
#include "preview/BlockRenderer.h"
#include "preview/WidgetHtml.h"

namespace quillmere {

// Draws one text after another as drawWidgets() does, and anew only those blocks that a change can have
// touched: a key in a large window changes one of thousands. It keeps some four times the text for that.
class WidgetDrawing
{
public:
    // The same as drawWidgets(). Where GetImg throws, what was kept before still is.
    WidgetPage draw(const QString &markup, const ImageLookup &GetImg, const QList<ListRows::Row> &lvFont);

private:
    struct Drawn
    {
        qsizetype rulesEnd = 0, bodyEnd = 0; // counted from where those of the first block begin
        HandedOn handedOn;
        std::optional<BlockRenderer::Asked> asked;
    };
    // Blocks that are taken over, at the beginning and at the end.
    struct Same
    {
        qsizetype first = 0, last = 0;
    };

    bool hasPictures(const ImageLookup &GetImg) const;
    Same sameBlocks(const WidgetBlocks &cut) const;
    // What the blocks before this one leave; nothing before the first one.
    Drawn before(qsizetype block) const { return block > 0 ? m_drawn[size_t(block - 1)] : Drawn(); }
    void replace(Same same, std::vector<Drawn> drawn, const BlockRenderer &renderer);

    QList<FontRow> m_fonts;
    WidgetBlocks m_cut;
    std::vector<Drawn> m_drawn; // by block
    WidgetPage m_page;
};

} // namespace quillmere
