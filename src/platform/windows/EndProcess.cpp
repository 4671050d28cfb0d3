#include "platform/EndProcess.h"

#include "platform/FileTime.h"
#include "platform/windows/ProcessHandle.h"
#include "platform/windows/Wide.h"

#include <array>
#include <limits>
#include <string>
#include <windows.h>

namespace platform {

namespace {

// The executable's file name; empty when the system does not tell.
std::string nameOf(HANDLE process)
{
    constexpr DWORD kLongestPath = 32768;
    std::wstring path(kLongestPath, L'\0');
    DWORD length = kLongestPath;
    if (QueryFullProcessImageNameW(process, 0, path.data(), &length) == 0) {
        return {};
    }
    path.resize(length);
    return toUtf8(std::wstring_view(path).substr(path.rfind(L'\\') + 1));
}

std::uint64_t creationTime(HANDLE process)
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    return GetProcessTimes(process, &created, &ended, &kernel, &user) != 0 ? joinFileTime(created)
                                                                           : 0;
}

// An ended process can still be opened as long as anybody holds it.
bool hasEnded(HANDLE process)
{
    DWORD exitCode = STILL_ACTIVE;
    return GetExitCodeProcess(process, &exitCode) != 0 && exitCode != STILL_ACTIVE;
}

} // namespace

EndOutcome endProcess(std::uint32_t id, const std::function<bool(const ProcessIdentity &)> &isMeant)
{
    if (id == 0 || id == std::numeric_limits<std::uint32_t>::max()) {
        return EndOutcome::Unavailable;
    }
    constexpr DWORD kAccess = PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION;
    const ProcessHandle process(OpenProcess(kAccess, FALSE, id));
    if (!process.isOpen() || hasEnded(process.get())) {
        return EndOutcome::Unavailable;
    }
    const std::string name = nameOf(process.get());
    if (!isMeant({.name = name, .created = creationTime(process.get())})) {
        return EndOutcome::Unavailable;
    }
    constexpr UINT kExitCode = 1;
    return TerminateProcess(process.get(), kExitCode) != 0 ? EndOutcome::Ended : EndOutcome::Failed;
}

} // namespace platform
