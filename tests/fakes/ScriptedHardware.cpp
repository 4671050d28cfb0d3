#include "fakes/ScriptedHardware.h"

namespace fakes {

ScriptedHardware &scriptedHardware()
{
    static ScriptedHardware instance;
    return instance;
}

} // namespace fakes

namespace platform {

HardwareInventory queryHardware()
{
    ++fakes::scriptedHardware().queries;
    if (fakes::scriptedHardware().onQuery) {
        fakes::scriptedHardware().onQuery();
    }
    return fakes::scriptedHardware().inventory;
}

std::string operatingSystemType()
{
    return fakes::scriptedHardware().systemType;
}

} // namespace platform
