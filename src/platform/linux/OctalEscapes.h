// The kernel writes awkward characters of names as a backslash and three octal digits.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The text with the characters themselves. What is no escape stays as it is.
std::string withoutOctalEscapes(std::string_view text);

} // namespace platform
