#pragma once

#include <QApplication>
#include <QFile>

#include <algorithm>
#include <ctime>
#include <utility>

namespace quillmere {

// A line of /proc/self/status, in MB; 0 where the system has no such file.
inline double statusMegabytes(const char *line)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &text : file.readAll().split('\n')) {
        if (text.startsWith(line))
            return text.simplified().split(' ').value(1).toDouble() / 1024;
    }
    return 0;
}

// What this thread has worked so far, in ms: on a busy machine the rest of the time went to others. The clock
// of the scheduler is too coarse for single events.
inline double workOfThread()
{
    timespec worked{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
    return double(worked.tv_sec) * 1e3 + double(worked.tv_nsec) / 1e6;
}

// Notes the event that took most work since it was asked last: a key may have to wait for any of them.
class TimedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (m_depth > 0)
            return QApplication::notify(receiver, event);
        ++m_depth;
        const char *className = receiver->metaObject()->className(); // which may be gone afterwards
        const int type = event->type();
        const double before = workOfThread();
        const bool result = QApplication::notify(receiver, event);
        if (const double took = workOfThread() - before; took > m_most) {
            m_most = took;
            m_event = QByteArray(className) + ' ' + QByteArray::number(type);
        }
        --m_depth;
        return result;
    }
    double takeMost() { return std::exchange(m_most, 0); }
    // Whose event that was, and its type.
    QByteArray mostEvent() const { return m_event; }

private:
    int m_depth = 0;
    double m_most = 0; // ms
    QByteArray m_event;
};

struct Blocked
{
    double time = 0, work = 0; // ms, for one key
};

inline QString percentiles(const QList<Blocked> &keys, double Blocked::*part)
{
    QList<double> sorted;
    for (const Blocked &key : keys)
        sorted.append(key.*part);
    std::sort(sorted.begin(), sorted.end());
    const auto at = [&](double share) { return sorted[qsizetype(share * double(sorted.size() - 1))]; };
    return QStringLiteral("p50 %1 ms, p95 %2 ms, most %3 ms")
        .arg(at(0.5), 6, 'f', 1)
        .arg(at(0.95), 6, 'f', 1)
        .arg(sorted.last(), 6, 'f', 1);
}

} // namespace quillmere
