#pragma once

#include <QThread>

#include <algorithm>
#include <atomic>
#include <stop_token>
#include <thread>
#include <vector>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace quillmere {

// From now on the calling thread, and those that it starts, work when the window's own thread has no use for
// the processor.
inline void giveWay()
{
#ifdef Q_OS_LINUX
    constexpr int niceness = 10;
    setpriority(PRIO_PROCESS, id_t(gettid()), niceness); // of this thread alone
#endif
}

// Calls `work` with every number below `count`, on as many threads as there are processors, at most four,
// until it is told to stop. `work` must not throw.
template <typename Work>
void inParallel(qsizetype count, const std::stop_token &stop, Work work)
{
    constexpr int most = 4;
    std::atomic<qsizetype> next = 0;
    const auto run = [&] {
        for (qsizetype i = next++; i < count && !stop.stop_requested(); i = next++)
            work(i);
    };
    std::vector<std::jthread> others;
    for (int i = 1; i < std::clamp(QThread::idealThreadCount(), 1, most); ++i)
        others.emplace_back(run);
    run();
}

} // namespace quillmere
