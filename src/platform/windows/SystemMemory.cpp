#include "platform/SystemMemory.h"

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
    status.availableBytes = reading.ullAvailPhys;
    status.loadPercent = reading.dwMemoryLoad;
    return status;
}

} // namespace platform
