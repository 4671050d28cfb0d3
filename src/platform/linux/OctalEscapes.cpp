#include "platform/linux/OctalEscapes.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kDigits = 3;

bool startsWithEscape(std::string_view text)
{
    const auto isOctal = [](char c) {
        return c >= '0' && c <= '7';
    };
    return text.size() > kDigits && text[0] == '\\' && text[1] <= '3'
        && std::all_of(text.begin() + 1, text.begin() + 1 + kDigits, isOctal);
}

char escaped(std::string_view text)
{
    constexpr int kBitsPerDigit = 3;
    int value = 0;
    for (std::size_t i = 1; i <= kDigits; ++i) {
        value = (value << kBitsPerDigit) | (text[i] - '0');
    }
    return static_cast<char>(value);
}

} // namespace

std::string withoutOctalEscapes(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    while (!text.empty()) {
        if (startsWithEscape(text)) {
            plain += escaped(text);
            text.remove_prefix(1 + kDigits);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

} // namespace platform
