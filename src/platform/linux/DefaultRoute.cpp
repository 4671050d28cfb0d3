#include "platform/linux/DefaultRoute.h"

#include <array>
#include <charconv>
#include <optional>

namespace platform::route {

namespace {

// Iface Destination Gateway Flags RefCnt Use Metric Mask ...
enum Column { Device, Destination, Gateway, Flags, References, Uses, Metric, Mask, ColumnCount };
constexpr unsigned kRouteIsUp = 1;

using Fields = std::array<std::string_view, ColumnCount>;

std::optional<Fields> split(std::string_view line)
{
    Fields fields;
    for (std::string_view &field : fields) {
        const auto start = line.find_first_not_of(" \t");
        if (start == std::string_view::npos) {
            return std::nullopt;
        }
        line.remove_prefix(start);
        field = line.substr(0, line.find_first_of(" \t"));
        line.remove_prefix(field.size());
    }
    return fields;
}

std::optional<unsigned> number(std::string_view text, int base)
{
    unsigned value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    const bool complete = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return complete ? std::optional(value) : std::nullopt;
}

// The metric of a usable default route.
std::optional<unsigned> metricOfDefault(const Fields &fields)
{
    constexpr int kHex = 16;
    const auto destination = number(fields[Destination], kHex);
    const auto mask = number(fields[Mask], kHex);
    const auto flags = number(fields[Flags], kHex);
    if (!destination || !mask || !flags || *destination != 0 || *mask != 0
        || (*flags & kRouteIsUp) == 0) {
        return std::nullopt;
    }
    return number(fields[Metric], 10);
}

} // namespace

std::string defaultDevice(std::string_view text)
{
    std::string device;
    std::optional<unsigned> best;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto fields = split(line);
        const auto metric = fields ? metricOfDefault(*fields) : std::nullopt;
        if (metric && (!best || *metric < *best)) {
            best = metric;
            device = (*fields)[Device];
        }
    }
    return device;
}

} // namespace platform::route
