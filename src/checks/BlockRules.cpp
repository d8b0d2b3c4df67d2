#include "checks/NameRules.h"
#include "checks/WindowReport.h"
#include "outline/Values.h"

namespace quillmere {

namespace {

// The preview draws a frame of one pixel around every block, and a picture shows under it.
constexpr int kFrame = 2;

struct Block
{
    qint32 element = -1;
    qint32 parent = -1; // the block around it, an element
    QList<qint32> properties;
    std::optional<RectValue> rect;
    std::optional<Box> onScreen;
};

QString sizeText(qint64 width, qint64 height)
{
    return QStringLiteral("%1 x %2").arg(width).arg(height);
}

bool isInside(const Box &box, qint64 width, qint64 height)
{
    return box.x >= 0 && box.y >= 0 && box.x + box.w <= width && box.y + box.h <= height;
}

bool isBorder(Kind kind)
{
    return kind >= Kind::TopImg && kind <= Kind::RightBottomImg;
}

class BlockRules
{
public:
    explicit BlockRules(WindowReport &report) : m_report(report), m_outline(report.outline) {}

    void run()
    {
        const std::vector<std::optional<Box>> places = placesOnScreen(m_outline);
        m_names.reserve(qsizetype(places.size()));
        for (size_t row = 0; row < places.size() && !m_report.stop.stop_requested(); ++row) {
            Block block;
            block.element = m_outline.blocks()[row];
            const Element &element = m_outline.element(block.element);
            if (!WindowReport::counts(element))
                continue;
            block.parent = element.parent < 0 ? -1 : m_outline.blockOf(element.parent);
            block.properties = m_outline.propertiesOf(block.element);
            block.rect = rectOfBlock(m_outline, block.element);
            block.onScreen = places[row];
            checkName(block);
            checkPlace(block);
            checkPicture(block);
            checkColours(block);
            checkMode(block);
        }
    }

private:
    Kind kindOf(qint32 element) const { return m_outline.element(element).kind; }

    void add(Rule rule, const Block &block, Range range, const QString &message)
    {
        m_report.add(rule, range, message, m_report.blockName(block.element));
    }

    // A block at the beginning of a message.
    QString subject(const Block &block) const
    {
        const QString name = m_report.blockName(block.element);
        return name.isEmpty() ? QStringLiteral("A block without a name") : quoted(name);
    }

    void checkName(const Block &block)
    {
        const std::optional<Attribute> name = m_outline.nameAttribute(block.element);
        if (!name || name->value.isEmpty())
            return;
        const QStringView text = m_outline.at(name->value);
        const QString key = QString::fromRawData(text.data(), text.size());
        const qsizetype before = m_names.size();
        m_names.insert(key);
        if (m_names.size() == before)
            add(Rule::DuplicateBlock, block, name->value,
                quoted(text) + u" is also the name of another block");
    }

    // What extends beyond the block around it is not reported to extend beyond the screen as well.
    void checkPlace(const Block &block)
    {
        if (!block.rect)
            return;
        const Box &box = block.rect->box;
        const Range range = m_outline.element(block.rect->element).range();
        const std::optional<RectValue> outer =
            block.parent < 0 ? std::nullopt : rectOfBlock(m_outline, block.parent);
        if (outer && !isInside(box, outer->box.w, outer->box.h)) {
            add(Rule::OutsideParent, block, range,
                subject(block) + u" extends beyond " + m_report.block(block.parent) + u", which is " +
                    sizeText(outer->box.w, outer->box.h));
            return;
        }
        const std::optional<QSize> &screen = m_report.facts.screen;
        if (screen && block.onScreen && !isInside(*block.onScreen, screen->width(), screen->height()))
            add(Rule::OutsideScreen, block, range,
                subject(block) + u" extends beyond the screen, which is " +
                    sizeText(screen->width(), screen->height()));
    }

    bool isMultiple(const Block &block) const
    {
        return std::any_of(block.properties.begin(), block.properties.end(), [this](qint32 property) {
            return kindOf(property) == Kind::Mode &&
                   m_outline.valueOf(property).compare(u"multiple", Qt::CaseInsensitive) == 0;
        });
    }

    // The middle of a frame of pictures is repeated, not cut.
    void checkPicture(const Block &block)
    {
        if (!block.rect || isMultiple(block))
            return;
        const Box &box = block.rect->box;
        for (const qint32 property : block.properties) {
            if (kindOf(property) != Kind::Img)
                continue;
            const QString id = m_outline.valueOf(property).toString();
            const QSize size = m_report.facts.pictures.value(id);
            if (size.width() > box.w + kFrame || size.height() > box.h + kFrame)
                add(Rule::PictureSize, block, m_outline.element(property).range(),
                    sizeText(size.width(), size.height()) + u" is larger than " + sizeText(box.w, box.h) +
                        u": the picture " + quoted(id) + u" in " + m_report.block(block.element));
        }
    }

    bool drawsText(const Block &block) const
    {
        const std::optional<Attribute> className = m_outline.attribute(block.element, u"class");
        if (className && m_outline.at(className->value).compare(u"text", Qt::CaseInsensitive) == 0)
            return true;
        return std::any_of(block.properties.begin(), block.properties.end(), [this](qint32 property) {
            return kindOf(property) == Kind::String && !m_outline.valueOf(property).isEmpty();
        });
    }

    void checkColours(const Block &block)
    {
        for (const qint32 property : block.properties) {
            const bool isText = kindOf(property) == Kind::ForeColor;
            if (!isText && kindOf(property) != Kind::BackColor)
                continue;
            const QList<Range> colours = entriesOf(m_outline, property);
            if (!colours.isEmpty() && colours.size() != 3)
                add(Rule::ColourList, block, m_outline.element(property).range(),
                    colours.size() == 1 ? QStringLiteral("1 colour instead of 3")
                                        : QStringLiteral("%1 colours instead of 3").arg(colours.size()));
            if (!isText || !drawsText(block))
                continue;
            for (const Range &colour : colours) {
                const QStringView name = m_outline.at(colour);
                if (isKeyColour(name))
                    m_report.add(Rule::KeyColour, colour,
                                 u"Text in the key colour " + quoted(name) + u", in " +
                                     m_report.block(block.element),
                                 name.toString());
            }
        }
    }

    void checkMode(const Block &block)
    {
        const bool hasBorders =
            std::any_of(block.properties.begin(), block.properties.end(), [this](qint32 property) {
                return isBorder(kindOf(property)) && !m_outline.valueOf(property).isEmpty();
            });
        for (const qint32 property : block.properties) {
            if (kindOf(property) != Kind::Mode)
                continue;
            const QStringView mode = m_outline.valueOf(property);
            const bool isSingle = mode.compare(u"single", Qt::CaseInsensitive) == 0;
            if (isSingle && hasBorders)
                add(Rule::Mode, block, m_outline.element(property).range(),
                    u"Mode single, but " + m_report.block(block.element) + u" has border images");
            else if (!isSingle && !hasBorders && mode.compare(u"multiple", Qt::CaseInsensitive) == 0)
                add(Rule::Mode, block, m_outline.element(property).range(),
                    u"Mode multiple, but " + m_report.block(block.element) + u" has no border image");
        }
    }

    WindowReport &m_report;
    const Outline &m_outline;
    QSet<QString> m_names; // views of the outline's text
};

} // namespace

void checkBlocks(WindowReport &report)
{
    BlockRules(report).run();
}

} // namespace quillmere
