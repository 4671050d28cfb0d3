// Reading of texts about PCI devices: the public list of their names, and a device's address ranges.
#pragma once

#include <string>
#include <string_view>

namespace platform::pci {

// "VENDOR DEVICE" from the text of pci.ids; only "VENDOR" where the device is not listed; empty where neither is.
std::string nameOf(std::string_view ids, unsigned vendor, unsigned device);

// From the text of a device's `resource` file: the size in bytes of the largest range of memory that may be read ahead,
// which is where emulated adapters keep their picture; 0 when there is none.
unsigned long long largestPrefetchable(std::string_view resource);

} // namespace platform::pci
