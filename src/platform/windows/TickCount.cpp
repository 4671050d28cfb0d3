#include "platform/TickCount.h"

#include <windows.h>

namespace platform {

std::uint64_t tickCountMilliseconds()
{
    return GetTickCount64();
}

} // namespace platform
