// Reading of what the firmware says about the memory modules, apart from fetching it.
#pragma once

#include <optional>
#include <string_view>

namespace platform::modules {

struct Module
{
    unsigned type = 0; // SMBIOS code, 26 for DDR4; 0 when not told
    unsigned speed = 0; // million transfers a second; 0 when not told

    bool operator==(const Module &) const = default;
};

// The first module that is really there, from the firmware's own table. Empty when there is none, also in a table that
// is cut before it.
std::optional<Module> firstInTable(std::string_view table);

// The same from what the device manager has kept of that table for everyone to read.
std::optional<Module> firstInDatabase(std::string_view text);

// The SMBIOS code for a name ("DDR4"); 0 when there is none.
unsigned typeCode(std::string_view name);

} // namespace platform::modules
