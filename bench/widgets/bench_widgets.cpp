#include "preview/LiteralRenderer.h"
#include "preview/PreviewPage.h"
#include "receiver/ReceiverPage.h"

#include <benchmark/benchmark.h>

#include <QHash>
#include <QRandomGenerator>

using namespace quillmere;

namespace {

// A window of so many blocks, the window itself counted: lists of items, each with a label, a picture and a
// bar. About 200 units a block.
QString widgetDocument(qint64 blocks)
{
    static const QString kinds[] = {
        QStringLiteral("button\" style=\"default\" name=\"item_%1\">\r\n  <property>\r\n   "
                       "<rect>[%2,%3,480,42]</rect>\r\n"
                       "   <imgs>\r\n    <mode>single</mode>\r\n    <img>IMG_ROW_%4</img>\r\n   </imgs>\r\n"
                       "   <unfocus_img>IMG_IDLE</unfocus_img>\r\n"),
        QStringLiteral(
            "text\" style=\"title\" name=\"label_%1\">\r\n  <property>\r\n   <string>STR_%4</string>\r\n"
            "   <rect>[%2,%3,320,30]</rect>\r\n   <forecolor>[white,white,gray]</forecolor>\r\n"
            "   <font>font_%4</font>\r\n   <alignment>hcentre|vcentre</alignment>\r\n"),
        QStringLiteral(
            "image\" name=\"icon_%1\">\r\n  <property>\r\n   <rect>[%2,%3,32,32]</rect>\r\n"
            "   <backcolor>[gui_trans,gui_trans,gui_trans]</backcolor>\r\n   <img>IMG_ROW_%4</img>\r\n"),
        QStringLiteral("progbar\" style=\"default\" name=\"bar_%1\">\r\n  <property>\r\n   "
                       "<rect>[%2,%3,128,8]</rect>\r\n"
                       "   <imgs>\r\n    <mode>multiple</mode>\r\n    <l_img>IMG_ROW_%4</l_img>\r\n"
                       "    <r_img>IMG_ROW_1</r_img>\r\n   </imgs>\r\n")};
    QRandomGenerator random(4);
    QString text =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<interface>\r\n"
                       "<widget class=\"window\" style=\"default\" name=\"wnd_list\">\r\n <property>\r\n"
                       "  <rect>[0,0,1280,720]</rect>\r\n  <backcolor>[black,black,black]</backcolor>\r\n"
                       "  <forecolor>[white,white,gray]</forecolor>\r\n </property>\r\n <children>\r\n");
    for (qint64 number = 1; number < blocks; ++number) {
        text += u" <widget class=\"" + kinds[number % 4].arg(QString::number(number),
                                                             QString::number(random.bounded(1280)),
                                                             QString::number(random.bounded(720)),
                                                             QString::number(random.bounded(12)));
        text += u"  </property>\r\n </widget>\r\n";
    }
    return text + QStringLiteral(
                      " </children>\r\n <signal>\r\n  <handler name=\"keypress\" callback=\"list_keypress\"/>"
                      "\r\n </signal>\r\n</widget>\r\n</interface>\r\n");
}

struct Theme
{
    Theme()
    {
        for (int i = 0; i < 12; ++i) {
            images.insert(QStringLiteral("IMG_ROW_%1").arg(i),
                          QStringLiteral("/theme/images/list/row%1.png").arg(i));
            if (i < 8)
                lvFont.add({},
                           {i == 0 ? QStringLiteral("font_prog") : QStringLiteral("font_%1").arg(i),
                            QStringLiteral("sans.ttf"), QString::number(16 + i), QStringLiteral("normal")});
        }
    }

    QHash<QString, QString> images;
    ImageLookup GetImg = [this](const QString &id) { return images.value(id); };
    ListRows lvFont{QStringList(5)};
    ListRows lvBlock{QStringList(2), ListRows::Checks::Yes};
};

void renderQuick(benchmark::State &state)
{
    Theme theme;
    const QString document = widgetDocument(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildWidgetHtml(document, theme.GetImg, theme.lvFont, theme.lvBlock));
    if (theme.lvBlock.count() != state.range(0))
        state.SkipWithError("not every block was drawn");
    state.counters["units"] = double(document.size());
    state.SetComplexityN(state.range(0));
}

void renderStepByStep(benchmark::State &state)
{
    Theme theme;
    const QString document = widgetDocument(state.range(0));
    QList<ListRows::Row> rows;
    for (auto _ : state)
        benchmark::DoNotOptimize(twins::buildWidgetHtml(document, theme.GetImg, theme.lvFont, rows));
    if (rows.size() != state.range(0))
        state.SkipWithError("not every block was drawn");
}

void previewPage(benchmark::State &state)
{
    Theme theme;
    const QString html =
        BuildWidgetHtml(widgetDocument(state.range(0)), theme.GetImg, theme.lvFont, theme.lvBlock);
    for (int row = 0; row < theme.lvBlock.count(); row += 10)
        theme.lvBlock.setChecked(row, true);
    ViewOptions options;
    options.shown.fill(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildPreviewPage(html, options, QStringLiteral("16"), theme.lvBlock));
    state.counters["units"] = double(html.size());
}

// With the outline that it is made from.
void drawReceiverPage(benchmark::State &state)
{
    Theme theme;
    ReceiverTheme given;
    given.picture = theme.GetImg;
    given.sizeOf = [](const QString &) { return QSize(8, 8); };
    given.colour = [](const QString &name) {
        return name == u"white" ? QStringLiteral("#FFFFFF") : QString();
    };
    const QString document = widgetDocument(state.range(0));
    qsizetype blocks = 0;
    for (auto _ : state)
        blocks = receiverPage(Outline(document), given).count(u"<div style");
    if (blocks != state.range(0))
        state.SkipWithError("not every block was drawn");
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(drawReceiverPage)->Arg(200)->Arg(2000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(renderQuick)
    ->Arg(200)
    ->Arg(400)
    ->Arg(800)
    ->Arg(1600)
    ->Arg(2000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();
BENCHMARK(renderStepByStep)->Arg(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(previewPage)->Arg(200)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
