#include "platform/linux/ProcessMaps.h"

#include "platform/linux/OctalEscapes.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sys/sysmacros.h>

namespace platform::maps {

namespace {

// Takes the text up to the next blank, and the blanks behind it, off the line.
std::string_view takeField(std::string_view &line)
{
    const auto end = std::min(line.find(' '), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(end);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return field;
}

template<typename Number>
std::optional<Number> number(std::string_view text, int base)
{
    Number value = 0;
    const auto *end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value, base);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        return std::nullopt;
    }
    return value;
}

// "fd:01"
std::optional<std::uint64_t> device(std::string_view text)
{
    constexpr int kHexadecimal = 16;
    const auto colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto driver = number<unsigned>(text.substr(0, colon), kHexadecimal);
    const auto unit = number<unsigned>(text.substr(colon + 1), kHexadecimal);
    if (!driver || !unit) {
        return std::nullopt;
    }
    return makedev(*driver, *unit);
}

struct Line
{
    FileId id;
    std::string_view path;
};

// "address permissions offset device inode path"; the path may hold blanks.
std::optional<Line> parseLine(std::string_view line)
{
    constexpr int kDecimal = 10;
    for (int skipped = 0; skipped < 3; ++skipped) {
        takeField(line);
    }
    const auto volume = device(takeField(line));
    const auto inode = number<std::uint64_t>(takeField(line), kDecimal);
    if (!volume || !inode || *inode == 0) {
        return std::nullopt;
    }
    return Line{{*volume, *inode}, line};
}

} // namespace

std::vector<MappedFile> parse(std::string_view text)
{
    std::vector<MappedFile> files;
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos) {
            break; // cut
        }
        const auto line = parseLine(text.substr(0, end));
        text.remove_prefix(end + 1);
        if (line && (files.empty() || files.back().id != line->id)) {
            files.push_back({line->id, withoutOctalEscapes(line->path)});
        }
    }
    return files;
}

} // namespace platform::maps
