#include "preview/WidgetDrawing.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillmere {

// Those that a catalogue has others for, or for the first time, are seen by no change of the text.
bool WidgetDrawing::hasPictures(const ImageLookup &GetImg) const
{
    return std::ranges::all_of(m_drawn, [&GetImg](const Drawn &block) {
        return !block.asked || GetImg(block.asked->id) == block.asked->answer;
    });
}

WidgetDrawing::Same WidgetDrawing::sameBlocks(const WidgetBlocks &cut) const
{
    const QList<QStringView> &is = m_cut.blocks, &willBe = cut.blocks;
    const qsizetype most = std::min(is.size(), willBe.size());
    Same same;
    while (same.first < most && is[same.first] == willBe[same.first])
        ++same.first;
    while (same.last < most - same.first &&
           is[is.size() - 1 - same.last] == willBe[willBe.size() - 1 - same.last])
        ++same.last;
    return same;
}

WidgetPage WidgetDrawing::draw(const QString &markup, const ImageLookup &GetImg,
                               const QList<ListRows::Row> &lvFont)
{
    WidgetBlocks cut = cutBlocks(markup);
    QList<FontRow> fonts = fontRows(lvFont);
    Same same = fonts == m_fonts && hasPictures(GetImg) ? sameBlocks(cut) : Same();
    const qsizetype count = cut.blocks.size();
    qsizetype units = 0;
    for (qsizetype block = same.first; block < count - same.last; ++block)
        units += cut.blocks[block].size();

    BlockRenderer renderer(GetImg, fonts, units);
    HandedOn handed = before(same.first).handedOn;
    renderer.goOn(handed);
    std::vector<Drawn> drawn;
    drawn.reserve(size_t(count - same.first - same.last));
    QList<ListRows::Row> rows = m_page.blocks.first(same.first);
    rows.reserve(count);
    // What the changed ones hand on may change those behind them, up to where it is the same again.
    const auto isSameFrom = [&](qsizetype block) {
        const qsizetype left = count - block;
        return left <= same.last && before(m_cut.blocks.size() - left).handedOn == handed;
    };
    qsizetype block = same.first;
    for (; block < count && !isSameFrom(block); ++block) {
        rows.append(renderer.draw(cut.blocks[block]));
        handed = renderer.handedOn();
        drawn.push_back({renderer.rules().size(), renderer.body().size(), handed, renderer.asked()});
    }
    same.last = count - block;
    rows.append(m_page.blocks.last(same.last));
    replace(same, std::move(drawn), renderer);
    m_page.blocks = std::move(rows);
    m_cut = std::move(cut);
    m_fonts = std::move(fonts);
    return m_page;
}

void WidgetDrawing::replace(Same same, std::vector<Drawn> drawn, const BlockRenderer &renderer)
{
    const Drawn from = before(same.first), to = before(qsizetype(m_drawn.size()) - same.last);
    const Drawn all = before(qsizetype(m_drawn.size()));
    const auto [rules, body] = partsOfHtml(m_page.html, all.rulesEnd, all.bodyEnd);
    m_page.html = widgetHtml({rules.first(from.rulesEnd), renderer.rules(), rules.sliced(to.rulesEnd)},
                             {body.first(from.bodyEnd), renderer.body(), body.sliced(to.bodyEnd)});
    for (Drawn &block : drawn) {
        block.rulesEnd += from.rulesEnd;
        block.bodyEnd += from.bodyEnd;
    }
    const auto behind = m_drawn.end() - same.last;
    for (auto block = behind; block != m_drawn.end(); ++block) {
        block->rulesEnd += from.rulesEnd + renderer.rules().size() - to.rulesEnd;
        block->bodyEnd += from.bodyEnd + renderer.body().size() - to.bodyEnd;
    }
    const auto gap = m_drawn.erase(m_drawn.begin() + same.first, behind);
    m_drawn.insert(gap, std::make_move_iterator(drawn.begin()), std::make_move_iterator(drawn.end()));
}

} // namespace quillmere
