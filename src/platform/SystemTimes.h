// What the processors of the machine did since it started.
// Thread: any. Cost: one system call or one small file.
#pragma once

#include <cstdint>
#include <optional>

namespace platform {

// Sums over all processors, in units of 100 ns. Each may stand still or run backwards a little between two calls.
struct SystemTimes
{
    std::uint64_t idle = 0;
    std::uint64_t kernel = 0; // idle included
    std::uint64_t user = 0;
};

// The counts right now; a load is the difference of two readings. Empty when the system does not tell.
std::optional<SystemTimes> querySystemTimes();

} // namespace platform
