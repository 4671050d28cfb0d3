#include "platform/RecycleBin.h"

#include "platform/linux/MountInfo.h"
#include "platform/linux/Trash.h"

#include <fstream>
#include <iterator>
#include <string>

namespace platform {

bool emptyRecycleBin()
{
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const auto mountPoints = mounts::parse(text);
    return trash::empty(trash::inHome(), {mountPoints.begin(), mountPoints.end()});
}

} // namespace platform
