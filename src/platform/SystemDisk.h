// The disk that the system lives on.
// Thread: any.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

struct DiskSpace
{
    std::uint64_t totalBytes = 0; // as available to this user (quotas count); 0 for an odd volume
    std::uint64_t freeBytes = 0; // free on the volume, whoever may use it
};

// The state right now. Empty when the volume cannot be asked.
std::optional<DiskSpace> querySystemDisk();

// How the user knows that volume: "C:" or "/". UTF-8.
std::string systemDiskName();

} // namespace platform
