// What the index and the checks take of the window's thread on a theme of make_theme: the longest event from
// when the theme is open until all of it is checked, the Check tab in front, and those after keys in a window
// of the theme. Times are processor time of the thread, which says something on a busy machine, too. Then the
// work that a key leads to beside it: outline, index and marks of the window.
//
//   QT_QPA_PLATFORM=offscreen bench_checks THEME [BLOCKS]

#include "BenchWindow.h"
#include "Measured.h"

#include "app/ThemeChecks.h"
#include "files/Paths.h"
#include "source/forms/SourceBox.h"
#include "source/forms/SourceMarks.h"
#include "theme/forms/LiveIndex.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTabBar>
#include <QTextStream>

#include <algorithm>

using namespace quillmere;

namespace {

constexpr int kKeys = 40;

void waitUntil(const std::function<bool()> &condition)
{
    for (QElapsedTimer patience; !condition(); QApplication::processEvents(QEventLoop::AllEvents, 20)) {
        if (!patience.isValid())
            patience.start();
        if (patience.elapsed() > 60000)
            qFatal("It does not come to an end");
    }
}

void report(QTextStream &out, const char *what, TimedApplication &app)
{
    out << what << ": longest event " << QString::number(app.takeMost(), 'f', 1) << " ms (" << app.mostEvent()
        << ")\n";
    out.flush();
}

// The same steps as beside the window's thread, and the marks.
void reportWork(QTextStream &out, LiveIndex &live, LiveCheck &check, SourceBox &source, const QString &path)
{
    ThemeIndex index = *live.index();
    const IndexedFile file = index.files().at(index.numbersOf(path).value(0));
    QList<double> times;
    for (int key = 0; key < kKeys; ++key) {
        const QString text = source.text() + QString(key, u'x');
        const double before = workOfThread();
        const Outline outline(text);
        index.update(path, outline);
        const QList<Problem> problems = checkWindow(outline, file, index, {});
        QList<SourceMark> marks;
        for (const Problem &problem : problems)
            marks.append({problem.range.start, problem.range.size(), int(problem.severity())});
        source.marks().show(marks);
        times.append(workOfThread() - before);
    }
    std::ranges::sort(times);
    out << "outline, index and " << check.openProblems().size() << " marks after a key: p50 "
        << QString::number(times[times.size() / 2], 'f', 2) << " ms, p95 "
        << QString::number(times[times.size() * 95 / 100], 'f', 2) << " ms\n";
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    TimedApplication app(argc, argv);
    if (app.arguments().size() < 2)
        qFatal("bench_checks THEME [BLOCKS]");
    const BenchWindow window(folder);
    frmSkin &skin = window.skin();
    QTextStream out(stdout);
    auto *tabs = skin.findChild<QTabBar *>(QStringLiteral("TabStrip4"));
    auto &live = *skin.findChild<LiveIndex *>();
    auto &check = *skin.findChild<LiveCheck *>();

    skin.openTheme(app.arguments().at(1));
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20); // what opening leads to is not counted
    tabs->setCurrentIndex(9);
    app.takeMost(); // what came before does not count
    waitUntil([&] { return check.isReady(); });
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    out << check.problems()->size() << " problems\n";
    report(out, "index and checks", app);

    const QString path = joinPath(live.folder(), u"widget/wnd_0001.xml");
    skin.openDocument(path);
    auto *source = skin.findChild<SourceBox *>(QStringLiteral("txtSnippet"));
    tabs->setCurrentIndex(8);
    source->rewrite(
        windowOf(app.arguments().value(2, QStringLiteral("200")).toInt(), QStringLiteral("none")));
    source->setFocus();
    waitUntil([&] { return !check.isBehind() && source->marks().count() > 0; });
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 4000;)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    app.takeMost(); // what came before does not count
    QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    for (int i = 0; i < 3; ++i) {
        QApplication::sendEvent(source, &key);
        // The window is checked when typing pauses, the theme after that.
        for (clock.restart(); clock.elapsed() < 4000;)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    report(out, "a key, its page and what is checked after it", app);
    reportWork(out, live, check, *source, path);
}
