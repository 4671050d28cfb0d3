// The files of one process below /proc, opened once and read as often as wanted. They stay with that process: after it has
// ended they fail with ESRCH, whoever gets its identifier next.
// Thread: one at a time.
#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessStat.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace platform {

enum class ProcessAccess {
    Readable,
    Denied, // it is there, and its entries cannot be read
    Gone
};

struct ProcessFiles
{
    std::uint32_t id = 0;
    FileDescriptor stat;
    FileDescriptor io;
    bool ioDenied = false;

    int openCount() const { return (stat.isOpen() ? 1 : 0) + (io.isOpen() ? 1 : 0); }
};

// Fetches the line about the process into the buffer, opening the file first where it is not open, or belongs to one that
// has ended. With Readable, `stat` is filled, and points into the buffer.
ProcessAccess
readStat(int procFolder, ProcessFiles &files, std::span<char> buffer, procstat::ProcessStat &stat);

// What the process had read from storage and written there. Empty when that is for others to know. `retry`: ask again
// although it was denied before.
std::optional<std::uint64_t>
readTransfer(int procFolder, ProcessFiles &files, std::span<char> buffer, bool retry);

// The longest name is that of a file, 255 bytes; its path is read into the same buffer.
using NameBuffer = std::array<char, 4352>;

// The name of the process whose line has the given command: that command, in full where the kernel cut or wrote it
// differently. Lies in the buffer.
std::string_view
readName(int procFolder, std::uint32_t id, std::string_view command, NameBuffer &buffer);

} // namespace platform
