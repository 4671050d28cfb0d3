// Processor time that the benchmarks measure by: what else the machine does counts less than on a wall clock.
#pragma once

#include <ctime>

inline double cpuMilliseconds(clockid_t clock = CLOCK_PROCESS_CPUTIME_ID)
{
    struct timespec now
    { };
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}
