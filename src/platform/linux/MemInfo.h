// Reading of /proc/meminfo, apart from fetching it.
#pragma once

#include "platform/SystemMemory.h"

#include <optional>
#include <string_view>

namespace platform::meminfo {

// Takes MemTotal and MemAvailable (kernels before 3.14: MemFree + Buffers + Cached). Values are in KiB.
// Empty when the total is missing, zero or not a number. Unknown, repeated or cut lines are passed over.
std::optional<MemoryStatus> parse(std::string_view text);

} // namespace platform::meminfo
