#include "receiver/ReceiverPage.h"

#include "markup/ColourCode.h"
#include "receiver/BlockLook.h"
#include "receiver/BlockText.h"

#include <QHash>

#include <algorithm>

namespace quillmere {

namespace {

// Browsers count no further than some 2^25 pixels; what is beyond this is far off every screen.
constexpr qint64 kFar = 1 << 20;

// Nothing of it is as wide or as high as a number below 1.
Box overlap(const Box &a, const Box &b)
{
    const qint64 x = std::max(a.x, b.x), y = std::max(a.y, b.y);
    return {x, y, std::min(a.x + a.w, b.x + b.w) - x, std::min(a.y + a.h, b.y + b.h) - y};
}

bool isEmpty(const Box &box)
{
    return box.w <= 0 || box.h <= 0;
}

constexpr Box kEverything = {-kFar, -kFar, 2 * kFar, 2 * kFar};

// The two colours that the receiver puts the television picture in the place of.
bool isKeyColour(QStringView name)
{
    static constexpr QStringView names[] = {u"osd_trans", u"gui_trans", u"#00ff00", u"#ff00ff"};
    return std::ranges::any_of(
        names, [name](QStringView key) { return name.compare(key, Qt::CaseInsensitive) == 0; });
}

struct Drawn
{
    bool isDrawn = false; // and with it what it holds
    bool isGhost = false; // half see-through
    Box place;            // on the screen
    Box seen;             // of it
    Box room;             // what its children are cut at
};

bool isLeftOut(const Outline &outline, qint32 element, const ReceiverOptions &options)
{
    if (options.hiddenNames.isEmpty())
        return false;
    const std::optional<Attribute> name = outline.nameAttribute(element);
    return name && options.hiddenNames.contains(outline.at(name->value).toString());
}

Drawn drawnIn(const Outline &outline, qint32 element, const BlockLook &look, const Drawn &outer,
              const ReceiverOptions &options)
{
    const std::optional<Box> rect = outer.isDrawn ? look.rect() : std::nullopt;
    if (!rect || isLeftOut(outline, element, options) || (look.isHidden() && !options.hiddenBlocks))
        return {};
    Drawn block{true, outer.isGhost || look.isHidden(), {}, {}, {}};
    block.place = {outer.place.x + rect->x, outer.place.y + rect->y, rect->w, rect->h};
    block.seen = overlap(block.place, outer.room);
    block.room = options.cutsChildren ? block.seen : outer.room;
    return block;
}

// Every block that is drawn, in the order of the document: use(row, look, block).
template <typename Use>
void forEachDrawn(const Outline &outline, const ReceiverOptions &options, Use use)
{
    const Drawn screen{true, false, {}, {}, kEverything};
    std::vector<Drawn> blocks(outline.blocks().size());        // by row
    std::vector<qint32> around(outline.elements().size(), -1); // by element: the block it stands in
    for (size_t index = 0; index < around.size(); ++index) {
        const Element &element = outline.elements()[index];
        if (element.parent >= 0) {
            const qint32 parent = outline.element(element.parent).block;
            around[index] = parent >= 0 ? parent : around[size_t(element.parent)];
        }
        if (element.block < 0 || element.inComment || element.inSignal || element.kind == Kind::Style)
            continue;
        const BlockLook look(outline, qint32(index));
        Drawn &block = blocks[size_t(element.block)];
        block = drawnIn(outline, qint32(index), look,
                        around[index] >= 0 ? blocks[size_t(around[index])] : screen, options);
        if (block.isDrawn)
            use(element.block, look, block);
    }
}

class Painter
{
public:
    Painter(const Outline &outline, const ReceiverTheme &theme, const ReceiverOptions &options)
        : m_outline(outline), m_theme(theme), m_options(options)
    {
    }

    QString page()
    {
        m_body.reserve(m_outline.text().size());
        forEachDrawn(m_outline, m_options, [this](int, const BlockLook &look, const Drawn &block) {
            if (!isEmpty(block.seen) && !isEmpty(block.place))
                draw(look, block);
        });
        // Begins and ends as the preview's pages do, so that keys change the document in the browser.
        return u"<html><head><title>Tes Skin</title><style>body{margin:0;overflow:hidden;background:" +
               m_options.ground + u";}div{position:absolute;overflow:hidden;}" + textSheet() + m_sheet +
               u"</style></head><body>" + m_body + u"<body></html>";
    }

private:
    void draw(const BlockLook &look, const Drawn &block)
    {
        const Box &seen = block.seen;
        open(seen);
        const QString back = colour(look.entry(Kind::BackColor, m_options.state));
        if (!back.isEmpty())
            m_body += u"background-color:" + back + u';';
        if (block.isGhost)
            m_body += u"opacity:0.5;";
        m_body += u"\">";
        // From here on places are those in the div, which is cut where the block is.
        const Box box = {block.place.x - seen.x, block.place.y - seen.y, block.place.w, block.place.h};
        const bool hasFocus = m_options.state == 2;
        if (look.isFrame())
            drawFrame(look, box);
        else if (look.has(Kind::Img) && (hasFocus || !look.has(Kind::UnfocusImg)))
            drawPicture(look.value(Kind::Img), box, u"no-repeat");
        if (!hasFocus && look.has(Kind::UnfocusImg))
            drawPicture(look.value(Kind::UnfocusImg), box, u"no-repeat");
        drawText(look, box);
        m_body += u"</div>";
    }

