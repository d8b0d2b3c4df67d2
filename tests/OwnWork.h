#pragma once

#include <ctime>

// The processor time this thread has had, ms: what others do on the machine does not count.
inline double ownWork()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}
