#include "platform/SystemTimes.h"

#include "platform/FileTime.h"

#include <windows.h>

namespace platform {

std::optional<SystemTimes> querySystemTimes()
{
    FILETIME idle{};
    FILETIME kernel{};
    FILETIME user{};
    if (GetSystemTimes(&idle, &kernel, &user) == 0) {
        return std::nullopt;
    }
    return SystemTimes{joinFileTime(idle), joinFileTime(kernel), joinFileTime(user)};
}

} // namespace platform
