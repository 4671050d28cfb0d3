// The numbers by which ARM processors identify themselves, as names.
#pragma once

#include <string>

namespace platform::arm {

std::string implementerName(unsigned long long implementer); // empty when not known
std::string partName(unsigned long long implementer, unsigned long long part); // likewise

} // namespace platform::arm
