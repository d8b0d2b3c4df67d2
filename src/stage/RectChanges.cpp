#include "stage/RectChanges.h"

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

constexpr qsizetype kMostShown = 60; // letters of a name or a rect in a sentence

QString shown(QStringView text)
{
    QString line = text.toString().simplified();
    return line.size() > kMostShown ? QString(line.first(kMostShown) + u'\u2026') : line;
}

qint32 elementOf(const Outline &outline, int block)
{
    return block >= 0 && size_t(block) < outline.blocks().size() ? outline.blocks()[size_t(block)] : -1;
}

} // namespace

std::optional<RectValue> rectOfRow(const Outline &outline, int block)
{
    const qint32 element = elementOf(outline, block);
    return element < 0 ? std::nullopt : rectOfBlock(outline, element);
}

QString calledInText(const Outline &outline, int block)
{
    const qint32 element = elementOf(outline, block);
    const std::optional<Attribute> name = element < 0 ? std::nullopt : outline.nameAttribute(element);
    return name && !name->value.isEmpty() ? QString(u'"' + shown(outline.at(name->value)) + u'"')
                                          : QStringLiteral("The block without a name");
}

QString whyFixed(const Outline &outline, int block)
{
    const qint32 element = elementOf(outline, block);
    if (element < 0)
        return QStringLiteral("There is no block whose rect could be changed");
    if (rectOfBlock(outline, element))
        return {};
    const QString called = calledInText(outline, block);
    const qint32 rect = outline.property(element, Kind::Rect);
    if (outline.element(element).inComment)
        return called + u" is in a comment: its rect cannot be changed";
    if (rect < 0)
        return called + u" has no rect";
    return called + u" stays where it is: its rect is not four whole numbers, but " +
           shown(outline.valueOf(rect));
}

int parentOf(const Outline &outline, int block)
{
    const qint32 element = elementOf(outline, block);
    const qint32 outer = element < 0 ? -1 : outline.blockOf(outline.element(element).parent);
    return outer < 0 ? -1 : outline.element(outer).block;
}

QList<int> outermost(const Outline &outline, const QList<int> &blocks)
{
    std::vector<char> state(outline.blocks().size(), 0); // 1: among them, 2: and outermost
    for (const int block : blocks) {
        if (elementOf(outline, block) >= 0)
            state[size_t(block)] = 1;
    }
    qint32 end = 0; // of the last one that is outermost
    for (size_t row = 0; row < state.size(); ++row) {
        const qint32 element = outline.blocks()[row];
        if (state[row] == 0 || element < end)
            continue;
        state[row] = 2;
        end = outline.element(element).next;
    }
    QList<int> found;
    for (const int block : blocks) {
        if (elementOf(outline, block) >= 0 && std::exchange(state[size_t(block)], char(0)) == 2)
            found.append(block);
    }
    return found;
}

QList<TextChange> rectChanges(const Outline &outline, const QList<BlockBox> &boxes)
{
    constexpr qint64 most = std::numeric_limits<qint32>::max();
    std::vector<bool> done(outline.blocks().size());
    QList<TextChange> changes;
    for (const BlockBox &wanted : boxes) {
        const std::optional<RectValue> rect = rectOfRow(outline, wanted.block);
        if (!rect || done[size_t(wanted.block)])
            continue;
        done[size_t(wanted.block)] = true;
        const qint64 from[] = {rect->box.x, rect->box.y, rect->box.w, rect->box.h};
        const qint64 to[] = {wanted.box.x, wanted.box.y, wanted.box.w, wanted.box.h};
        for (size_t i = 0; i < 4; ++i) {
            const qint64 number = std::clamp(to[i], -most, most);
            if (number != from[i])
                changes.append({rect->ranges[i].start, rect->ranges[i].size(), QString::number(number)});
        }
    }
    std::sort(changes.begin(), changes.end(),
              [](const TextChange &a, const TextChange &b) { return a.start < b.start; });
    return changes;
}

QList<Range> rectNumbers(const Outline &outline, const QList<BlockBox> &boxes)
{
    QList<Range> numbers;
    for (const BlockBox &wanted : boxes) {
        if (const std::optional<RectValue> rect = rectOfRow(outline, wanted.block))
            numbers.append(QList<Range>(rect->ranges.begin(), rect->ranges.end()));
    }
    const auto isBefore = [](Range a, Range b) { return a.start < b.start; };
    const auto isSame = [](Range a, Range b) { return a.start == b.start; };
    std::sort(numbers.begin(), numbers.end(), isBefore);
    numbers.erase(std::unique(numbers.begin(), numbers.end(), isSame), numbers.end());
    return numbers;
}

std::optional<QStringList> textsAfter(QStringView text, const QList<Range> &places,
                                      const QList<TextChange> &changes)
{
    QStringList texts;
    qsizetype done = 0;
    for (const Range place : places) {
        const bool isChanged = done < changes.size() && changes[done].start == place.start &&
                               changes[done].length == place.size();
        texts.append(isChanged ? changes[done++].text : place.in(text).toString());
    }
    return done == changes.size() ? std::optional(texts) : std::nullopt;
}

QString withChanges(const QString &text, const QList<TextChange> &changes)
{
    QString changed;
    qsizetype done = 0;
    for (const TextChange &change : changes) {
        changed += QStringView(text).sliced(done, change.start - done);
        changed += change.text;
        done = change.start + change.length;
    }
    changed += QStringView(text).sliced(done);
    return changed;
}

} // namespace quillmere
