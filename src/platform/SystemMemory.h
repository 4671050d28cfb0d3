// Physical memory of the machine.
// Thread: any. Cost: one system call or one small file.
#pragma once

#include <cstdint>
#include <optional>

namespace platform {

struct MemoryStatus
{
    std::uint64_t totalBytes = 0; // physical memory that the system can use
    std::uint64_t availableBytes =
        0; // what could be handed out without swapping; never above totalBytes
    unsigned loadPercent = 0; // share in use, rounded down, 0 to 100
};

// The state right now; the first call is as good as any. Empty when the system does not tell.
std::optional<MemoryStatus> queryMemory();

} // namespace platform
