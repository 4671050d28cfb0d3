// Small pieces that the kernel's texts about hardware are taken apart with.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::inventory {

// Takes the next complete line, without its end, off the text. Empty optional: only a cut line, or nothing, is left.
std::optional<std::string_view> takeLine(std::string_view &text);

std::string_view trimmed(std::string_view text); // of blanks, tabs and line ends, at both ends

// What of foreign text may be shown: its first line (a zero byte ends it, too), trimmed, without control characters, at
// most 256 bytes.
std::string cleanLine(std::string_view text);

// A decimal number and nothing else.
std::optional<unsigned long long> wholeNumber(std::string_view text);

// "0x1a2b" or "1a2b" and nothing else.
std::optional<unsigned long long> hexNumber(std::string_view text);

// The value behind "KEY=" in the first complete line that starts so.
std::string property(std::string_view text, std::string_view key);

// "0-3,8,10-11" as the kernel writes sets of processors, in its order. Empty when malformed, or beyond 8192 processors.
std::vector<unsigned> processorList(std::string_view text);

} // namespace platform::inventory
