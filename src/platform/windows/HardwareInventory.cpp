#include "platform/HardwareInventory.h"

namespace platform {

// PowerShell, which every Windows has, is the one source here.
HardwareInventory queryHardware()
{
    return {};
}

std::string operatingSystemType()
{
    return {};
}

} // namespace platform
