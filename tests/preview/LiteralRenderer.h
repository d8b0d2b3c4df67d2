#pragma once

#include "markup/LiteralTwins.h"
#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"
#include "rows/ListRows.h"

// The renderer in its slow form: one step after the other, every search from the start of the block.
namespace twins {

class LiteralRenderer
{
    using S = QStringView;
    QString name, style, string, rect, x, y, w, h;
    QStringList back{{}, {}, {}}, fore{{}, {}, {}};
    QString defaultSize, defaultStyle, css, body;

    static bool found(const QString &block, S marker) { return block.contains(marker, Qt::CaseInsensitive); }
    static QString between(const QString &block, S opening, S closing)
    {
        return splitField(block, opening.toString(), closing.toString(), 1, 0);
    }
    static void replace(QString &text, const QString &from, const QString &to)
    {
        if (!from.isEmpty())
            text.replace(from, to, Qt::CaseInsensitive);
    }
    void rule(const QString &declarations) { css += u'#' + name + u'{' + declarations + u"}\r\n"; }

public:
    QString render(QString text, const quillmere::ImageLookup &GetImg, const quillmere::ListRows &lvFont,
                   QList<quillmere::ListRows::Row> &rows)
    {
        replaceAll(text, u"<children>", u"");
        replaceAll(text, u"</children>", u"");
        replaceAll(text, u"<signal>", u"<!--");
        replaceAll(text, u"</signal>", u"-->");
        replaceAll(text, u"</widget>", u"</div>");
        replaceAll(text, u" name=\"", u" id=\"");
        replaceAll(text, u"<style ", u"<widget ");
        const QStringList blocks =
            text.split(QStringLiteral("<widget "), Qt::KeepEmptyParts, Qt::CaseInsensitive);
        rows.clear();
        for (QString block : blocks.mid(1)) {
            QString image;
            name = between(block, u"id=\"", u"\"");
            style = between(block, u"style=\"", u"\"");
            replace(block, u"style=\"" + style + u"\"", QStringLiteral("style=\"default\""));
            string = between(block, u"<string>", u"</string>");
            rows.append({between(block, u"class=\"", u"\""), {name}});

            rect = between(block, u"<rect>[", u"]</rect>");
            const QStringList parts = rect.split(u',');
            if (rect.contains(u',') && parts.size() >= 4) {
                x = parts[0];
                y = parts[1];
                w = parts[2];
                h = parts[3];
            }
            const QString backcolor = between(block, u"<backcolor>[", u"]</backcolor>");
            if (backcolor.contains(u',') && backcolor.split(u',').size() >= 3)
                back = backcolor.split(u',');
            const QString forecolor = between(block, u"<forecolor>[", u"]</forecolor>");
            if (forecolor.contains(u','))
                fore = forecolor.split(u',');

            if (block.indexOf(QStringLiteral("<imgs"), 0, Qt::CaseInsensitive) + 1 > 1) {
                rule(u"background-color:" + back[0] + u";");
                if (found(block, u"<mode>single</mode>")) {
                    image = GetImg(between(block, u"<img>", u"</img>"));
                    rule(u"background:" + back[0] + u" url('" + image + u"') left top no-repeat;");
                } else if (found(block, u"<mode>multiple</mode>")) {
                    // The pictures of the frame are asked for, and the page shows none of them.
                    for (const char16_t *side : {u"t", u"b", u"l", u"r", u"lt", u"rt", u"lb", u"rb"}) {
                        const QString element = QString(S(side) + u"_img>");
                        if (found(block, QString(u'<' + element)))
                            GetImg(between(block, QString(u'<' + element), QString(u"</" + element)));
                    }
                }
            }
            rule(u"position:absolute;left:" + x + u";top:" + y + u";width:" + w + u";height:" + h +
                 u";background-color:" + back[0] + u";color:" + fore[0] + u";");
            if (found(block, u"<unfocus_img>")) {
                image = between(block, u"<unfocus_img>", u"</unfocus_img>");
                rule(u"background:url('" + image + u"') no-repeat left top;");
            }
            if (found(block, u"hcentre"))
                rule(QStringLiteral("text-align: center;"));
            if (found(block, u"vcentre"))
                rule(u"height:" + h + u"px;line-height:" + h + u"px;");
            if (found(block, u"hcentre"))
                rule(QStringLiteral("text-align: center;"));
            if (found(block, u"class=\"text\"")) {
                bool flag = false;
                for (int row = 0; row < lvFont.count() && !flag; ++row) {
                    if (lvFont.sub(row, 1) == u"font_prog") {
                        defaultSize = lvFont.sub(row, 3);
                        defaultStyle = lvFont.sub(row, 4);
                    }
                    flag = found(block, QString(u"<font>" + lvFont.sub(row, 1) + u"</font>"));
                    if (flag)
                        rule(u"font-size: " + lvFont.sub(row, 3) + u"px;font-style:" + lvFont.sub(row, 4) +
                             u";");
                }
                if (!flag)
                    rule(u"font-size: " + defaultSize + u"px;font-style:" + defaultStyle + u";");
            }
            block = u"<div " + block;
            replace(block, QStringLiteral("<property>"),
                    u"<span class=\"nama\">" + name + u"</span><span class=\"string\">" + string +
                        u"</span><span class=\"posisi\">" + x + u" , " + y +
                        u"</span><span class=\"ukuran\">" + w + u" , " + h + u"</span><!--");
            replaceAll(block, u"</property>", u"-->");
            replaceAll(block, u"/>", u"></div>");
            name.clear();
            body += block;
        }
        QString page = u"<html><head><title>Tes Skin</title><style>" + css +
                       u"\r\n<!--stye--></style></head><body>" + body + u"<body></html>";
        replaceAll(page, u":osd_trans", u":transparent;");
        replaceAll(page, u":gui_trans", u":transparent");
        return page;
    }
};

// The page for the browser, one replacement after the other; `sheet` is the style sheet.
inline QString buildPreviewPage(QString page, const QString &sheet, const quillmere::ViewOptions &options)
{
    using V = quillmere::ViewOptions;
    const auto replace = [&page](const QString &from, const QString &to) {
        page.replace(from, to, Qt::CaseInsensitive);
    };
    if (options.shown[V::Position] && options.shown[V::Size])
        replace(QStringLiteral("</span><span class=\"ukuran\">"),
                QStringLiteral("</span> , <span class=\"ukuran\">"));
    replace(QStringLiteral("<!--stye-->"), sheet);
    replace(QStringLiteral("#00ff00"), QStringLiteral("transparent"));
    replace(QStringLiteral("#ff00ff"), QStringLiteral("transparent"));
    if (options.fixed)
        replace(QStringLiteral("</style>"), QStringLiteral("body{overflow:hidden;}</style>"));
    return page;
}

inline QString buildWidgetHtml(const QString &markup, const quillmere::ImageLookup &GetImg,
                               const quillmere::ListRows &lvFont, QList<quillmere::ListRows::Row> &rows)
{
    return LiteralRenderer().render(markup, GetImg, lvFont, rows);
}

} // namespace twins