    // The corners in their own size, and the edges in their own thickness from corner to corner.
    void drawFrame(const BlockLook &look, const Box &box)
    {
        const auto size = [&](Kind kind) {
            const QString path = pathOf(look.value(kind));
            return path.isEmpty() || !m_theme.sizeOf ? QSize(0, 0) : m_theme.sizeOf(path).expandedTo({0, 0});
        };
        const QSize t = size(Kind::TopImg), b = size(Kind::BottomImg), l = size(Kind::LeftImg),
                    r = size(Kind::RightImg), lt = size(Kind::LeftTopImg), rt = size(Kind::RightTopImg),
                    lb = size(Kind::LeftBottomImg), rb = size(Kind::RightBottomImg);
        const qint64 right = box.x + box.w, bottom = box.y + box.h;
        const struct
        {
            Kind kind;
            Box place;
            QStringView way;
        } pieces[] = {
            {Kind::TopImg,
             {box.x + lt.width(), box.y, box.w - lt.width() - rt.width(), t.height()},
             u"repeat-x"},
            {Kind::BottomImg,
             {box.x + lb.width(), bottom - b.height(), box.w - lb.width() - rb.width(), b.height()},
             u"repeat-x"},
            {Kind::LeftImg,
             {box.x, box.y + lt.height(), l.width(), box.h - lt.height() - lb.height()},
             u"repeat-y"},
            {Kind::RightImg,
             {right - r.width(), box.y + rt.height(), r.width(), box.h - rt.height() - rb.height()},
             u"repeat-y"},
            {Kind::LeftTopImg, {box.x, box.y, lt.width(), lt.height()}, u"no-repeat"},
            {Kind::RightTopImg, {right - rt.width(), box.y, rt.width(), rt.height()}, u"no-repeat"},
            {Kind::LeftBottomImg, {box.x, bottom - lb.height(), lb.width(), lb.height()}, u"no-repeat"},
            {Kind::RightBottomImg,
             {right - rb.width(), bottom - rb.height(), rb.width(), rb.height()},
             u"no-repeat"},
        };
        for (const auto &[kind, place, way] : pieces) {
            if (look.has(kind))
                drawPicture(look.value(kind), place, way);
        }
    }

    void drawPicture(QStringView id, const Box &box, QStringView way)
    {
        const QString path = pathOf(id);
        // A path that the address of a picture cannot hold would end it.
        if (isEmpty(box) || path.isEmpty() || path.contains(u"')"))
            return;
        QString &name = m_pictures[path];
        if (name.isEmpty()) {
            name = u'p' + QString::number(m_pictures.size());
            m_sheet += u'.' + name + u"{background-image:url('" + path + u"');}";
        }
        openTag(name, box);
        m_body += u"background-repeat:" + way + u";\"></div>";
    }

    void drawText(const BlockLook &look, const Box &box)
    {
        const BlockText set = textOf(look, m_theme);
        const QString fore = colour(look.entry(Kind::ForeColor, m_options.state));
        if (set.source.isEmpty() || fore.isEmpty())
            return;
        const QString text = shownText(set.source, m_theme.translation);
        using L = BlockLook;
        openTag(u"t", box);
        m_body += u"color:" + fore + u';' + set.font;
        m_body += set.alignment.across == L::Across::Centre  ? u"text-align:center"
                  : set.alignment.across == L::Across::Right ? u"text-align:right"
                                                             : u"text-align:left";
        m_body += set.alignment.down == L::Down::Centre   ? u";justify-content:center"
                  : set.alignment.down == L::Down::Bottom ? u";justify-content:flex-end"
                                                          : QStringView();
        m_body += text.isRightToLeft() ? u";\"><span dir=\"rtl\">" : u";\"><span>";
        putText(text);
        m_body += u"</span></div>";
    }

    // Text is never markup, and never the address of a picture.
    void putText(QStringView text)
    {
        for (const QChar c : text) {
            if (c == u'<')
                m_body += u"&lt;";
            else if (c == u'&')
                m_body += u"&amp;";
            else if (c == u'\'')
                m_body += u"&#39;";
            else
                m_body += c;
        }
    }

    void open(const Box &box) { openTag({}, box); }
    void openTag(QStringView name, const Box &box)
    {
        m_body += u"<div ";
        if (!name.isEmpty())
            m_body += u"class=\"" + name + u"\" ";
        m_body += u"style=\"left:" + QString::number(box.x) + u"px;top:" + QString::number(box.y) +
                  u"px;width:" + QString::number(box.w) + u"px;height:" + QString::number(box.h) + u"px;";
    }

    QString pathOf(QStringView id) const
    {
        return id.isEmpty() || !m_theme.picture ? QString() : m_theme.picture(id.toString());
    }

    // As the page has it; empty where nothing is drawn in it.
    QString colour(QStringView name) const
    {
        if (name.isEmpty() || isKeyColour(name))
            return {};
        const QString code = m_theme.colour ? m_theme.colour(name.toString()) : QString();
        const QStringView asked = code.isEmpty() ? name : QStringView(code).trimmed();
        const std::optional<Channels> channels = channelsOf(asked);
        return channels && !isKeyColour(asked) ? colourCode(*channels) : QString();
    }

    const Outline &m_outline;
    const ReceiverTheme &m_theme;
    const ReceiverOptions &m_options;
    QHash<QString, QString> m_pictures; // by path: what its rule is called
    QString m_sheet, m_body;
};

} // namespace

QString receiverPage(const Outline &outline, const ReceiverTheme &theme, const ReceiverOptions &options)
{
    return Painter(outline, theme, options).page();
}

std::vector<ReceiverPlace> receiverPlaces(const Outline &outline, const ReceiverOptions &options)
{
    std::vector<ReceiverPlace> places;
    forEachDrawn(outline, options, [&places](int row, const BlockLook &, const Drawn &block) {
        places.push_back({row, block.place, block.seen});
    });
    return places;
}

} // namespace quillmere
