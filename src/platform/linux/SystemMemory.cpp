#include "platform/SystemMemory.h"

#include "platform/linux/MemInfo.h"
#include "platform/linux/ProcFile.h"

#include <array>
#include <fcntl.h>

namespace platform {

std::optional<MemoryStatus> queryMemory()
{
    std::array<char, 4096> buffer{};
    const FileDescriptor file = openForReading(AT_FDCWD, "/proc/meminfo");
    return meminfo::parse(readStart(file, buffer));
}

} // namespace platform
