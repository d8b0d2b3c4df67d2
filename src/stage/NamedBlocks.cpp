#include "stage/NamedBlocks.h"

#include "markup/Matching.h"
#include "widgets/BlockProperties.h"

#include <algorithm>

namespace quillmere {

namespace {

QStringView nameOf(const Outline &outline, qint32 element)
{
    const std::optional<Attribute> name = outline.nameAttribute(element);
    return name ? outline.at(name->value) : QStringView();
}

} // namespace

BlockName nameOfBlock(const Outline &outline, int block)
{
    if (block < 0 || size_t(block) >= outline.blocks().size())
        return {};
    const qint32 element = outline.blocks()[size_t(block)];
    const std::optional<Attribute> className = outline.attribute(element, u"class");
    return {nameOf(outline, element).toString(),
            className ? outline.at(className->value).toString() : QString()};
}

bool isFirstOfName(const Outline &outline, int block)
{
    const QString name = nameOfBlock(outline, block).name;
    const auto first = std::ranges::find_if(outline.blocks(), [&](qint32 element) {
        return nameOf(outline, element).compare(name, Qt::CaseInsensitive) == 0;
    });
    return first - outline.blocks().begin() == block;
}

bool isFirstQuoted(const Outline &outline, int block)
{
    const QString name = nameOfBlock(outline, block).name;
    return !name.isEmpty() && indexOfIgnoringCase(outline.text(), QString(u'"' + name + u'"')) ==
                                  headOfBlock(outline, block).start;
}

} // namespace quillmere
