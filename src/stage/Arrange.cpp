#include "stage/Arrange.h"

#include <algorithm>

namespace quillmere {

namespace {

// Goes down also below 0, so that what is moved by halves goes the same way everywhere.
qint64 half(qint64 number)
{
    return number >= 0 ? number / 2 : -((1 - number) / 2);
}

// A block whose rect can be read, with where it is on the screen.
struct Placed
{
    int block;
    qint32 element;
    Box rect, place;

    BlockBox moved(qint64 x, qint64 y) const { return {block, {rect.x + x, rect.y + y, rect.w, rect.h}}; }
};

class Arranger
{
public:
    Arranger(const Outline &outline, const QList<int> &blocks, const PictureSize &sizeOf)
        : m_outline(outline), m_sizeOf(sizeOf)
    {
        const std::vector<std::optional<Box>> places = placesOnScreen(outline);
        const QList<int> outer = outermost(outline, blocks);
        m_isOuter.resize(places.size());
        for (const int block : outer)
            m_isOuter[size_t(block)] = true;
        std::vector<bool> seen(places.size());
        for (const int block : blocks) {
            const std::optional<RectValue> rect = rectOfRow(outline, block);
            if (!rect || seen[size_t(block)])
                continue;
            seen[size_t(block)] = true;
            m_blocks.append({block, outline.blocks()[size_t(block)], rect->box,
                             places[size_t(block)].value_or(rect->box)});
        }
    }

    // As arranged(), with the blocks that stay, too.
    QList<BlockBox> wanted(Arrange command)
    {
        switch (command) {
        case Arrange::SameWidth:
        case Arrange::SameHeight:
        case Arrange::SameSize:
            return likeFirst(command != Arrange::SameHeight, command != Arrange::SameWidth);
        case Arrange::DistributeH:
            return distributed(&Box::x, &Box::w);
        case Arrange::DistributeV:
            return distributed(&Box::y, &Box::h);
        case Arrange::CentreInParent:
            return centred();
        case Arrange::FitToPicture:
            return fitted();
        default:
            return aligned(command);
        }
    }

    QList<BlockBox> withoutThoseThatStay(const QList<BlockBox> &boxes) const
    {
        QList<BlockBox> changed;
        for (const BlockBox &box : boxes) {
            if (rectOfRow(m_outline, box.block)->box != box.box)
                changed.append(box);
        }
        return changed;
    }

private:
    bool isIn(const Placed &inner, const Placed &outer) const
    {
        return inner.element > outer.element && inner.element < m_outline.element(outer.element).next;
    }

    // Those that move by themselves when all go to the first.
    QList<Placed> followers() const
    {
        QList<Placed> found;
        QList<int> rows;
        for (qsizetype i = 1; i < m_blocks.size(); ++i) {
            if (!isIn(m_blocks.first(), m_blocks[i]))
                rows.append(m_blocks[i].block);
        }
        rows = outermost(m_outline, rows);
        qsizetype next = 0;
        for (const Placed &block : m_blocks) {
            if (next < rows.size() && rows[next] == block.block) {
                found.append(block);
                ++next;
            }
        }
        return found;
    }

    QList<BlockBox> aligned(Arrange command) const
    {
        QList<BlockBox> boxes;
        for (const Placed &block : followers()) {
            const Box &to = m_blocks.first().place, &from = block.place;
            const qint64 x = to.x - from.x, y = to.y - from.y;
            const qint64 w = to.w - from.w, h = to.h - from.h;
            switch (command) {
            case Arrange::AlignLeft:
                boxes.append(block.moved(x, 0));
                break;
            case Arrange::AlignCentre:
                boxes.append(block.moved(x + half(w), 0));
                break;
            case Arrange::AlignRight:
                boxes.append(block.moved(x + w, 0));
                break;
            case Arrange::AlignTop:
                boxes.append(block.moved(0, y));
                break;
            case Arrange::AlignMiddle:
                boxes.append(block.moved(0, y + half(h)));
                break;
            default:
                boxes.append(block.moved(0, y + h));
                break;
            }
        }
        return boxes;
    }

    QList<BlockBox> likeFirst(bool inWidth, bool inHeight) const
    {
        QList<BlockBox> boxes;
        for (qsizetype i = 1; i < m_blocks.size(); ++i) {
            Box box = m_blocks[i].rect;
            box.w = inWidth ? m_blocks[0].rect.w : box.w;
            box.h = inHeight ? m_blocks[0].rect.h : box.h;
            boxes.append({m_blocks[i].block, box});
        }
        return boxes;
    }

