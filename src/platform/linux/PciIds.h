// Reading of texts about PCI devices: what the kernel calls them, the public list of their names, their address ranges.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::pci {

struct DeviceId
{
    unsigned vendor = 0; // both have 16 bits
    unsigned device = 0;
};

// From the text of a device's `uevent` file ("PCI_ID=8086:9BC4"); empty when it tells none, or no such numbers.
std::optional<DeviceId> idIn(std::string_view uevent);

// From the text that a driver of NVIDIA's gives of an adapter ("Model: NAME"); empty when it tells none.
std::string modelIn(std::string_view information);

// "VENDOR DEVICE" from the text of pci.ids; only "VENDOR" where the device is not listed; empty where neither is.
std::string nameOf(std::string_view ids, unsigned vendor, unsigned device);

// From the text of a device's `resource` file: the size in bytes of the largest range of memory that may be read ahead,
// which is where emulated adapters keep their picture; 0 when there is none.
unsigned long long largestPrefetchable(std::string_view resource);

} // namespace platform::pci
