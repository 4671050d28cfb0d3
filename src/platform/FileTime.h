// Times as Windows hands them out: a 64-bit count of 100 ns in two halves.
#pragma once

#include <cstdint>

namespace platform {

// Joins the halves of a FILETIME, or of whatever names them like it. The low half comes first in memory.
template<typename Halves>
constexpr std::uint64_t joinFileTime(const Halves &time)
{
    constexpr unsigned kBitsPerHalf = 32;
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << kBitsPerHalf)
        | static_cast<std::uint64_t>(time.dwLowDateTime);
}

} // namespace platform
