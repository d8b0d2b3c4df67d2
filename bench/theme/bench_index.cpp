// bench_index THEME: how long the index of a theme takes to make, and what it answers in what time. Prints a
// line each; the theme is one that make_theme made.

#include "files/Files.h"
#include "files/Paths.h"
#include "files/TextFile.h"
#include "naming/TextSearch.h"
#include "theme/ThemeEdit.h"
#include "theme/ThemeIndex.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace quillmere;

namespace {

// The quickest and the middle of so many runs, and the middle of the processor's time, all threads together.
template <typename Work>
void measure(const char *what, int runs, Work work)
{
    std::vector<double> times, processor;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t before = std::clock();
        work(run);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
        processor.push_back(double(std::clock() - before) * 1e3 / CLOCKS_PER_SEC);
    }
    std::sort(times.begin(), times.end());
    std::sort(processor.begin(), processor.end());
    std::printf("%-44s %9.3f ms at best, %9.3f ms in the middle, %9.3f ms of the processor\n", what,
                times.front(), times[times.size() / 2], processor[processor.size() / 2]);
}

long residentKilobytes()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    ThemeSources sources;
    sources.folder = QFile::decodeName(argv[1]);
    const long before = residentKilobytes();
    std::optional<ThemeIndex> index = ThemeIndex::build(sources);
    std::printf("files %lld, memory %ld KB\n", static_cast<long long>(index->files().size()),
                residentKilobytes() - before);
    measure("build", 9, [&](int) { index = ThemeIndex::build(sources); });

    const QString path = joinPath(sources.folder, u"widget/wnd_0001.xml");
    const QString large = joinPath(sources.folder, u"widget/wnd_large.xml");
    QString text = LoadFile(path);
    measure("a window of 20 blocks brought up to date", 200, [&](int run) {
        index->update(path,
                      QString(text).replace(QStringLiteral("img_"), QStringLiteral("im%1_").arg(run % 7)));
    });
    QString blocks = LoadFile(large);
    measure("a window of 10,000 blocks", 20, [&](int run) {
        index->update(large, QString(blocks).replace(QStringLiteral("img_1"), QString::number(run)));
    });
    const ThemeIndex copy = *index;
    measure("the first one after a copy", 1, [&](int) { index->update(path, text); });
    qsizetype found = 0;
    measure("uses and definitions of 1,000 images", 20, [&](int) {
        for (int i = 0; i < 1000; ++i) {
            const QString name = QStringLiteral("img_%1").arg(i * 20, 5, 10, QLatin1Char('0'));
            found +=
                index->uses(NameKind::Image, name).size() + index->definitions(NameKind::Image, name).size();
        }
    });
    measure("images that hold \"9\"", 20,
            [&](int) { found += index->matching(NameKind::Image, u"9").size(); });
    measure("all images", 20, [&](int) { found += index->names(NameKind::Image).size(); });

    // Written and taken back again, so that the theme stays what it is.
    const QTemporaryDir backups;
    Files door;
    door.backups().setFolder(backups.path());
    const EditTargets targets = {door, sources.folder, {}, {}};
    ThemeEdit edit;
    for (int i = 1; i <= 500; ++i) {
        const QString window =
            joinPath(sources.folder, QStringLiteral("widget/wnd_%1.xml").arg(i, 4, 10, QLatin1Char('0')));
        const QString written = LoadFile(window);
        const qint32 at = qint32(written.indexOf(u"img_"));
        if (at >= 0)
            edit.replace(window, written, {at, at + 9}, QStringLiteral("img_renamed"));
    }
    std::printf("files of the edit %lld\n", static_cast<long long>(edit.paths().size()));
    // Now these windows share an image, and it is renamed.
    const ThemeEdit original = edit.apply(targets);
    index = ThemeIndex::build(sources);
    const NamedThing image = {NameKind::Image, QStringLiteral("img_renamed")};
    FoundPlaces places;
    measure("all places of an image of these windows", 5,
            [&](int) { places = placesOf(image, *index, sources, {}); });
    const QList<bool> all(places.places.size(), true);
    for (int run = 0; run < 3; ++run) {
        ThemeEdit inverse;
        measure("it is renamed", 1, [&](int) {
            inverse = editOf(places, all, QStringLiteral("img_renamed_again")).apply(targets);
        });
        measure("taken back", 1, [&](int) { inverse.apply(targets); });
    }
    measure("a text searched in all windows", 5,
            [&](int) { found += searchTexts({QStringLiteral("IMG_00")}, *index, sources)->places.size(); });
    original.apply(targets);
    return found > 0 && copy.files().size() > 0 ? 0 : 1;
}
