#include "markup/Matching.h"
#include "source/forms/SourceBox.h"
#include "widgets/BlockProperties.h"
#include "widgets/forms/PropertyEditors.h"
#include "widgets/forms/frmWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>

using namespace quillmere;

namespace {

constexpr int kBlocks = 2000;
constexpr int kPairs = 200;

// About 400 KB. The block named "last" has the most properties.
QString largeWindow()
{
    QString text;
    for (int i = 1; i <= kBlocks; ++i)
        text +=
            QStringLiteral("<widget class=\"text\" style=\"default\" name=\"%1\">\r\n<property>\r\n"
                           "     <string>STR_%2</string>\r\n     <rect>[%3,%2,320,30]</rect>\r\n"
                           "     <forecolor>[white,gray,gray]</forecolor>\r\n     <font>font_%2</font>\r\n"
                           "</property>\r\n</widget>\r\n")
                .arg(i < kBlocks ? QStringLiteral("label_%1").arg(i) : QStringLiteral("last"))
                .arg(i % 50)
                .arg(i);
    return text;
}

void cutProperties(benchmark::State &state)
{
    const QString source = largeWindow();
    for (auto _ : state)
        benchmark::DoNotOptimize(GetProperty(source, QStringLiteral("last")));
    state.counters["units"] = double(source.size());
}

void writeBack(benchmark::State &state)
{
    const QString source = largeWindow();
    const BlockProperties block = *GetProperty(source, QStringLiteral("last"));
    for (auto _ : state)
        benchmark::DoNotOptimize(SaveProperty(source, block.segment, block.rows));
}

// The first opening, with all the dialog's controls, until it is drawn.
void openDialog(benchmark::State &state)
{
    const ListRows names({QString(), QString()});
    QWidget window;
    SourceBox source(QStringLiteral("txtSnippet"), QString(), &window);
    source.setText(largeWindow());
    window.show();
    QApplication::processEvents();
    for (auto _ : state) {
        frmWidget dialog(source, {names, names, names}, window);
        dialog.turnTo(QStringLiteral("last"), QStringLiteral("text"));
        dialog.present(ModelessDialog::Keyboard::Leaves);
        QApplication::processEvents();
    }
}

// Pairs of which none occurs, or each at 4,000 places; one call for all of them, or one for each.
void replacePairs(benchmark::State &state)
{
    const QString source = largeWindow();
    QList<Replacement> pairs;
    for (int i = 0; i < kPairs; ++i) {
        const bool there = i % 2 == 0;
        const QString from = there ? QStringLiteral("gray") : QStringLiteral("slate");
        const QString to = there ? QStringLiteral("slate") : QStringLiteral("gray");
        pairs.append({state.range(0) ? from : QStringLiteral("lime"), to});
    }
    for (auto _ : state) {
        QString text = source;
        if (state.range(1)) {
            replaceAllIgnoringCase(text, pairs);
        } else {
            for (const Replacement &pair : std::as_const(pairs))
                replaceIgnoringCase(text, pair.from, pair.to);
        }
        benchmark::DoNotOptimize(text);
    }
}

} // namespace

BENCHMARK(cutProperties)->Unit(benchmark::kMillisecond);
BENCHMARK(writeBack)->Unit(benchmark::kMillisecond);
BENCHMARK(openDialog)->Unit(benchmark::kMillisecond);
BENCHMARK(replacePairs)
    ->ArgNames({"occurring", "atOnce"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const QApplication app(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
