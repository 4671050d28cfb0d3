// The operations on the system. Nothing here knows of widgets.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

struct TempCleanResult
{
    std::int32_t removedCount =
        0; // entries that stood directly in a temporary folder and were deleted
    std::uint64_t bytesFreed = 0; // sizes of the files among them; what lay in folders is not added
};

struct MemoryPressureInfo
{
    std::uint64_t totalPhys = 0; // bytes
    std::uint64_t availPhys = 0; // bytes
    std::uint32_t memoryLoad = 0; // percent in use, 0 to 100
};

// Title and text in UTF-8, whether the operation is still running, whether it succeeded so far.
using ToastCallback = std::function<void(
    const std::string &title, const std::string &text, bool running, bool success)>;

// Each operation blocks its caller, up to the limit it names; failures are return values, never dialogs. Any thread; the
// callback is guarded by a lock, nothing else is shared.
class OptimizerCore
{
public:
    using ToastCallback = ::ToastCallback;

    // Replaces the one receiver of announcements; an empty one silences them. It is called on the operation's thread with
    // the lock held, so it must not call back into this class.
    static void setToastCallback(ToastCallback callback);

    // Empties the temporary folders. Announces itself. What is in use, locked or protected stays, silently. Throws
    // std::filesystem::filesystem_error when a folder cannot be examined or its listing breaks off.
    static TempCleanResult cleanTemp();

    // Announces itself. True when the system says that it worked, whatever it says of an empty bin.
    static bool emptyRecycleBin();

    // Run hidden; true for exit code 0 within the limit. A command that takes longer goes on by itself.
    static bool flushDns(); // 9 s; announces itself
    static bool renewIp(); // 15 s
    static bool resetWinsock(); // 15 s

    // Open something in the desktop; true when that worked.
    static bool openStorageSense();
    static bool openTempFolder();
    static bool openPrefetchFolder();
    static bool openStartupAppsSettings();
    static bool openWindowsSecurity();
    static bool openBrowserClearCachePages(); // both are tried; true when either opened

    // All zero when the system does not tell.
    static MemoryPressureInfo getMemoryPressureInfo();
};