    // One begins first, another ends last; those between keep their order, by their middles.
    QList<BlockBox> distributed(qint64 Box::*at, qint64 Box::*size) const
    {
        QList<Placed> row;
        std::copy_if(m_blocks.begin(), m_blocks.end(), std::back_inserter(row),
                     [this](const Placed &block) { return m_isOuter[size_t(block.block)]; });
        if (row.size() < 3)
            return {};
        const auto end = [=](const Placed &block) { return block.place.*at + block.place.*size; };
        std::iter_swap(row.begin(),
                       std::min_element(row.begin(), row.end(), [=](const Placed &a, const Placed &b) {
                           return a.place.*at < b.place.*at;
                       }));
        std::iter_swap(row.end() - 1,
                       std::max_element(row.begin() + 1, row.end(),
                                        [=](const Placed &a, const Placed &b) { return end(a) < end(b); }));
        std::stable_sort(row.begin() + 1, row.end() - 1, [=](const Placed &a, const Placed &b) {
            return a.place.*at + end(a) < b.place.*at + end(b);
        });
        qint64 free = row.last().place.*at - end(row.first());
        for (qsizetype i = 1; i + 1 < row.size(); ++i)
            free -= row[i].place.*size;
        QList<BlockBox> boxes;
        qint64 taken = end(row.first());
        for (qsizetype i = 1; i + 1 < row.size(); ++i) {
            Box way;
            way.*at = taken + half(2 * free * i / (row.size() - 1)) - row[i].place.*at;
            boxes.append(row[i].moved(way.x, way.y));
            taken += row[i].place.*size;
        }
        return boxes;
    }

    QList<BlockBox> centred() const
    {
        QList<BlockBox> boxes;
        for (const Placed &block : m_blocks) {
            const std::optional<RectValue> outer = rectOfRow(m_outline, parentOf(m_outline, block.block));
            if (outer)
                boxes.append(BlockBox{block.block,
                                      {half(outer->box.w - block.rect.w), half(outer->box.h - block.rect.h),
                                       block.rect.w, block.rect.h}});
        }
        return boxes;
    }

    // The name of the block's picture; empty where it has none, or a frame of several.
    QString pictureOf(qint32 element) const
    {
        QStringList pictures;
        QString withoutFocus;
        for (const qint32 property : m_outline.propertiesOf(element)) {
            const Kind kind = m_outline.element(property).kind;
            const QStringView value = m_outline.valueOf(property);
            if (kind == Kind::Mode && value.compare(u"multiple", Qt::CaseInsensitive) == 0)
                return {};
            if (value.isEmpty() || kind < Kind::Img || kind > Kind::UnfocusImg)
                continue;
            if (kind == Kind::UnfocusImg)
                withoutFocus = value.toString();
            else
                pictures.append(value.toString());
        }
        return pictures.isEmpty() ? withoutFocus : pictures.size() == 1 ? pictures.first() : QString();
    }

    QList<BlockBox> fitted() const
    {
        QList<BlockBox> boxes;
        for (const Placed &block : m_blocks) {
            const QString picture = m_sizeOf ? pictureOf(block.element) : QString();
            const QSize size = picture.isEmpty() ? QSize() : m_sizeOf(picture);
            if (!size.isEmpty())
                boxes.append(
                    BlockBox{block.block, {block.rect.x, block.rect.y, size.width(), size.height()}});
        }
        return boxes;
    }

    const Outline &m_outline;
    const PictureSize &m_sizeOf;
    QList<Placed> m_blocks; // as they were selected
    std::vector<bool> m_isOuter;
};

} // namespace

QList<BlockBox> arranged(Arrange command, const Outline &outline, const QList<int> &blocks,
                         const PictureSize &sizeOf)
{
    Arranger arranger(outline, blocks, sizeOf);
    return arranger.withoutThoseThatStay(arranger.wanted(command));
}

QSet<Arrange> arrangeable(const Outline &outline, const QList<int> &blocks, const PictureSize &sizeOf)
{
    if (blocks.isEmpty())
        return {};
    Arranger arranger(outline, blocks, sizeOf);
    QSet<Arrange> commands;
    for (int i = 0; i <= int(Arrange::FitToPicture); ++i) {
        if (!arranger.wanted(Arrange(i)).isEmpty())
            commands.insert(Arrange(i));
    }
    return commands;
}

} // namespace quillmere
