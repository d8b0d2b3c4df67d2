#include "receiver/BlockLook.h"

namespace quillmere {

namespace {

bool isWord(QStringView value, QStringView word)
{
    return value.compare(word, Qt::CaseInsensitive) == 0;
}

} // namespace

BlockLook::BlockLook(const Outline &outline, qint32 block) : m_outline(outline)
{
    m_elements.fill(-1);
    for (const qint32 element : outline.propertiesOf(block)) {
        const Element &property = outline.element(element);
        qint32 &first = m_elements[size_t(property.kind)];
        if (first < 0 && isValue(property.kind) && !property.inComment && !property.inSignal)
            first = element;
    }
}

QStringView BlockLook::value(Kind kind) const
{
    return has(kind) ? m_outline.valueOf(m_elements[size_t(kind)]) : QStringView();
}

Range BlockLook::range(Kind kind) const
{
    return has(kind) ? trimmed(m_outline.element(m_elements[size_t(kind)]).content(), m_outline.text())
                     : Range();
}

QStringView BlockLook::written(Kind kind) const
{
    return has(kind) ? m_outline.at(m_outline.element(m_elements[size_t(kind)]).content()) : QStringView();
}

std::optional<Box> BlockLook::rect() const
{
    if (!has(Kind::Rect))
        return std::nullopt;
    const std::optional<RectValue> rect = rectOf(m_outline, m_elements[size_t(Kind::Rect)]);
    return rect ? std::optional(rect->box) : std::nullopt;
}

bool BlockLook::isHidden() const
{
    return isWord(value(Kind::State), u"hide");
}

bool BlockLook::isFrame() const
{
    return isWord(value(Kind::Mode), u"multiple");
}

QStringView BlockLook::entry(Kind kind, int state) const
{
    if (!has(kind))
        return {};
    const QList<Range> entries = entriesOf(m_outline, m_elements[size_t(kind)]);
    return entries.isEmpty() ? QStringView()
                             : m_outline.at(entries[std::min(qsizetype(state), entries.size()) - 1]);
}

BlockLook::Alignment BlockLook::alignment() const
{
    Alignment alignment;
    if (!has(Kind::Alignment))
        return alignment;
    for (const Range &entry : entriesOf(m_outline, m_elements[size_t(Kind::Alignment)])) {
        const QStringView word = m_outline.at(entry);
        if (isWord(word, u"left"))
            alignment.across = Across::Left;
        else if (isWord(word, u"hcentre"))
            alignment.across = Across::Centre;
        else if (isWord(word, u"right"))
            alignment.across = Across::Right;
        else if (isWord(word, u"top"))
            alignment.down = Down::Top;
        else if (isWord(word, u"vcentre"))
            alignment.down = Down::Centre;
        else if (isWord(word, u"bottom"))
            alignment.down = Down::Bottom;
    }
    return alignment;
}

} // namespace quillmere
