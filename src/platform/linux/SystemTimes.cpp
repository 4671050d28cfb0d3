#include "platform/SystemTimes.h"

#include "platform/linux/ProcFile.h"
#include "platform/linux/ProcessStat.h"

#include <array>
#include <fcntl.h>

namespace platform {

std::optional<SystemTimes> querySystemTimes()
{
    // The first line is all that is wanted; the kernel writes no more than fits.
    std::array<char, 512> buffer{};
    const FileDescriptor file = openForReading(AT_FDCWD, "/proc/stat");
    return procstat::parseSystem(readStart(file, buffer), ticksPerSecond());
}

} // namespace platform
