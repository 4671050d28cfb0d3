#include "platform/SystemMemory.h"

#include <algorithm>
#include <windows.h>

namespace platform {

std::optional<MemoryStatus> queryMemory()
{
    MEMORYSTATUSEX reading{};
    reading.dwLength = sizeof(reading);
    if (GlobalMemoryStatusEx(&reading) == 0) {
        return std::nullopt;
    }
    MemoryStatus status;
    status.totalBytes = reading.ullTotalPhys;
    status.availableBytes = std::min(reading.ullAvailPhys, reading.ullTotalPhys);
    status.loadPercent = std::min<unsigned>(reading.dwMemoryLoad, 100);
    return status;
}

} // namespace platform
