// What a key takes in quick open, from the press until the list is drawn, with a theme of make_theme open:
// words are typed letter by letter, so that first letters, which fit most entries, count as well. And what it
// takes until it stands there.
//
//   QT_QPA_PLATFORM=offscreen bench_quick THEME

#include "BenchWindow.h"

#include <QAbstractItemView>
#include <QAction>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTextStream>

using namespace quillmere;

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    const QApplication app(argc, argv);
    QTextStream out(stdout);
    if (argc < 2)
        qFatal("Which theme?");
    const BenchWindow window(folder);
    window.skin().openTheme(QString::fromLocal8Bit(argv[1]));
    QList<double> opening, keys;
    const auto time = [&](QList<double> &times, const std::function<void()> &work) {
        QElapsedTimer clock;
        clock.start();
        work();
        QApplication::processEvents();
        times.append(double(clock.nsecsElapsed()) / 1e6);
    };
    const auto open = [&] { window.find<QAction>("mnuQuickOpen")->trigger(); };
    const auto isKnown = [&] {
        open();
        auto *line = window.find<QLineEdit>("txtQuickOpen");
        line->setText(QStringLiteral("img_199"));
        return window.find<QAbstractItemView>("lvQuickOpen")->model()->rowCount() > 0;
    };
    QElapsedTimer patience;
    patience.start();
    while (!isKnown()) { // until the index is there
        if (patience.elapsed() > 60000)
            qFatal("The names do not come");
        QApplication::processEvents(QEventLoop::AllEvents, 100);
    }
    for (int round = 0; round < 10; ++round) {
        time(opening, open);
        auto *line = window.find<QLineEdit>("txtQuickOpen");
        for (const char *word : {"image 19", "wnd0042", "text of", "c199"}) {
            line->clear();
            for (const char *letter = word; *letter; ++letter)
                time(keys, [&] { line->insert(QString(QLatin1Char(*letter))); });
        }
    }
    out << "opens after " << spread(opening) << "\na key takes " << spread(keys) << Qt::endl;
    return 0;
}
