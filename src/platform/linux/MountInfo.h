// Reading of /proc/self/mountinfo, apart from fetching it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::mounts {

// Where volumes that hold files of users are mounted, as raw bytes, in the order of the text. The kernel's own file
// systems, which hold none, are left out. Lines that are malformed or cut are passed over.
std::vector<std::string> parse(std::string_view text);

} // namespace platform::mounts
