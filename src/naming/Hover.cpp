#include "naming/Hover.h"

#include "checks/NameRules.h"
#include "theme/NearestNames.h"

namespace quillmere {

namespace {

Hover hoverOfName(const FoundName &found, const ThemeIndex *index)
{
    Hover hover;
    hover.of = Hover::Of::Name;
    hover.range = found.range;
    hover.kind = found.kind;
    hover.name = found.name.toString();
    // A colour may be a code as well, or one that every receiver knows.
    hover.isDefined = !index || index->isDefined(found.kind, found.name) ||
                      (found.kind == NameKind::Colour && !faultOf(found.kind, found.name, *index));
    if (!hover.isDefined)
        hover.nearest = nearestNames(*index, found.kind, found.name);
    return hover;
}

Hover hoverOfBlock(const Outline &outline, qint32 block)
{
    Hover hover;
    if (block < 0 || outline.element(block).inComment)
        return hover;
    hover.of = Hover::Of::Block;
    hover.range = outline.element(block).tag;
    const auto valueOf = [&](const std::optional<Attribute> &attribute) {
        return attribute ? outline.at(attribute->value).toString() : QString();
    };
    hover.name = valueOf(outline.nameAttribute(block));
    hover.className = valueOf(outline.attribute(block, u"class"));
    if (const std::optional<RectValue> rect = rectOfBlock(outline, block))
        hover.rect = rect->box;
    hover.place = placesOnScreen(outline)[size_t(outline.element(block).block)];
    return hover;
}

} // namespace

Hover hoverAt(const Outline &outline, qsizetype offset, const ThemeIndex *index)
{
    const std::optional<FoundName> name = nameAt(outline, offset);
    if (name && name->range.holds(offset))
        return hoverOfName(*name, index);
    const qint32 at = outline.elementAt(offset);
    if (at < 0)
        return {};
    const Element &element = outline.element(at);
    const bool isOfBlock =
        element.kind == Kind::Rect ||
        (element.block >= 0 && (element.tag.holds(offset) || element.closing.holds(offset)));
    return isOfBlock ? hoverOfBlock(outline, outline.blockOf(at)) : Hover();
}

Hover hoverAtCaret(const Outline &outline, qsizetype caret, const ThemeIndex *index)
{
    if (const std::optional<FoundName> name = nameAt(outline, caret))
        return hoverOfName(*name, index);
    return hoverOfBlock(outline, outline.blockOf(outline.elementAt(caret)));
}

} // namespace quillmere
