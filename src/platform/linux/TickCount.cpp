#include "platform/TickCount.h"

#include <ctime>

namespace platform {

std::uint64_t tickCountMilliseconds()
{
    constexpr std::uint64_t kMillisecondsPerSecond = 1000;
    constexpr std::uint64_t kNanosecondsPerMillisecond = 1'000'000;
    struct timespec now
    { };
    if (::clock_gettime(CLOCK_BOOTTIME, &now) != 0) {
        return 0;
    }
    return static_cast<std::uint64_t>(now.tv_sec) * kMillisecondsPerSecond
        + static_cast<std::uint64_t>(now.tv_nsec) / kNanosecondsPerMillisecond;
}

} // namespace platform
