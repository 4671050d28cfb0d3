// A machine that is made of what the test wrote into it. Linking `veltra_scripted_hardware` puts it in the real one's
// place; independent of `veltra_scripted_platform`.
#pragma once

#include "platform/HardwareInventory.h"

#include <functional>
#include <string>

namespace fakes {

struct ScriptedHardware
{
    platform::HardwareInventory inventory;
    std::string systemType = "Testix";
    int queries = 0;
    std::function<void()> onQuery; // called within each of them
};

// The one instance; assign a fresh one to start over.
ScriptedHardware &scriptedHardware();

} // namespace fakes
