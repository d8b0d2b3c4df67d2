#include "stage/FreeNames.h"
#include "stage/InsertPlaces.h"
#include "stage/WholeElements.h"

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

// Puts texts of elements in at a spot, and selects those that are blocks.
Edited putAt(const Outline &outline, const Spot &spot, const QStringList &texts, const QList<bool> &areBlocks)
{
    if (spot.at < 0 || texts.isEmpty())
        return {};
    QString text = spot.before;
    QList<qsizetype> selected;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        text += i > 0 ? spot.between : QString();
        if (areBlocks[i])
            selected.append(spot.at + text.size());
        text += texts[i];
    }
    ChangeList changes;
    changes.add(spot.at, spot.length, text + spot.after);
    return edited(outline, changes, selected);
}

bool isWindow(const Outline &outline, qint32 element)
{
    const std::optional<Attribute> kind = outline.attribute(element, u"class");
    return kind && outline.at(kind->value).compare(u"window", Qt::CaseInsensitive) == 0;
}

// The window, else what is outermost; a row, or -1.
int windowOf(const Outline &outline)
{
    int found = -1;
    for (size_t row = 0; row < outline.blocks().size(); ++row) {
        const qint32 element = outline.blocks()[row];
        if (!whyNotWhole(outline, int(row)).isEmpty() || outline.element(element).kind != Kind::Widget ||
            outline.blockOf(outline.element(element).parent) >= 0)
            continue;
        if (isWindow(outline, element))
            return int(row);
        found = found < 0 ? int(row) : found;
    }
    return found;
}

// The elements of a text from anywhere, with the comments between them.
class Clip
{
public:
    explicit Clip(const QString &text) : m_outline(text)
    {
        QList<int> rows;
        for (size_t row = 0; row < m_outline.blocks().size(); ++row)
            rows.append(int(row));
        for (const int row : wholeBlocks(m_outline, rows))
            m_elements.append(m_outline.blocks()[size_t(row)]);
    }

    bool isEmpty() const { return m_elements.isEmpty(); }

    // Gives the blocks names that are free, first come first served; then reads what came of it.
    void rename(FreeNames &names)
    {
        QList<Attribute> taken;
        for (const qint32 block : m_outline.blocks()) {
            const std::optional<Attribute> name = m_outline.nameAttribute(block);
            if (name && !name->value.isEmpty() && isInside(block) &&
                !names.take(m_outline.at(name->value).toString()))
                taken.append(*name);
        }
        ChangeList changes;
        for (const Attribute &name : std::as_const(taken))
            changes.add(name.value.start, name.value.size(),
                        names.after(m_outline.at(name.value).toString()));
        if (!taken.isEmpty())
            *this = Clip(withChanges(m_outline.text(), changes.changes()));
    }

    // One each, as they are to stand where they go.
    QStringList texts(const TextLayout &there, const Spot &spot, QList<bool> &areBlocks) const
    {
        const TextLines lines(m_outline.text());
        const Element &first = m_outline.element(m_elements.first());
        const QString base = lines.indentAt(first.closing.isEmpty() ? first.tag.start : first.closing.start)
                                 .value_or(QString());
        const TextLayout here(m_outline, base);
        const bool isAlike = !here.isKnown() || here.isFlat() == there.isFlat();
        QStringList texts;
        qsizetype done = first.tag.start;
        auto comment = m_outline.comments().begin();
        for (const qint32 index : m_elements) {
            const Element &element = m_outline.element(index);
            for (; comment != m_outline.comments().end() && comment->range.start < element.tag.start;
                 ++comment) {
                if (comment->range.start >= done) {
                    texts.append(m_outline.at(comment->range).toString());
                    areBlocks.append(false);
                }
            }
            texts.append(isAlike ? movedLines(m_outline.at(element.range()), base, spot.indent)
                                 : laidOut(m_outline, index, there, spot.indent));
            areBlocks.append(true);
            done = element.closing.end;
        }
        return texts;
    }

private:
    bool isInside(qint32 block) const
    {
        const auto behind = std::upper_bound(m_elements.begin(), m_elements.end(), block);
        return behind != m_elements.begin() && block < m_outline.element(*(behind - 1)).next;
    }

    Outline m_outline;
    QList<qint32> m_elements; // outermost, in order
};

struct NewBlockRow
{
    QStringView name;
    QStringView string;
    bool hasFont;
    QStringView alignment;
    bool hasPicture;
    QSize usual; // pixels
};
constexpr NewBlockRow kNewBlocks[] = {{u"text", u"Text", true, u"vcentre", false, {300, 40}},
                                      {u"image", {}, false, {}, true, {200, 150}},
                                      {u"boxitem", {}, false, {}, true, {300, 200}},
                                      {u"button", u"Button", false, u"hcentre|vcentre", true, {160, 50}},
                                      {u"progbar", {}, false, {}, true, {300, 24}}};

// What the last block of a class says in an element of this kind; else what any block says. The ground of a
// window is not for others.
QString usualValue(const Outline &outline, QStringView className, Kind kind)
{
    QString found;
    bool isOfClass = false;
    for (const qint32 block : outline.blocks()) {
        const std::optional<Attribute> own = outline.attribute(block, u"class");
        const bool isSame = own && outline.at(own->value).compare(className, Qt::CaseInsensitive) == 0;
        const bool counts = isSame || (!isOfClass && !(kind == Kind::BackColor && isWindow(outline, block)));
        const qint32 property = counts ? outline.property(block, kind) : -1;
        if (property < 0 || outline.element(property).end != End::Tag)
            continue;
        const QStringView value = outline.valueOf(property);
        if (value.isEmpty() || value.contains(u'<') || value.contains(u'\n'))
            continue;
        found = value.toString();
        isOfClass = isSame;
    }
    return found;
}

