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

// Numbers classes in the order in which they come. A window has few of them, so a look at the one that came
// last with such a size and end mostly does.
class ClassNumbers
{
public:
    qint32 of(QStringView name)
    {
        qint32 &last = m_last[size_t(name.size() * 7 + name.back().unicode()) % m_last.size()];
        if (last >= qint32(m_names.size()) || m_names[size_t(last)] != name) {
            last = m_numbers.value(name, qint32(m_names.size()));
            if (last == qint32(m_names.size())) {
                m_numbers.insert(name, last);
                m_names.push_back(name);
            }
        }
        return last;
    }
    const std::vector<QStringView> &names() const { return m_names; }

private:
    std::vector<QStringView> m_names;
    QHash<QStringView, qint32> m_numbers;
    std::array<qint32, 16> m_last = {};
};

} // namespace

std::vector<ElementUse> elementUses(const Outline &outline)
{
    std::vector<Counts> counts; // by number of the class
    ClassNumbers numbers;
    std::vector<qint32> classes(outline.elements().size(), -1); // by element, that of its block
    for (size_t index = 0; index < outline.elements().size(); ++index) {
        const Element &element = outline.elements()[index];
        if (element.inComment || element.inSignal)
            continue;
        if (element.block >= 0) {
            const QStringView name = classOf(outline, qint32(index));
            if (name.isEmpty())
                continue;
            classes[index] = numbers.of(name);
            counts.resize(numbers.names().size());
        } else if (element.parent >= 0) {
            classes[index] = classes[size_t(element.parent)];
        }
        if (classes[index] >= 0 && element.kind != Kind::Other)
            ++counts[size_t(classes[index])][size_t(element.block >= 0 ? Kind::Widget : element.kind)];
    }
    std::vector<ElementUse> uses;
    for (size_t number = 0; number < counts.size(); ++number) {
        const QString name = numbers.names()[number].toString();
        for (int kind = 0; kind < kKinds; ++kind) {
            if (const qint32 count = counts[number][size_t(kind)]; count > 0)
                uses.push_back({name, Kind(kind), count});
        }
    }
    return uses;
}

} // namespace quillmere
