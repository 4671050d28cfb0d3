// Reading of /proc/PID/maps, apart from fetching it.
#pragma once

#include "platform/linux/FileFacts.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform::maps {

struct MappedFile
{
    FileId id; // on some file systems the device is not the one that the file itself tells
    std::string path; // raw bytes; " (deleted)" may be part of it or the kernel's remark
};

// The mapped files in the order of the text, repeated as often as there, except that the same file in consecutive lines
// comes once. Anonymous mappings and lines that are malformed or cut are passed over.
std::vector<MappedFile> parse(std::string_view text);

} // namespace platform::maps
