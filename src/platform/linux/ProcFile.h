// Files that the kernel writes while they are read.
// Thread: any.
#pragma once

#include "platform/linux/FileDescriptor.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace platform {

// Opens a file below an open folder, or with AT_FDCWD a path. Not open on failure, with errno set.
FileDescriptor openForReading(int folder, const char *name);

// What the file holds now, from its beginning, as far as the buffer goes. Empty on failure, with errno set, and when the
// file is not open.
std::string_view readStart(const FileDescriptor &file, std::span<char> buffer);

// The unit in which the kernel tells processor times.
std::uint64_t ticksPerSecond();

} // namespace platform
