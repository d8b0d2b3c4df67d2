#include "theme/ElementUse.h"

#include <QHash>

#include <array>

namespace quillmere {

namespace {

constexpr qsizetype kLongestClass = 64; // units

using Counts = std::array<qint32, kKinds>;

// A class as it is counted; empty for what does not count.
QStringView classOf(const Outline &outline, qint32 block)
{
    const std::optional<Attribute> attribute = outline.attribute(block, u"class");
    const QStringView name = attribute ? outline.at(attribute->value) : QStringView();
    return name.size() <= kLongestClass ? name : QStringView();
}

} // namespace

std::vector<ElementUse> elementUses(const Outline &outline)
{
    std::vector<Counts> counts; // by number of the class
    QHash<QStringView, qint32> numbers;
    std::vector<qint32> classes(outline.elements().size(), -1); // by element, that of its block
    for (size_t index = 0; index < outline.elements().size(); ++index) {
        const Element &element = outline.elements()[index];
        if (element.inComment || element.inSignal)
            continue;
        if (element.block >= 0) {
            const QStringView name = classOf(outline, qint32(index));
            if (name.isEmpty())
                continue;
            const auto known = numbers.constFind(name);
            classes[index] = known != numbers.constEnd() ? *known : qint32(counts.size());
            if (known == numbers.constEnd()) {
                numbers.insert(name, classes[index]);
                counts.push_back({});
            }
        } else if (element.parent >= 0) {
            classes[index] = classes[size_t(element.parent)];
        }
        if (classes[index] >= 0 && element.kind != Kind::Other)
            ++counts[size_t(classes[index])][size_t(element.block >= 0 ? Kind::Widget : element.kind)];
    }
    std::vector<ElementUse> uses;
    for (auto each = numbers.cbegin(); each != numbers.cend(); ++each) {
        const QString name = each.key().toString();
        for (int kind = 0; kind < kKinds; ++kind) {
            if (const qint32 count = counts[size_t(each.value())][size_t(kind)]; count > 0)
                uses.push_back({name, Kind(kind), count});
        }
    }
    return uses;
}

} // namespace quillmere
