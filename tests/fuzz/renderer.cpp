#include "Fuzz.h"
#include "markup/WidgetDocument.h"
#include "preview/LiteralRenderer.h"
#include "preview/PreviewPage.h"
#include "preview/WidgetDrawing.h"
#include "widgets/BlockLines.h"

#include <QRandomGenerator>

#include <utility>

namespace {

ViewOptions optionsOf(const Input &input)
{
    ViewOptions options;
    for (size_t item = 0; item < options.shown.size(); ++item)
        options.shown[item] = input.choice(2, 256) >> item & 1;
    return options;
}

// A page is made as replacement by replacement. The sheet alone is what nothing is replaced in.
void comparePages(const QString &html, const QString &name, const QString &size, ViewOptions options)
{
    ListRows block(QStringList(2), ListRows::Checks::Yes);
    block.add({}, {name});
    QString sheet = BuildPreviewPage(u"<!--stye-->"_s, options, u"@"_s, block);
    sheet.replace(u'@', size);
    for (const bool changed : {false, true}) {
        options.fixed = changed;
        block.setChecked(0, changed);
        same(BuildPreviewPage(html, options, size, block),
             twins::buildPreviewPage(html, changed ? sheet + u'#' + name + u"{display:none;}" : sheet,
                                     options),
             "replaces in the page");
    }
}

// What is taken over from the text before is what would have been drawn, wherever a stretch comes or goes and
// whatever the catalogues say meanwhile.
void drawOneAfterAnother(QString text, QList<ListRows::Row> fonts)
{
    constexpr int kEdits = 8;
    QRandomGenerator random(quint32(qHash(text)));
    const auto number = [&random](qsizetype most) { return qsizetype(random.bounded(qint64(most) + 1)); };
    QString folder;
    const ImageLookup find = [&folder](const QString &id) { return folder + id; };
    WidgetDrawing drawing;
    for (int edit = 0; edit < kEdits; ++edit) {
        const WidgetPage page = drawing.draw(text, find, fonts), expected = drawWidgets(text, find, fonts);
        same(page.html, expected.html, "the page after an edit");
        same(rowsAsText(page.blocks), rowsAsText(expected.blocks), "the rows after an edit");
        const qsizetype from = number(text.size()), at = number(text.size());
        if (edit % 2 == 0)
            text.insert(at, text.sliced(from, std::min(text.size() - from, number(200))));
        else
            text.remove(at, number(60));
        if (edit == kEdits / 2)
            folder = u"other/"_s;
        if (edit == kEdits - 2 && !fonts.isEmpty())
            fonts.removeFirst();
    }
}

} // namespace

// The page is that of the slow renderer, and so are the pictures asked for; there are as many rows as blocks;
// a ticked block is hidden; the rows come back from the clipboard. Fonts are lines NAME SIZE STYLE.
void fuzz(const Input &input)
{
    const QString markup = input.text(0);
    if (hasSurrogates(markup + input.text(1) + input.text(3) + input.text(4) + input.text(5)))
        return;
    ListRows fonts(QStringList(5)), blocks(QStringList(2), ListRows::Checks::Yes);
    for (const QString &line : input.lines(1))
        fonts.add({}, {line.section(u' ', 0, 0), {}, line.section(u' ', 1, 1), line.section(u' ', 2)});
    QStringList asked;
    const ImageLookup find = [&asked](const QString &id) {
        asked.append(id);
        return id == id.toLower() && !id.isEmpty() ? QString(u"/i/" + id) : QString();
    };
    QList<ListRows::Row> expectedRows;
    const QString page = BuildWidgetHtml(markup, find, fonts, blocks);
    const QStringList pictures = std::exchange(asked, {});
    same(page, twins::buildWidgetHtml(markup, find, fonts, expectedRows), "the page");
    same(pictures.join(u'|'), asked.join(u'|'), "the pictures");
    same(rowsAsText(blocks.rows()), rowsAsText(expectedRows), "the rows");
    check(cutBlocks(markup).blocks.size() == blocks.count(), "a row a block", markup);
    same(rowsAsText(blocksOfLines(linesOfBlocks(blocks))),
         holdsAny(rowsAsText(expectedRows), u"\r") ||
                 rowsAsText(expectedRows).count(u'\n') != expectedRows.size() ||
                 rowsAsText(expectedRows).contains(u"[*]")
             ? rowsAsText(blocksOfLines(linesOfBlocks(blocks)))
             : rowsAsText(expectedRows),
         "rows of the clipboard");

    drawOneAfterAnother(markup, fonts.rows());

    const ViewOptions options = optionsOf(input);
    const QStringList harmless = {u"a"_s, u"b"_s};
    for (int row = 0; row < blocks.count(); ++row)
        blocks.setChecked(row, true);
    const QString shown = BuildPreviewPage(page, options, defaultFontSize(fonts), blocks);
    for (const ListRows::Row &row : blocks.rows())
        check(!harmless.contains(row.sub(1)) ||
                  shown.contains(QString(u'#' + row.sub(1) + u"{display:none;}")),
              "a ticked block is hidden", shown);
    comparePages(input.text(3), input.text(4), input.text(5), options);
}
