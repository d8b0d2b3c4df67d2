#include "files/Files.h"
#include "files/Paths.h"
#include "theme/ThemeProject.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace quillmere;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

// A theme on disk in which every window and every picture that is listed exists.
class GeneratedTheme
{
public:
    GeneratedTheme(int windows, int images)
    {
        for (const char *sub : {"widget", "images/png"})
            QDir(folder()).mkpath(QLatin1String(sub));
        write(path("theme.xml"), "<config>\r\n<file_widget>widget/widget.xml</file_widget>\r\n"
                                 "<file_image>images/image.xml</file_image>\r\n</config>\r\n");
        QByteArray text = "<interface>\r\n<width>1280</width><height>720</height><bpp>32</bpp>\r\n";
        for (int i = 0; i < windows; ++i) {
            const QByteArray name = "window" + QByteArray::number(i);
            text += "<widget class=\"window\" style=\"default\" name=\"" + name + "\"/>\r\n";
            write(path("widget/" + name + ".xml"),
                  "<widget class=\"window\" name=\"" + name + "\"></widget>\r\n");
        }
        write(path("widget/widget.xml"), text + "</interface>\r\n");
        text = "<images>\r\n";
        for (int i = 0; i < images; ++i) {
            const QByteArray number = QByteArray::number(i);
            text += "<image id= \"IMG_" + number + "\" >png/picture" + number + ".png</image>\r\n";
            write(path("images/png/picture" + number + ".png"), {});
        }
        write(path("images/image.xml"), text + "</images>\r\n");
    }

    QString folder() const { return m_folder.path(); }
    QString path(const QByteArray &name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    QString imageFolder() const { return withOwnSeparators(path("images/")); }

private:
    QTemporaryDir m_folder;
};

void openTheme(benchmark::State &state)
{
    const GeneratedTheme theme(int(state.range(0)), int(state.range(1)));
    Files disk;
    ThemeProject project(disk);
    for (auto _ : state)
        project.LoadTheme(theme.folder());
    if (project.widgets.LvWidget.count() != state.range(0) || project.images.rows.count() != state.range(1))
        state.SkipWithError("the theme was not read");
}
BENCHMARK(openTheme)->Args({500, 5000})->Unit(benchmark::kMillisecond);

void loadImageList(benchmark::State &state)
{
    const GeneratedTheme theme(0, int(state.range(0)));
    FileList file1;
    Files disk;
    ImageCatalogue images;
    for (auto _ : state)
        images.LoadImageList(Document::open(disk, theme.path("images/image.xml")), theme.imageFolder(),
                             file1);
    if (images.rows.count() != state.range(0))
        state.SkipWithError("the catalogue was not read");
}
BENCHMARK(loadImageList)->Arg(10000)->Unit(benchmark::kMillisecond);

QList<ListRows::Row> generatedRows(qsizetype count)
{
    QList<ListRows::Row> rows;
    for (qsizetype i = 0; i < count; ++i)
        rows.append(
            {QStringLiteral("/theme/images/%1.png").arg(i), {QStringLiteral("IMG_%1").arg(i)}, false});
    return rows;
}

// The last row, which a walk through the rows reaches last.
void getImg(benchmark::State &state)
{
    ImageCatalogue images;
    images.rows.assign(generatedRows(state.range(0)));
    const QString id = QStringLiteral("IMG_%1").arg(state.range(0) - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(images.GetImg(id));
    if (images.GetImg(id).isEmpty())
        state.SkipWithError("the image was not found");
}
BENCHMARK(getImg)->Arg(100)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
