// Commands that rewrite a whole window of 2,000 blocks (400 KB): each is to take at most 100 ms.

#include "catalogues/ColourConversion.h"
#include "markup/FormatXML.h"
#include "rows/ListRows.h"
#include "widgets/RectCommands.h"

#include <benchmark/benchmark.h>

using namespace quillmere;

namespace {

constexpr int kBlocks = 2000;
constexpr int kColours = 200;

QString window()
{
    QString text = QStringLiteral("<interface>\r\n<widget class=\"window\" name=\"w\">\r\n<property>\r\n     "
                                  "<rect>[0,0,1280,720]</rect>\r\n</property>\r\n");
    for (int i = 0; i < kBlocks; ++i)
        text +=
            QStringLiteral(
                "<widget class=\"text\" style=\"default\" name=\"text_%1\">\r\n<property>\r\n     <string>"
                "Programme %1</string>\r\n     <rect>[%2,%3,%4,24]</rect>\r\n     <backcolor>[colour%5,"
                "colour%6,colour%5]</backcolor>\r\n     "
                "<font>font_prog</font>\r\n</property>\r\n</widget>\r\n")
                .arg(i)
                .arg(i % 1280)
                .arg(i % 720)
                .arg(40 + i % 200)
                .arg(i % kColours)
                .arg((i + 7) % kColours);
    return text + QStringLiteral("</interface>\r\n");
}

template <typename Command>
void run(benchmark::State &state, Command command)
{
    const QString text = window();
    for (auto _ : state) {
        QString copy = text;
        command(copy);
        benchmark::DoNotOptimize(copy);
    }
    state.counters["units"] = double(text.size());
}

void scale(benchmark::State &state)
{
    run(state, [](QString &text) { ScaleRects(text, 4, 5, QStringLiteral("1280"), QStringLiteral("720")); });
}
BENCHMARK(scale)->Unit(benchmark::kMillisecond);

void move(benchmark::State &state)
{
    run(state, [](QString &text) { MoveRects(text, Axis::Top, 8); });
}
BENCHMARK(move)->Unit(benchmark::kMillisecond);

void format(benchmark::State &state)
{
    run(state, [](QString &text) { FormatXML(text); });
}
BENCHMARK(format)->Unit(benchmark::kMillisecond);

void convertColours(benchmark::State &state)
{
    ListRows colours({QString(), QStringLiteral("Nama"), QStringLiteral("Code")});
    for (int i = 0; i < kColours; ++i)
        colours.add(QString(),
                    {QStringLiteral("colour%1").arg(i), QStringLiteral("#%1").arg(i, 6, 16, QChar(u'0'))});
    run(state, [&colours](QString &text) { text = ConvertColours(text, colours, ColourForm::Code); });
}
BENCHMARK(convertColours)->Unit(benchmark::kMillisecond);

// One pass over the text for every rect, as the rule has it.
void scaleRectByRect(benchmark::State &state)
{
    run(state, [](QString &text) {
        const QStringList pieces = text.split(QStringLiteral("<rect>"));
        for (int i = 1; i < pieces.size(); ++i) {
            const QString old = pieces[i].section(u']', 0, 0).mid(1);
            QStringList scaled;
            for (const QString &number : old.split(u','))
                scaled.append(QString::number(number.toLongLong() * 4 / 5));
            text.replace(QString(u"<rect>[" + old + u"]</rect>"),
                         QString(u"<rect>[" + scaled.join(u',') + u"]</rect>"), Qt::CaseInsensitive);
        }
    });
}
BENCHMARK(scaleRectByRect)->Unit(benchmark::kMillisecond);

} // namespace