QString newElement(const Outline &outline, const NewBlockRow &row, const QString &name, const Box &box)
{
    constexpr qint64 most = std::numeric_limits<qint32>::max();
    QStringList lines;
    const auto value = [&lines](QStringView tag, const QString &text) {
        lines.append(u"<" + tag + u'>' + text + u"</" + tag + u'>');
    };
    const auto usual = [&](QStringView tag, Kind kind, const QString &otherwise) {
        const QString text = usualValue(outline, row.name, kind);
        if (!text.isEmpty() || !otherwise.isEmpty())
            value(tag, text.isEmpty() ? otherwise : text);
    };
    lines.append(u"<widget class=\"" + row.name + u"\" style=\"default\" name=\"" + name + u"\">");
    lines.append(QStringLiteral("<property>"));
    if (!row.string.isEmpty())
        value(u"string", row.string.toString());
    value(u"rect", QStringLiteral("[%1,%2,%3,%4]")
                       .arg(std::clamp(box.x, -most, most))
                       .arg(std::clamp(box.y, -most, most))
                       .arg(std::clamp(box.w, -most, most))
                       .arg(std::clamp(box.h, -most, most)));
    usual(u"backcolor", Kind::BackColor, QStringLiteral("[gui_trans,gui_trans,gui_trans]"));
    usual(u"forecolor", Kind::ForeColor, QStringLiteral("[#ffffff,#ffffff,#ffffff]"));
    if (row.hasFont)
        usual(u"font", Kind::Font, {});
    if (!row.alignment.isEmpty())
        value(u"alignment", row.alignment.toString());
    if (row.hasPicture)
        lines += {QStringLiteral("<imgs>"), QStringLiteral("<mode>single</mode>"),
                  QStringLiteral("<img></img>"), QStringLiteral("</imgs>")};
    lines += {QStringLiteral("</property>"), QStringLiteral("</widget>")};
    return lines.join(u'\n');
}

} // namespace

Edited pasted(const Outline &outline, const QList<int> &blocks, const QString &elements)
{
    const InsertPlaces places(outline);
    Clip clip(withLineBreaks(elements, places.lineBreak()));
    if (clip.isEmpty())
        return {};
    const QList<int> selected = wholeBlocks(outline, blocks);
    const int row =
        selected.isEmpty() ? windowOf(outline) : *std::max_element(selected.begin(), selected.end());
    Spot spot;
    if (row < 0) {
        spot = places.atEnd();
    } else {
        const qint32 element = outline.blocks()[size_t(row)];
        spot = selected.isEmpty() || isWindow(outline, element) || places.holdsBlocks(element)
                   ? places.lastIn(element)
                   : places.behind(element);
    }
    FreeNames names(outline);
    clip.rename(names);
    QList<bool> areBlocks;
    const QStringList texts = clip.texts(places.layout(), spot, areBlocks);
    return putAt(outline, spot, texts, areBlocks);
}

int parentForNew(const Outline &outline, const QList<int> &selected)
{
    const QList<int> whole = wholeBlocks(outline, selected);
    return whole.isEmpty() ? windowOf(outline) : whole.first();
}

Box placeForNew(const Outline &outline, NewBlock kind, int parent, QSize screen)
{
    const std::optional<Box> known = parent < 0 ? std::nullopt : placesOnScreen(outline)[size_t(parent)];
    const Box around = known.value_or(Box{0, 0, screen.width(), screen.height()});
    const qint64 left = std::max<qint64>(0, around.x), top = std::max<qint64>(0, around.y);
    Box room = {left - around.x, top - around.y, std::min<qint64>(screen.width(), around.x + around.w) - left,
                std::min<qint64>(screen.height(), around.y + around.h) - top};
    if (room.w <= 0 || room.h <= 0)
        room = {0, 0, around.w, around.h};
    const QSize usual = kNewBlocks[size_t(kind)].usual;
    const qint64 w = room.w > 0 ? std::min<qint64>(usual.width(), room.w) : usual.width();
    const qint64 h = room.h > 0 ? std::min<qint64>(usual.height(), room.h) : usual.height();
    return {room.x + (room.w - w) / 2, room.y + (room.h - h) / 2, w, h};
}

Edited inserted(const Outline &outline, NewBlock kind, int parent, const Box &box)
{
    const int row = parent < 0 ? windowOf(outline) : parent;
    if (row < 0 || !whyNotWhole(outline, row).isEmpty())
        return {};
    const InsertPlaces places(outline);
    const Spot spot = places.lastIn(outline.blocks()[size_t(row)]);
    const NewBlockRow &what = kNewBlocks[size_t(kind)];
    const QString name = FreeNames(outline).numbered(what.name.toString());
    const Outline element(withLineBreaks(newElement(outline, what, name, box), places.lineBreak()));
    return putAt(outline, spot, {laidOut(element, 0, places.layout(), spot.indent)}, {true});
}

} // namespace quillmere
