// Opens a theme in the real window and prints when the overview has its first picture and those of a first
// screen, counted from the start of the opening; then goes down through all windows of the theme, a screen at
// a time, each when the pictures of the one before are there, and prints what that takes: the longest event
// of the window's thread, in its processor time, and the memory of the program, without the browser's
// processes.
//
//   QT_QPA_PLATFORM=offscreen bench_overview THEME

#include "BenchWindow.h"
#include "Measured.h"

#include "gallery/forms/OverviewRows.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QListView>
#include <QScrollBar>
#include <QTextStream>
#include <QTimer>

using namespace quillmere;

namespace {

constexpr int kMostWait = 60000; // ms

class WatchedOverview
{
public:
    explicit WatchedOverview(const QListView &list)
        : m_list(list), m_rows(static_cast<const OverviewRows &>(*list.model()))
    {
    }

    // Of the windows in view, as far as there is something to draw.
    bool hasPictures(int atLeast) const
    {
        int ready = 0, seen = 0;
        for (int row = 0; row < m_list.model()->rowCount(); ++row) {
            const QModelIndex index = m_list.model()->index(row, 0);
            if (!m_list.viewport()->rect().intersects(m_list.visualRect(index)))
                continue;
            ++seen;
            ready += m_rows.window(m_rows.numberAt(index)).look != OverviewRows::Look::Waiting;
        }
        return seen > 0 && ready >= std::min(atLeast, seen);
    }
    // Looks only when something has changed: what looking costs is not the overview's.
    void waitFor(int pictures) const
    {
        QEventLoop loop;
        const auto look = [&] {
            if (hasPictures(pictures))
                loop.quit();
        };
        QObject::connect(&m_rows, &QAbstractItemModel::dataChanged, &loop, look);
        QTimer::singleShot(kMostWait, &loop, [] { qFatal("The pictures do not come"); });
        QTimer::singleShot(0, &loop, look);
        loop.exec();
    }

private:
    const QListView &m_list;
    const OverviewRows &m_rows;
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    TimedApplication app(argc, argv);
    QTextStream out(stdout);
    if (argc < 2)
        qFatal("Which theme?");
    const BenchWindow window(folder);
    QApplication::processEvents();

    QElapsedTimer clock;
    clock.start();
    window.skin().openTheme(QString::fromLocal8Bit(argv[1]));
    out << "theme open after " << clock.elapsed() << " ms" << Qt::endl;
    QListView &list = *window.find<QListView>("lvOverview");
    const WatchedOverview overview(list);
    overview.waitFor(1);
    out << "first picture after " << clock.elapsed() << " ms" << Qt::endl;
    overview.waitFor(kMostWait);
    out << "first screen after " << clock.elapsed() << " ms" << Qt::endl;

    app.takeMost();
    QScrollBar &bar = *list.verticalScrollBar();
    while (bar.value() < bar.maximum()) {
        bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
        QApplication::processEvents();
        overview.waitFor(kMostWait);
    }
    out << list.model()->rowCount() << " windows seen after " << clock.elapsed() << " ms, longest event "
        << app.takeMost() << " ms, " << statusMegabytes("VmRSS:") << " MB resident, "
        << statusMegabytes("VmHWM:") << " MB at most" << Qt::endl;
    return 0;
}
