// The network device that leads to everywhere.
#pragma once

#include <string>
#include <string_view>

namespace platform::route {

// From the text of /proc/net/route: the device of the default route with the smallest metric; empty when there is none.
// Lines that do not parse are passed over.
std::string defaultDevice(std::string_view text);

} // namespace platform::route
