// Between UTF-8 and the system's UTF-16. What is not valid becomes the replacement character.
#pragma once

#include <string>
#include <string_view>

namespace platform {

std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::wstring_view wide);

} // namespace platform
