#include "naming/Destination.h"

#include "outline/CaretPlace.h"

#include <algorithm>

namespace quillmere {

namespace {

// The row of the named block whose opening tag has the caret; -1 for none.
qint32 blockTaggedAt(const Outline &outline, qsizetype offset)
{
    for (const qsizetype at : {offset, offset - 1}) {
        const qint32 index = outline.elementAt(at);
        if (index < 0 || outline.element(index).block < 0 || !outline.element(index).tag.holds(at))
            continue;
        const auto name = outline.nameAttribute(index);
        if (name && !name->value.isEmpty())
            return outline.element(index).block;
    }
    return -1;
}

// The names of other files than windows are those of the index, as long as they still stand there.
std::optional<NamedThing> indexedAt(const Outline &outline, qsizetype offset, const QString &file,
                                    const ThemeIndex &index)
{
    for (const qint32 number : index.numbersOf(file)) {
        for (const NamePlace &place : index.placesIn(number)) {
            if (!place.range.isEmpty() && place.range.touches(offset) &&
                place.range.end <= outline.text().size() && outline.at(place.range) == place.name)
                return NamedThing{place.kind, place.name};
        }
    }
    return std::nullopt;
}

std::optional<Destination> styleOf(const Outline &outline, qint32 element, const QString &styleFile,
                                   const QString &styleText)
{
    const Outline styles(styleText);
    const auto valueOf = [](const Outline &in, qint32 block, QStringView name) {
        const auto attribute = in.attribute(block, name);
        return attribute ? in.at(attribute->value) : QStringView();
    };
    const QStringView style = valueOf(outline, element, u"style"), kind = valueOf(outline, element, u"class");
    std::optional<Destination> sameClass;
    for (const qint32 block : styles.blocks()) {
        if (styles.element(block).inComment)
            continue;
        const auto name = styles.nameAttribute(block);
        const Destination there = {styleFile, name ? name->value : styles.element(block).name(), -1};
        if (name && styles.at(name->value) == style)
            return there;
        if (!sameClass && valueOf(styles, block, u"style") == style &&
            valueOf(styles, block, u"class") == kind)
            sameClass = there;
    }
    return sameClass;
}

} // namespace

std::optional<NamedThing> thingAt(const Outline &outline, qsizetype offset, const QString &file,
                                  const ThemeIndex *index)
{
    if (const auto name = nameAt(outline, offset))
        return NamedThing{name->kind, name->name.toString()};
    const auto indexed = index ? indexedAt(outline, offset, file, *index) : std::nullopt;
    if (indexed)
        return indexed;
    const qint32 row = blockTaggedAt(outline, offset);
    if (row < 0)
        return std::nullopt;
    const auto name = outline.nameAttribute(outline.blocks()[size_t(row)]);
    return NamedThing{std::nullopt, outline.at(name->value).toString(), file, row};
}

std::optional<Destination> definitionOf(const NamedThing &thing, const ThemeIndex &index,
                                        const QString &language)
{
    if (!thing.kind)
        return std::nullopt;
    const QList<NamePlace> places = index.definitions(*thing.kind, thing.name);
    if (places.isEmpty())
        return std::nullopt;
    const auto inLanguage = std::find_if(places.begin(), places.end(), [&](const NamePlace &place) {
        return !language.isEmpty() && index.files().at(place.file).path == language;
    });
    const NamePlace &place = inLanguage == places.end() ? places.first() : *inLanguage;
    return Destination{index.files().at(place.file).path, place.range, place.row};
}

std::optional<Destination> partnerAt(const Outline &outline, qsizetype offset, const QString &file,
                                     const QString &styleFile, const QString &style)
{
    const qint32 index = outline.elementAt(offset < outline.text().size() ? offset : offset - 1);
    if (index < 0)
        return std::nullopt;
    const Element &element = outline.element(index);
    if (element.closing.holds(offset) && element.end == End::Tag)
        return Destination{file, element.name(), -1};
    const auto attribute = outline.attribute(index, u"style");
    if (element.block >= 0 && attribute && attribute->value.touches(offset))
        return styleOf(outline, index, styleFile, style);
    return std::nullopt;
}

} // namespace quillmere
