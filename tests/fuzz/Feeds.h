// What all feeds share. A feed gives one parser one text, and throws when the answer breaks a promise; a fuzzer calls it
// with everything it can think of, an ordinary test with a few thousand mutations of the same seeds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace fuzz {

inline void require(bool isKept, const char *promise)
{
    if (!isKept) {
        throw std::logic_error(promise);
    }
}

inline std::string_view textOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), size};
}

} // namespace fuzz
