#include "stage/BlockPlaces.h"

#include <QHash>

#include <algorithm>

namespace quillmere {

namespace {

struct Named
{
    QStringView name;
    int block;
};

// The blocks that the page can hold, in order.
QList<Named> blocksOutsideComments(const Outline &outline)
{
    QList<Named> found;
    const std::vector<qint32> &blocks = outline.blocks();
    for (size_t i = 0; i < blocks.size(); ++i) {
        const Element &element = outline.element(blocks[i]);
        if (element.inComment || element.inSignal)
            continue;
        const std::optional<Attribute> name = outline.nameAttribute(blocks[i]);
        found.append({name ? outline.at(name->value) : QStringView(), int(i)});
    }
    return found;
}

// Whether each div can be the block of the same place. What "&" stands for is the browser's to know.
bool isOneToOne(const QList<Named> &blocks, const QList<PagePlace> &divs)
{
    return std::equal(blocks.begin(), blocks.end(), divs.begin(), divs.end(),
                      [](const Named &block, const PagePlace &div) {
                          return block.name == div.id || block.name.contains(u'&');
                      });
}

} // namespace

QList<Place> placesOfBlocks(const Outline &outline, const QList<PagePlace> &divs)
{
    const QList<Named> blocks = blocksOutsideComments(outline);
    QList<Place> places;
    const auto add = [&places](int block, const PagePlace &div) {
        if (!div.box.isNull())
            places.append({block, div.box, div.visible});
    };
    if (isOneToOne(blocks, divs)) {
        for (qsizetype i = 0; i < divs.size(); ++i)
            add(blocks[i].block, divs[i]);
        return places;
    }
    struct Same
    {
        QList<int> blocks;
        qsizetype divs = 0, used = 0;
    };
    QHash<QStringView, Same> byName;
    for (const Named &block : blocks)
        byName[block.name].blocks.append(block.block);
    for (const PagePlace &div : divs) {
        if (const auto same = byName.find(div.id); same != byName.end())
            ++same->divs;
    }
    for (const PagePlace &div : divs) {
        const auto same = byName.find(div.id);
        if (same != byName.end() && same->divs == same->blocks.size())
            add(same->blocks[same->used++], div);
    }
    return places;
}

} // namespace quillmere
