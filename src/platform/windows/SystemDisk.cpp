#include "platform/SystemDisk.h"

#include <windows.h>

namespace platform {

std::optional<DiskSpace> querySystemDisk()
{
    ULARGE_INTEGER freeToCaller{};
    ULARGE_INTEGER total{};
    ULARGE_INTEGER totalFree{};
    if (GetDiskFreeSpaceExW(L"C:\\", &freeToCaller, &total, &totalFree) == 0) {
        return std::nullopt;
    }
    DiskSpace space;
    space.totalBytes = total.QuadPart;
    space.freeBytes = totalFree.QuadPart;
    return space;
}

std::string systemDiskName()
{
    return "C:";
}

} // namespace platform
