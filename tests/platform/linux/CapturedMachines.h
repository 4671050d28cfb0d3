// What the kernel says about several kinds of machines, in its own formats.
#pragma once

#include "platform/TestFiles.h"

#include <map>
#include <string>

namespace captured {

struct Machine
{
    std::map<std::string, std::string> files; // path below the root: content
    std::map<std::string, std::string> links; // path below the root: what it points to

    void writeTo(const testfiles::Path &root) const;
};

Machine laptop(); // two graphics adapters, memory modules known to the device manager
Machine server(); // two sockets, all of the firmware's table readable, an adapter without a driver
Machine armBoard(); // big and small cores, a device tree instead of firmware tables
Machine virtualMachine(); // one processor, an emulated adapter, no board
Machine container(); // no firmware, no adapters, few files of the processors

// A structure of the firmware's table: its type, what follows the handle, and its texts.
std::string structure(unsigned char type, const std::string &facts, const std::string &texts);

// A memory device of that structure. Size 0: the slot is empty.
std::string memoryDevice(unsigned size, unsigned type, unsigned speed);

std::string memoryTable(); // with other structures, and an empty slot before the first module

} // namespace captured
