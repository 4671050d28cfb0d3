// What the machine is made of, where the platform tells it without PowerShell.
#pragma once

#include <string>

namespace platform {

// Every text is UTF-8, one line, and what the management queries of Windows would print: numbers are bare decimals,
// sizes are in bytes, the clocks in MHz and million transfers a second. Empty: not known, or not without special rights.
struct HardwareInventory
{
    // The first processor, all of its cores included.
    std::string processorName;
    std::string processorManufacturer;
    std::string processorCores;
    std::string processorThreads;
    std::string processorMaxClock; // MHz

    // The graphics adapter that the machine starts with.
    std::string graphicsName;
    std::string graphicsMemory; // bytes of its own
    std::string graphicsDriver; // name and version

    std::string memoryTotal; // bytes
    std::string memoryAvailable; // bytes

    // The first memory module.
    std::string memorySpeed; // million transfers a second
    std::string memoryType; // the SMBIOS code, 26 for DDR4

    std::string boardManufacturer;
    std::string boardProduct;
    std::string boardSerial;
};

// The state right now; nothing is kept between two calls. Empty throughout where PowerShell is the only source.
// Thread: any. Reads some dozens of small files, starts no program and waits for no device: a few milliseconds.
HardwareInventory queryHardware();

// The name of the kind of operating system ("Linux"), where the toolkit has none for it; else empty.
std::string operatingSystemType();

} // namespace platform
