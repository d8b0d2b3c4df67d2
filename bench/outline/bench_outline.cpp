#include "outline/CaretPlace.h"
#include "outline/Outline.h"
#include "outline/Values.h"

#include <benchmark/benchmark.h>

using namespace quillmere;

namespace {

// A window of so many blocks, about 210 units each.
QString window(qint64 blocks)
{
    QString text = QStringLiteral("<?xml version=\"1.0\"?>\r\n<interface>\r\n<widget class=\"window\" "
                                  "style=\"default\" name=\"w\">\r\n<property>\r\n<rect>[0,0,1280,720]</rect>"
                                  "\r\n</property>\r\n<children>\r\n");
    for (qint64 i = 1; i < blocks; ++i)
        text += QStringLiteral("<widget class=\"text\" style=\"default\" name=\"label_%1\">\r\n<property>\r\n"
                               "<string>Text %1</string>\r\n<rect>[%2,8,320,30]</rect>\r\n<forecolor>"
                               "[white,white,gray]</forecolor>\r\n<font>font_%3</font>\r\n</property>\r\n"
                               "</widget>\r\n")
                    .arg(QString::number(i), QString::number(i % 1280), QString::number(i % 8));
    return text + QStringLiteral("</children>\r\n</widget>\r\n</interface>\r\n");
}

void outlineWindow(benchmark::State &state)
{
    const QString text = window(state.range(0));
    size_t blocks = 0;
    for (auto _ : state)
        blocks = Outline(text).blocks().size();
    if (qint64(blocks) != state.range(0))
        state.SkipWithError("not every block was found");
    const Outline outline(text);
    state.counters["units"] = double(text.size());
    state.counters["bytes"] = double(outline.elements().size() * sizeof(Element));
    state.SetComplexityN(state.range(0));
}

void outlineNested(benchmark::State &state)
{
    const QString text = QStringLiteral("<widget a><property><rect>[1,1,9,9]</rect></property><children>")
                             .repeated(qsizetype(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(Outline(text).blocks().size());
}

void places(benchmark::State &state)
{
    const Outline outline(window(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(placesOnScreen(outline));
}

void caret(benchmark::State &state)
{
    const Outline outline(window(state.range(0)));
    qsizetype at = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(caretPlace(outline, at));
        at = (at + 7919) % outline.text().size();
    }
}

} // namespace

BENCHMARK(outlineWindow)->Arg(200)->Arg(2000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(outlineNested)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(places)->Arg(200)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(caret)->Arg(10000);
