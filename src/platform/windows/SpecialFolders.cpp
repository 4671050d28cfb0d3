#include "platform/SpecialFolders.h"

#include <array>
#include <string>
#include <windows.h>

namespace platform {

std::filesystem::path temporaryFolder()
{
    constexpr DWORD kLongestValue =
        32767; // the system's own limit for a variable, terminator included
    std::wstring value(kLongestValue, L'\0');
    const DWORD length = GetEnvironmentVariableW(L"TEMP", value.data(), kLongestValue);
    if (length == 0 || length >= kLongestValue) {
        return {};
    }
    value.resize(length);
    return value;
}

std::filesystem::path systemFolder()
{
    std::array<wchar_t, MAX_PATH> buffer{};
    const UINT length = GetWindowsDirectoryW(buffer.data(), static_cast<UINT>(buffer.size()));
    if (length == 0 || length >= buffer.size()) {
        return {};
    }
    return std::wstring(buffer.data(), length);
}

} // namespace platform
