#include "markup/Comments.h"
#include "markup/FormatXML.h"
#include "markup/LiteralTwins.h"

#include <QRandomGenerator>

#include <benchmark/benchmark.h>

namespace {

// A widget document of about so many units: windows with nested widgets, comments, tabs and runs of blanks.
// Every third comment is a copy of an earlier one.
QString widgetDocument(qsizetype size)
{
    QRandomGenerator random(3);
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<interface>\r\n");
    for (int number = 0; text.size() < size; ++number) {
        const auto coordinate = [&random] { return QString::number(random.bounded(720)); };
        text += QStringLiteral("\t<widget class=\"window\"  name=\"window_%1\" style=\"default\">\r\n")
                    .arg(number);
        text += QStringLiteral("\t\t<!-- %1 -->\r\n").arg(number % 3 == 0 ? 0 : number);
        text += QStringLiteral("\t\t<property>\r\n\t\t\t<rect>[%1,%2,%3,%4]</rect>\r\n")
                    .arg(coordinate(), coordinate(), coordinate(), coordinate());
        text += QStringLiteral("\t\t\t<backcolor>[#FF101010 #FF202020 #FF303030]</backcolor>\r\n\r\n"
                               "\t\t\t<state>hide</state>\r\n\t\t</property>\r\n\t\t<children>\r\n");
        for (int child = random.bounded(1, 5); child > 0; --child) {
            text += QStringLiteral("\t\t\t<widget class=\"text\" name=\"text_%1_%2\">\r\n    <property>\r\n"
                                   "          <rect>[%3,%4,200,30]</rect><font>Arial</font>\r\n"
                                   "          <string/><img/><mode>single</mode>\r\n"
                                   "          <forecolor>[text_uf_color,text_f_color]</forecolor>\r\n"
                                   "    </property>\r\n\t\t\t</widget>\r\n")
                        .arg(number)
                        .arg(child)
                        .arg(coordinate(), coordinate());
        }
        text += QStringLiteral("\t\t</children>\r\n\t\t<signal>\r\n\t\t\t<handler name=\"keypress\" "
                               "callback=\"window_keypress\"/>\r\n\t\t</signal>\r\n\t</widget>\r\n");
    }
    return text + QStringLiteral("</interface>\r\n");
}

template <typename Routine>
void run(benchmark::State &state, Routine routine)
{
    const QString document = widgetDocument(state.range(0) * 1024);
    for (auto _ : state) {
        QString text = document;
        benchmark::DoNotOptimize(routine(text));
    }
    state.SetComplexityN(state.range(0));
}

void formatQuick(benchmark::State &state)
{
    run(state, quillmere::FormatXML);
}

void formatStepByStep(benchmark::State &state)
{
    run(state, twins::formatXml);
}

void commentsQuick(benchmark::State &state)
{
    run(state, quillmere::RemoveComment);
}

void commentsStepByStep(benchmark::State &state)
{
    run(state, twins::removeComment);
}

} // namespace

// Sizes are in thousands of units.
BENCHMARK(formatQuick)->Arg(40)->Arg(80)->Arg(160)->Arg(320)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(formatStepByStep)->Arg(40)->Unit(benchmark::kMicrosecond);
BENCHMARK(commentsQuick)->Arg(10)->Arg(40)->Unit(benchmark::kMicrosecond);
BENCHMARK(commentsStepByStep)->Arg(10)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
