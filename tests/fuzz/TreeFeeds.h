// The parsers of what the kernel of Linux tells about volumes, mapped files and routes.
#pragma once

#include "fuzz/Feeds.h"
#include "platform/linux/DefaultRoute.h"
#include "platform/linux/MountInfo.h"
#include "platform/linux/OctalEscapes.h"
#include "platform/linux/ProcessMaps.h"

#include <algorithm>
#include <string>

namespace fuzz {

inline std::size_t linesOf(std::string_view text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

inline void feedMountInfo(std::string_view text)
{
    const auto points = platform::mounts::parse(text);
    require(points.size() <= linesOf(text), "at most one for each whole line");
    require(std::all_of(points.begin(),
                        points.end(),
                        [](const std::string &point) { return point.starts_with('/'); }),
            "a mount point is an absolute path");
}

inline void feedProcessMaps(std::string_view text)
{
    const auto files = platform::maps::parse(text);
    require(files.size() <= linesOf(text), "at most one for each whole line");
    require(std::all_of(
                files.begin(), files.end(), [](const auto &file) { return file.id.inode != 0; }),
            "a mapped file has a number");
    const auto same = [](const auto &a, const auto &b) {
        return a.id == b.id;
    };
    require(std::adjacent_find(files.begin(), files.end(), same) == files.end(),
            "consecutive lines of a file come once");
}

// Nothing is lost: what is written back with every character escaped is read as the same.
inline void feedOctalEscapes(std::string_view text)
{
    constexpr unsigned kDigit = 7;
    const std::string plain = platform::withoutOctalEscapes(text);
    require(plain.size() <= text.size(), "escapes only shrink");
    require(text.find('\\') != std::string_view::npos || plain == text, "no escape, no change");
    std::string escaped;
    for (const char c : plain) {
        const auto byte = static_cast<unsigned char>(c);
        escaped += '\\';
        for (const unsigned shift : {6U, 3U, 0U}) {
            escaped += static_cast<char>('0' + ((byte >> shift) & kDigit));
        }
    }
    require(platform::withoutOctalEscapes(escaped) == plain, "every character can be escaped");
}

inline void feedDefaultRoute(std::string_view text)
{
    const std::string device = platform::route::defaultDevice(text);
    require(device.find_first_of(" \t\n") == std::string::npos, "a device is one word");
    require(text.find(device) != std::string_view::npos, "the device is in the text");
}

} // namespace fuzz
