// Reading of /proc/cpuinfo, apart from fetching it. The kernel writes it differently on each kind of processor.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::cpuinfo {

struct Processor
{
    std::string name; // of the first processor; empty when the kernel has no name for it
    std::string
        manufacturer; // as the processor identifies itself ("GenuineIntel"), or its designer's name
    unsigned cores = 0; // of the first socket, where the text says so; else 0
    unsigned threads = 0; // likewise
    unsigned listed = 0; // processors that the system runs on, those of all sockets
    unsigned megahertz = 0; // the clock of the moment, rounded; 0 when not told
};

// Whatever is missing, cut or no plausible number is left at its default.
Processor parse(std::string_view text);

// The value of the first complete line "KEY : value".
std::string field(std::string_view text, std::string_view key);

} // namespace platform::cpuinfo
