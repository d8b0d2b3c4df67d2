// The scans for names in use, over a theme that is made on disk for them. To compare with grep, keep the
// theme and let it look for the same names in the same files (to a pipe: into /dev/null it stops at the first
// match):
//
//   SCAN_FOLDER=DIR bench_scan --benchmark_filter='scanTheme/200$'
//   time grep -ioFf DIR/names.txt DIR/*.xml | tail -1      and once more with LC_ALL=C before grep

#include "catalogues/LiteralScan.h"
#include "catalogues/UsageScan.h"
#include "files/TextFile.h"
#include "rows/ListRows.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace quillmere;

namespace {

constexpr int kImages = 2000;
constexpr int kColours = 200;
constexpr qsizetype kDocumentSize = 40 * 1024; // bytes

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

// Windows on disk whose blocks show the first half of the images and colours.
class GeneratedTheme
{
public:
    explicit GeneratedTheme(int windowCount)
    {
        const QString kept = qEnvironmentVariable("SCAN_FOLDER");
        const QString folder = kept.isEmpty() ? m_folder.path() : kept;
        QDir().mkpath(folder);
        static const char *const kinds[] = {"icon", "Panel", "button_focus", "ARROW"};
        for (int i = 0; i < kImages; ++i)
            images.append(QStringLiteral("IMG_%1_%2").arg(QLatin1String(kinds[i % 4])).arg(i));
        for (int i = 0; i < kColours; ++i)
            colours.append(QStringLiteral("Colour_%1_%2").arg(QLatin1String(kinds[i % 4])).arg(i));
        for (const QString &id : images)
            lvImage.add({}, {id});
        for (const QString &name : colours)
            lvColor.add({}, {name});
        write(folder + u"/names.txt", QStringList(images + colours).join(u'\n').toLatin1() + '\n');
        for (int i = 0; i < windowCount; ++i) {
            LvWidget.add(folder + QStringLiteral("/wnd_%1.xml").arg(i));
            write(LvWidget.text(i), document());
        }
    }

    QStringList images, colours;
    ListRows LvWidget{{QString()}, ListRows::Checks::Yes};
    ListRows lvImage{{QString()}, ListRows::Checks::Yes};
    ListRows lvColor{{QString()}, ListRows::Checks::Yes};

private:
    QByteArray document()
    {
        const auto number = [this](int most) { return QByteArray::number(m_random.bounded(most)); };
        const auto one = [this](const QStringList &names) {
            return names[m_random.bounded(names.size() / 2)].toLatin1();
        };
        QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<interface>\r\n";
        while (text.size() < kDocumentSize)
            text += "<widget class=\"image\" style=\"default\" name=\"block_" + number(9999) +
                    "\">\r\n     <property>\r\n     <rect>[" + number(1280) + "," + number(720) + "," +
                    number(400) + "," + number(300) + "]</rect>\r\n     <img>" + one(images) +
                    "</img>\r\n     <backcolor>[" + one(colours) + "," + one(colours) + "," + one(colours) +
                    "]</backcolor>\r\n     <string>ID_" + number(999) +
                    "</string>\r\n     </property>\r\n</widget>\r\n";
        return text + "</interface>\r\n";
    }

    QTemporaryDir m_folder;
    QRandomGenerator m_random{7};
};

void expectHalfUsed(benchmark::State &state, const QList<bool> &used)
{
    if (state.range(0) >= 200 && used.count(true) != (kImages + kColours) / 2)
        state.SkipWithError("not the names that are used");
}

void scanTheme(benchmark::State &state)
{
    GeneratedTheme theme(int(state.range(0)));
    for (auto _ : state)
        scanWindows(theme.LvWidget, theme.lvImage, theme.lvColor, [](int, int) {});
    QList<bool> used;
    for (const ListRows *rows : {&theme.lvImage, &theme.lvColor}) {
        for (const ListRows::Row &row : rows->rows())
            used.append(row.checked);
    }
    expectHalfUsed(state, used);
}
BENCHMARK(scanTheme)->Arg(100)->Arg(200)->Arg(400)->Unit(benchmark::kMillisecond);

void scanThemeLiterally(benchmark::State &state)
{
    const GeneratedTheme theme(int(state.range(0)));
    QList<bool> used;
    for (auto _ : state) {
        QStringList documents;
        for (const ListRows::Row &window : theme.LvWidget.rows())
            documents.append(LoadFile(window.text));
        used = literal::scan(documents, theme.images, theme.colours);
    }
    expectHalfUsed(state, used);
}
BENCHMARK(scanThemeLiterally)->Arg(200)->Unit(benchmark::kMillisecond)->Iterations(1);

// A clipboard of as many bytes as the argument says.
QString clipboard(qint64 size)
{
    QString text;
    for (qint64 i = 0; text.size() < size; ++i)
        text += QStringLiteral("load resource img_icon_%1 into slot %2\n").arg(i % 900).arg(i);
    return text;
}

void checkNamesInText(benchmark::State &state)
{
    GeneratedTheme theme(0);
    const QString text = clipboard(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(checkNamesIn(text, {&theme.lvImage}));
}
BENCHMARK(checkNamesInText)->Arg(1 << 20)->Arg(1 << 21)->Unit(benchmark::kMillisecond);

void checkNamesInTextLiterally(benchmark::State &state)
{
    const GeneratedTheme theme(0);
    const QString text = clipboard(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(literal::namesIn(text, theme.images));
}
BENCHMARK(checkNamesInTextLiterally)->Arg(1 << 20)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

BENCHMARK_MAIN();
