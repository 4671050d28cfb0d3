#include "platform/linux/InventoryText.h"

#include <algorithm>
#include <charconv>

namespace platform::inventory {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::size_t kLongestLine = 256;
constexpr unsigned long long kMostProcessors = 8192; // what the kernel can be built for

std::optional<unsigned long long> number(std::string_view text, int base)
{
    unsigned long long value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    const bool isComplete = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isComplete ? std::optional(value) : std::nullopt;
}

// Cuts in front of a character of several bytes, not in its middle.
std::string_view shortened(std::string_view text)
{
    constexpr unsigned kMask = 0xC0;
    constexpr unsigned kContinuation = 0x80;
    std::size_t length = std::min(text.size(), kLongestLine);
    while (length > 0 && length < text.size()
           && (static_cast<unsigned char>(text[length]) & kMask) == kContinuation) {
        --length;
    }
    return text.substr(0, length);
}

bool isControl(char c)
{
    constexpr unsigned char kDelete = 0x7F;
    return static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) == kDelete;
}

// Appends "7" or "2-5"; false when it is neither.
bool appendRange(std::string_view text, std::vector<unsigned> &list)
{
    const auto dash = text.find('-');
    const auto first = wholeNumber(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : wholeNumber(text.substr(dash + 1));
    if (!first || !last || *last < *first || *last >= kMostProcessors
        || list.size() + (*last - *first) >= kMostProcessors) {
        return false;
    }
    for (auto i = *first; i <= *last; ++i) {
        list.push_back(static_cast<unsigned>(i));
    }
    return true;
}

} // namespace

std::optional<std::string_view> takeLine(std::string_view &text)
{
    const auto end = text.find('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return line;
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string cleanLine(std::string_view text)
{
    text = text.substr(0, text.find_first_of(std::string_view("\n\0", 2)));
    std::string line(shortened(trimmed(text)));
    std::replace(line.begin(), line.end(), '\t', ' ');
    line.erase(std::remove_if(line.begin(), line.end(), isControl), line.end());
    return std::string(trimmed(line));
}

std::optional<unsigned long long> wholeNumber(std::string_view text)
{
    constexpr int kDecimal = 10;
    return number(text, kDecimal);
}

std::optional<unsigned long long> hexNumber(std::string_view text)
{
    constexpr int kHex = 16;
    if (text.starts_with("0x")) {
        text.remove_prefix(2);
    }
    return number(text, kHex);
}

std::string property(std::string_view text, std::string_view key)
{
    while (const auto line = takeLine(text)) {
        if (line->size() > key.size() && line->starts_with(key) && (*line)[key.size()] == '=') {
            return cleanLine(line->substr(key.size() + 1));
        }
    }
    return {};
}

std::vector<unsigned> processorList(std::string_view text)
{
    std::vector<unsigned> list;
    text = trimmed(text);
    while (!text.empty()) {
        const auto comma = std::min(text.find(','), text.size());
        if (!appendRange(text.substr(0, comma), list)) {
            return {};
        }
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return list;
}

} // namespace platform::inventory
