#include "preview/PreviewPage.h"

#include "markup/MarkerSet.h"

namespace quillmere {

namespace {

constexpr int kBetweenScreens = 15970;
constexpr int kMargin = 600;

QString styleSheet(const ViewOptions &options, const QString &fontSize, const QList<ListRows::Row> &lvBlock)
{
    using V = ViewOptions;
    static constexpr struct
    {
        V::Item item;
        QStringView rule;
    } hiding[] = {{V::Name, u".nama{display:none;}"},
                  {V::Image, u".image span{display:none;}"},
                  {V::String, u".string{display:none;}"},
                  {V::Position, u".posisi{display:none;}"},
                  {V::Size, u".ukuran{display:none;}"}};

    QString sheet = u"body{background-color:#fff;}.window{margin:0;}div{font-size:" + fontSize +
                    u"px;margin:0;padding:0;font-family:arial;}";
    if (options.shown[V::Overflow])
        sheet += u"div{overflow:hidden;}";
    sheet += u"div{border:1px solid #000000;}"
             u".image{border:1px solid #FF0000;}"
             u".text{border:1px solid #0000FF;}"
             u".progbar{border:1px solid #106c00;}"
             u".window{border:1px solid #c0c0c0;}"
             u".button{border:1px solid #710d71;}"
             u".boxitem{border:1px solid #152f81;}";
    for (const auto &[item, rule] : hiding) {
        if (!options.shown[item])
            sheet += rule;
    }
    for (const ListRows::Row &row : lvBlock) {
        if (row.checked)
            sheet += u'#' + row.sub(1) + u"{display:none;}";
    }
    return sheet;
}

} // namespace

QString defaultFontSize(const ListRows &lvFont)
{
    for (const ListRows::Row &font : lvFont.rows()) {
        if (font.sub(1) == u"font_prog")
            return font.sub(3);
    }
    return {};
}

QString BuildPreviewPage(const QString &html, const ViewOptions &options, const QString &fontSize,
                         const QList<ListRows::Row> &lvBlock)
{
    using Pairs = std::vector<std::pair<QStringView, QStringView>>;
    Pairs pairs = {{u"#00ff00", u"transparent"}, {u"#ff00ff", u"transparent"}};
    if (options.fixed)
        pairs.push_back({u"</style>", u"body{overflow:hidden;}</style>"});
    // What a ticked name makes of the sheet counts as well, so the sheet is finished before it goes in.
    const QString sheet = MarkerReplacement(pairs).applied(styleSheet(options, fontSize, lvBlock));
    pairs.push_back({u"<!--stye-->", sheet});
    if (options.shown[ViewOptions::Position] && options.shown[ViewOptions::Size])
        pairs.push_back({u"</span><span class=\"ukuran\">", u"</span> , <span class=\"ukuran\">"});
    return MarkerReplacement(pairs).applied(html);
}

TwipSize browserSize(Screen screen, bool fixed)
{
    const TwipSize size = screen == Screen::S1024x576 ? TwipSize{15360, 8640} : TwipSize{19200, 10800};
    return fixed ? size : TwipSize{size.width + kMargin, size.height + kMargin};
}

Screen screenOfWidth(int twips)
{
    return twips > kBetweenScreens ? Screen::S1280x720 : Screen::S1024x576;
}

Screen screenOfTheme(const QString &width, const QString &height)
{
    return width.trimmed() == u"1280" && height.trimmed() == u"720" ? Screen::S1280x720 : Screen::S1024x576;
}

} // namespace quillmere
