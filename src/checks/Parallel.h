#pragma once

#include <QThread>

#include <algorithm>
#include <atomic>
#include <stop_token>
#include <thread>
#include <vector>

namespace quillmere {

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
