#include "platform/Command.h"

#include "platform/windows/Wide.h"

#include <algorithm>
#include <cwchar>
#include <windows.h>

namespace platform {

namespace {

std::wstring environmentVariable(const wchar_t *name)
{
    constexpr DWORD kLongestValue = 32767;
    std::wstring value(kLongestValue, L'\0');
    const DWORD length = GetEnvironmentVariableW(name, value.data(), kLongestValue);
    value.resize(length < kLongestValue ? length : 0);
    return value;
}

bool isFile(const std::filesystem::path &path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Only what the system starts by itself: scripts would need an interpreter.
std::optional<std::filesystem::path> programIn(const std::filesystem::path &folder,
                                               const std::wstring &name)
{
    const std::wstring given = std::filesystem::path(name).extension();
    for (const wchar_t *extension : {L".exe", L".com"}) {
        const bool isComplete = _wcsicmp(given.c_str(), extension) == 0;
        const auto file = folder / (isComplete ? name : name + extension);
        if (isFile(file)) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::filesystem::path> findOnPath(const std::string &program)
{
    const std::wstring name = toWide(program);
    if (name.empty() || name.find_first_of(L"\\/:") != std::wstring::npos) {
        return std::nullopt;
    }
    const std::wstring path = environmentVariable(L"PATH");
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(L';', start), path.size());
        const std::filesystem::path folder = path.substr(start, end - start);
        start = end + 1;
        if (!folder.is_absolute()) { // an empty or relative one would be the current folder
            continue;
        }
        if (auto file = programIn(folder, name)) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace platform
