// Time since the machine started.
#pragma once

#include <cstdint>

namespace platform {

// Milliseconds since the system booted, sleep included; never runs backwards. 0 on failure. Thread: any.
std::uint64_t tickCountMilliseconds();

} // namespace platform
