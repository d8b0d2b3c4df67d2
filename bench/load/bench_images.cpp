// The Image tab on a theme of make_theme with its 20,000 images, in the real window: scrolling by pages and
// filtering, as a list and as a grid. "work" is what the window's thread does until all is painted,
// thumbnails apart, which are made beside it; "wait" is the longest part of it that the next key would have
// to wait for. Both are processor time, which says something on a busy machine, too.
//
//   QT_QPA_PLATFORM=offscreen bench_images THEME

#include "BenchWindow.h"
#include "Measured.h"

#include <QAbstractItemView>
#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTextStream>

#include <algorithm>

using namespace quillmere;

namespace {

constexpr int kPages = 400;
constexpr int kRounds = 10;
constexpr int kImageTab = 2;

void settle(int rounds)
{
    for (int i = 0; i < rounds; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

struct Step
{
    double work = 0, wait = 0; // ms
};

// Does it, then all that it leads to at once, up to the painted view.
template <typename Do>
Step measured(TimedApplication &app, QAbstractItemView &view, Do what)
{
    app.takeMost();
    const double before = workOfThread();
    what();
    const double first = workOfThread() - before;
    QApplication::processEvents();
    const double painting = workOfThread();
    view.viewport()->repaint();
    const double after = workOfThread();
    return {after - before, std::max({first, app.takeMost(), after - painting})};
}

QString spread(const QList<Step> &steps, double Step::*part)
{
    QList<double> milliseconds;
    for (const Step &step : steps)
        milliseconds.append(step.*part);
    std::ranges::sort(milliseconds);
    return quillmere::spread(milliseconds) +
           QStringLiteral(", most %1 ms").arg(milliseconds.last(), 6, 'f', 1);
}

void print(QTextStream &out, const QString &what, const QList<Step> &steps)
{
    out << what.leftJustified(24) << " work " << spread(steps, &Step::work) << "\n"
        << QString().leftJustified(24) << " wait " << spread(steps, &Step::wait) << Qt::endl;
}

void scroll(TimedApplication &app, QTextStream &out, const QString &what, QAbstractItemView &view)
{
    QScrollBar *bar = view.verticalScrollBar();
    QList<Step> steps;
    for (int page = 0; page < kPages; ++page) {
        steps.append(measured(app, view, [&] { bar->setValue(bar->maximum() * page / kPages); }));
        settle(page % 4 == 0); // some pictures are made on the way
    }
    print(out, what, steps);
}

void filter(TimedApplication &app, QTextStream &out, const QString &what, QAbstractItemView &view,
            QLineEdit &line)
{
    QList<Step> keys;
    const auto press = [&](int code, const QString &text) {
        QKeyEvent key(QEvent::KeyPress, code, {}, text);
        keys.append(measured(app, view, [&] { QApplication::sendEvent(&line, &key); }));
        settle(2);
    };
    for (int round = 0; round < kRounds; ++round) {
        const QString typed = QString::number(1234 + round * 777);
        for (const QChar letter : typed)
            press(letter.unicode(), letter);
        for (qsizetype i = 0; i < typed.size(); ++i)
            press(Qt::Key_Backspace, QString(u'\b'));
    }
    print(out, what, keys);
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    TimedApplication app(argc, argv);
    if (argc < 2)
        qFatal("bench_images THEME");
    const BenchWindow window(folder);
    window.skin().openTheme(QString::fromLocal8Bit(argv[1]));
    window.find<QTabBar>("TabStrip4")->setCurrentIndex(kImageTab);
    auto *list = window.find<QAbstractItemView>("lvImage");
    settle(50);
    QTextStream out(stdout);
    out << list->model()->rowCount() << " images" << Qt::endl;

    window.find<QAction>("mnuImgThumbnails")->trigger();
    scroll(app, out, QStringLiteral("no thumbnails, a page"), *list);
    window.find<QAction>("mnuImgThumbnails")->trigger();
    scroll(app, out, QStringLiteral("list, a page"), *list);
    list->setFocus();
    window.find<QAction>("mnuFind")->trigger();
    auto *line = window.find<QLineEdit>("txtFilterlvImage");
    filter(app, out, QStringLiteral("list, a key of a filter"), *list, *line);
    window.find<QAction>("mnuImgGrid")->trigger();
    auto *grid = window.find<QAbstractItemView>("gridlvImage");
    settle(20);
    scroll(app, out, QStringLiteral("grid, a page"), *grid);
    filter(app, out, QStringLiteral("grid, a key of a filter"), *grid, *line);
    out << "memory " << statusMegabytes("VmRSS:") << " MB" << Qt::endl;
    return 0;
}
