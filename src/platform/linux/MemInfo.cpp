#include "platform/linux/MemInfo.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace platform::meminfo {

namespace {

constexpr std::uint64_t kBytesPerKiB = 1024;
constexpr std::uint64_t kLargestKiB = std::numeric_limits<std::uint64_t>::max() / kBytesPerKiB;

// The number behind "Name:" in the first complete line of that name, in bytes.
std::optional<std::uint64_t> field(std::string_view text, std::string_view name)
{
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt; // a line that was cut may hold half a number
        }
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (!line.starts_with(name) || line.size() <= name.size() || line[name.size()] != ':') {
            continue;
        }
        line.remove_prefix(name.size() + 1);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        std::uint64_t kib = 0;
        const auto parsed = std::from_chars(line.data(), line.data() + line.size(), kib);
        if (parsed.ec != std::errc() || kib > kLargestKiB) {
            return std::nullopt;
        }
        return kib * kBytesPerKiB;
    }
    return std::nullopt;
}

std::uint64_t saturatingAdd(std::uint64_t a, std::uint64_t b)
{
    return a > std::numeric_limits<std::uint64_t>::max() - b
        ? std::numeric_limits<std::uint64_t>::max()
        : a + b;
}

// What kernels without MemAvailable let one estimate.
std::optional<std::uint64_t> availableOnOldKernel(std::string_view text)
{
    const auto free = field(text, "MemFree");
    if (!free) {
        return std::nullopt;
    }
    const auto buffers = field(text, "Buffers").value_or(0);
    return saturatingAdd(*free, saturatingAdd(buffers, field(text, "Cached").value_or(0)));
}

// floor(100 * used / total) without overflow: exact below 2^57 bytes, which is all of today's hardware.
unsigned percentInUse(std::uint64_t used, std::uint64_t total)
{
    constexpr std::uint64_t kExactBelow = std::numeric_limits<std::uint64_t>::max() / 100;
    return static_cast<unsigned>(used <= kExactBelow ? used * 100 / total : used / (total / 100));
}

} // namespace

std::optional<MemoryStatus> parse(std::string_view text)
{
    const auto total = field(text, "MemTotal");
    auto available = field(text, "MemAvailable");
    if (!available) {
        available = availableOnOldKernel(text);
    }
    if (!total || *total == 0 || !available) {
        return std::nullopt;
    }
    MemoryStatus status;
    status.totalBytes = *total;
    status.availableBytes = std::min(*available, *total);
    status.loadPercent = std::min(percentInUse(*total - status.availableBytes, *total), 100U);
    return status;
}

} // namespace platform::meminfo
