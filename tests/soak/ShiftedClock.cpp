#include "soak/ShiftedClock.h"

#include <atomic>
#include <ctime>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

std::atomic<std::int64_t> shift = 0; // s

// Straight from the kernel: the library's function is this file's.
int read(clockid_t clock, struct timespec *time)
{
    return static_cast<int>(::syscall(SYS_clock_gettime, clock, time)); // NOLINT(*-vararg)
}

struct timespec wallClock()
{
    struct timespec time
    { };
    read(CLOCK_REALTIME, &time);
    time.tv_sec += shift.load(std::memory_order_relaxed);
    return time;
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the headers' own names are reserved ones
extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock,
                                                         struct timespec *time) noexcept
{
    if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) {
        *time = wallClock();
        return 0;
    }
    return read(clock, time);
}

__attribute__((visibility("default"))) int gettimeofday(struct timeval *time,
                                                        void * /*zone*/) noexcept
{
    constexpr long kNanosecondsPerMicrosecond = 1000;
    const struct timespec now = wallClock();
    time->tv_sec = now.tv_sec;
    time->tv_usec = now.tv_nsec / kNanosecondsPerMicrosecond;
    return 0;
}

__attribute__((visibility("default"))) time_t time(time_t *result) noexcept
{
    const time_t now = wallClock().tv_sec;
    if (result != nullptr) {
        *result = now;
    }
    return now;
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

void shiftedclock::setShift(std::chrono::seconds ahead)
{
    shift = ahead.count();
}

std::chrono::system_clock::time_point shiftedclock::now()
{
    const struct timespec time = wallClock();
    const auto sinceEpoch =
        std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}
