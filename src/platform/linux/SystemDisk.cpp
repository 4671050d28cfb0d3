#include "platform/SystemDisk.h"

#include <sys/statvfs.h>

namespace platform {

std::optional<DiskSpace> querySystemDisk()
{
    struct statvfs volume
    { };
    if (::statvfs("/", &volume) != 0) {
        return std::nullopt;
    }
    const std::uint64_t blockSize = volume.f_frsize != 0 ? volume.f_frsize : volume.f_bsize;
    DiskSpace space;
    space.totalBytes = volume.f_blocks * blockSize;
    space.freeBytes = volume.f_bfree * blockSize;
    return space;
}

std::string systemDiskName()
{
    return "/";
}

} // namespace platform
