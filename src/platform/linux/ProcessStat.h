// Reading of /proc/<pid>/stat, /proc/<pid>/io and /proc/stat, apart from fetching them.
#pragma once

#include "platform/SystemTimes.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::procstat {

struct ProcessStat
{
    std::string_view
        command; // lies in the text; the kernel writes newline and backslash as \n and two backslashes
    char state = '?';
    std::uint64_t flags = 0;
    std::uint64_t userTicks = 0;
    std::uint64_t systemTicks = 0;
    std::uint64_t startTicks = 0; // after boot
    std::uint64_t residentPages = 0; // 0 for kernel threads and what has ended

    bool isKernelThread() const;
    bool hasEnded() const { return state == 'Z' || state == 'X' || state == 'x'; }
};

// One line of /proc/<pid>/stat. The command is all between the first bracket and the last, whatever it holds. Empty when a
// field that is needed is missing or no number.
std::optional<ProcessStat> parseProcess(std::string_view text);

// The bytes that a process had fetched from storage and sent there, from /proc/<pid>/io: read_bytes + write_bytes. Empty
// when one is missing or no number.
std::optional<std::uint64_t> parseTransfer(std::string_view text);

// The first line of /proc/stat, of which the tick is 1/`ticksPerSecond` s. Waiting for storage counts as idle; time stolen by
// other virtual machines as kernel time. Empty when it is not that line or `ticksPerSecond` is 0.
std::optional<SystemTimes> parseSystem(std::string_view text, std::uint64_t ticksPerSecond);

// In units of 100 ns; 0 when `ticksPerSecond` is 0.
std::uint64_t ticksToFileTime(std::uint64_t ticks, std::uint64_t ticksPerSecond);

} // namespace platform::procstat
