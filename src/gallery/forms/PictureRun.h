#pragma once

#include "browser/forms/PageCamera.h"
#include "gallery/forms/ThemePages.h"

#include <QEventLoop>
#include <QThreadPool>

#include <memory>
#include <optional>
#include <vector>

namespace quillmere {

// One page of a run.
struct PictureJob
{
    QString page; // empty: nothing is drawn, and the picture is null
    // What becomes of the picture, on another thread. What it gives is called in the thread of the run, in
    // the order of the jobs.
    std::function<std::function<void()>(const QImage &picture)> work;
};

// Draws many pages with a few cameras at once, while other threads work on the pictures drawn before. Only a
// few jobs are in hand at any time, however many there are.
class PictureRun
{
public:
    // These pages are `size` pixels, drawn by so many cameras.
    PictureRun(const QString &themeFolder, QSize size, const ThemePages &pages, int cameras = 1);
    ~PictureRun();

    // Asks for the next job until there is none, and returns when all is done. Events are handled meanwhile.
    void run(const std::function<std::optional<PictureJob>()> &next);

private:
    struct InHand
    {
        bool isDone = false;
        std::function<void()> then;
    };

    void feed();
    void begin(const PictureJob &job);
    void finish(qint64 number, const std::function<void()> &then);

    std::vector<std::unique_ptr<PageCamera>> m_cameras;
    std::vector<int> m_loads; // of the cameras: pages asked for
    std::function<std::optional<PictureJob>()> m_next;
    std::deque<InHand> m_inHand;
    qint64 m_first = 0; // number of the first in hand
    bool m_isFinishing = false;
    QObject m_thread; // what is called in this thread goes through it
    QEventLoop m_loop;
    QThreadPool m_workers;
};

} // namespace quillmere
