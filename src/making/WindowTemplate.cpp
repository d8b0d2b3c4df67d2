#include "making/WindowTemplate.h"

#include "making/WindowLook.h"

#include <QList>

namespace quillmere {

namespace {

const QString kUnseen = QStringLiteral("gui_trans"); // a colour on every receiver

enum class Back { None, Ground, Panel, Letters }; // the colour behind a block

struct Block
{
    QString className, name;
    Box box;
    QString string = {}, alignment = {};
    Back back = Back::None;
    QList<Block> children = {};
};

class Writer
{
public:
    explicit Writer(const WindowLook &look) : m_look(look) {}

    void write(const Block &block, int depth)
    {
        line(depth, QString(u"<widget class=\"" + block.className + u"\" style=\"default\" name=\"" +
                            block.name + u"\">"));
        line(depth + 1, u"<property>");
        if (!block.string.isEmpty())
            value(depth + 2, u"string", block.string);
        value(depth + 2, u"rect",
              QStringLiteral("[%1,%2,%3,%4]")
                  .arg(block.box.x)
                  .arg(block.box.y)
                  .arg(block.box.w)
                  .arg(block.box.h));
        value(depth + 2, u"backcolor", thrice(colourOf(block.back)));
        value(depth + 2, u"forecolor", thrice(m_look.letters));
        if (!block.string.isEmpty() && !m_look.font.isEmpty())
            value(depth + 2, u"font", m_look.font);
        if (!block.alignment.isEmpty())
            value(depth + 2, u"alignment", block.alignment);
        if (block.className == u"window" && !m_look.picture.isEmpty()) {
            line(depth + 2, u"<imgs>");
            value(depth + 3, u"mode", QStringLiteral("single"));
            value(depth + 3, u"img", m_look.picture);
            line(depth + 2, u"</imgs>");
        }
        line(depth + 1, u"</property>");
        if (!block.children.isEmpty()) {
            line(depth + 1, u"<children>");
            for (const Block &child : block.children)
                write(child, depth + 2);
            line(depth + 1, u"</children>");
        }
        line(depth, u"</widget>");
    }

    QString text;

private:
    void line(int depth, QStringView line) { text += QString(QString(4 * depth, u' ') + line + u'\n'); }
    void value(int depth, QStringView tag, const QString &content)
    {
        line(depth, QString(u"<" + tag + u'>' + content + u"</" + tag + u'>'));
    }
    static QString thrice(const QString &colour)
    {
        return u"[" + colour + u',' + colour + u',' + colour + u']';
    }

    const QString &colourOf(Back back) const
    {
        switch (back) {
        case Back::Ground:
            return m_look.ground;
        case Back::Panel:
            return m_look.panel;
        case Back::Letters:
            return m_look.letters;
        case Back::None:
            break;
        }
        return kUnseen;
    }

    const WindowLook &m_look;
};

// So many of sixteen parts, to a multiple of 8 pixels where that leaves any.
qint64 part(qint64 whole, int sixteenths)
{
    const qint64 pixels = whole * sixteenths / 16;
    return pixels >= 8 ? pixels / 8 * 8 : pixels;
}

// What has no letter needs no translation.
QString wordOf(const WindowLook &look, const QStringList &words)
{
    const QString word = look.word(words);
    return word.isEmpty() ? QStringLiteral("...") : word;
}

Block listIn(const QString &stem, qint64 w, qint64 h)
{
    constexpr int rows = 6;
    const qint64 wide = part(w, 7), high = part(h, 9) / rows;
    Block list = {QStringLiteral("boxitem"), stem + u"_list", {part(w, 1), part(h, 4), wide, rows * high}};
    list.back = Back::Panel;
    for (int row = 0; row < rows; ++row)
        list.children.append({QStringLiteral("boxitem"),
                              stem + QStringLiteral("_row%1").arg(row + 1),
                              {0, row * high, wide, high},
                              QString::number(row + 1),
                              QStringLiteral("vcentre")});
    return list;
}

Block boxIn(const QString &stem, const WindowLook &look)
{
    const qint64 w = part(look.screen.w, 8), h = part(look.screen.h, 6);
    Block box = {
        QStringLiteral("boxitem"), stem + u"_box", {(look.screen.w - w) / 2, (look.screen.h - h) / 2, w, h}};
    box.back = Back::Panel;
    const qint64 edge = part(w, 1);
    box.children.append({QStringLiteral("text"),
                         stem + u"_text",
                         {edge, part(h, 2), w - 2 * edge, part(h, 6)},
                         wordOf(look, {QStringLiteral("Are you sure?"), QStringLiteral("Information")}),
                         QStringLiteral("hcentre|vcentre")});
    const struct
    {
        const char *name;
        QString word;
        qint64 left;
    } buttons[] = {
        {"_yes", wordOf(look, {QStringLiteral("Yes"), QStringLiteral("OK")}), edge},
        {"_no", wordOf(look, {QStringLiteral("No"), QStringLiteral("Cancel")}), w - edge - part(w, 6)}};
    for (const auto &button : buttons)
        box.children.append({QStringLiteral("button"),
                             stem + QLatin1String(button.name),
                             {button.left, part(h, 11), part(w, 6), part(h, 3)},
                             button.word,
                             QStringLiteral("hcentre|vcentre")});
    return box;
}

Block barIn(const QString &stem, const WindowLook &look)
{
    const qint64 w = part(look.screen.w, 14), h = part(look.screen.h, 2);
    Block bar = {
        QStringLiteral("boxitem"), stem + u"_bar", {(look.screen.w - w) / 2, part(look.screen.h, 13), w, h}};
    bar.back = Back::Panel;
    const qint64 edge = part(w, 1) / 2;
    bar.children.append({QStringLiteral("text"),
                         stem + u"_text",
                         {edge, 0, part(w, 4), h},
                         wordOf(look, {QStringLiteral("Volume"), QStringLiteral("Information")}),
                         QStringLiteral("vcentre")});
    Block progress = {
        QStringLiteral("progbar"), stem + u"_progress", {part(w, 5), (h - 8) / 2, part(w, 10), 8}};
    progress.back = Back::Letters;
    bar.children.append(progress);
    return bar;
}

} // namespace

QString windowText(WindowTemplate kind, const QString &name, const WindowLook &look)
{
    const QString stem = name.startsWith(u"wnd_") && name.size() > 4 ? name.mid(4) : name;
    Block window = {QStringLiteral("window"), name, look.screen};
    window.back = Back::Ground;
    switch (kind) {
    case WindowTemplate::Empty:
        break;
    case WindowTemplate::List: {
        window.children.append(
            {QStringLiteral("text"),
             stem + u"_title",
             {part(look.screen.w, 1), part(look.screen.h, 1), part(look.screen.w, 8), part(look.screen.h, 2)},
             wordOf(look, {QStringLiteral("Menu"), QStringLiteral("Channels"), QStringLiteral("Settings")}),
             QStringLiteral("vcentre")});
        window.children.append(listIn(stem, look.screen.w, look.screen.h));
        break;
    }
    case WindowTemplate::MessageBox:
        window.children.append(boxIn(stem, look));
        break;
    case WindowTemplate::Bar:
        window.children.append(barIn(stem, look));
        break;
    }
    Writer writer(look);
    writer.text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<interface>\n");
    writer.write(window, 1);
    return writer.text + u"</interface>\n";
}

} // namespace quillmere
