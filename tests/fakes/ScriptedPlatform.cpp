#include "fakes/ScriptedPlatform.h"

#include "fakes/ScriptedProcesses.h"
#include "platform/RecycleBin.h"
#include "platform/SpecialFolders.h"
#include "platform/TickCount.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace fakes {

ScriptedPlatform &scriptedPlatform()
{
    static ScriptedPlatform instance;
    return instance;
}

} // namespace fakes

namespace platform {

std::optional<MemoryStatus> queryMemory()
{
    if (!fakes::isMainThread()) {
        return fakes::processes([](auto &processes) { return processes.memory; });
    }
    auto &script = fakes::scriptedPlatform();
    ++script.memoryQueries;
    if (const char *text = std::exchange(script.memoryThrows, nullptr)) {
        throw std::runtime_error(text);
    }
    return script.memory;
}

std::optional<DiskSpace> querySystemDisk()
{
    ++fakes::scriptedPlatform().diskQueries;
    return fakes::scriptedPlatform().disk;
}

std::string systemDiskName()
{
    if (fakes::scriptedPlatform().onDiskName) {
        fakes::scriptedPlatform().onDiskName();
    }
    return fakes::scriptedPlatform().diskName;
}

std::uint64_t tickCountMilliseconds()
{
    if (!fakes::isMainThread()) {
        return fakes::processes([](auto &processes) { return processes.tickCount; });
    }
    return fakes::scriptedPlatform().tickCount;
}

void setBackdropBlur(NativeWindow window, bool enabled)
{
    fakes::scriptedPlatform().backdropCalls.push_back({window, enabled});
}

std::filesystem::path temporaryFolder()
{
    return fakes::scriptedPlatform().temporaryFolder;
}

std::filesystem::path systemFolder()
{
    return fakes::scriptedPlatform().systemFolder;
}

CleanedFolder emptyFolder(const std::filesystem::path &folder)
{
    auto &script = fakes::scriptedPlatform();
    script.cleanedFolders.push_back(folder.generic_string());
    if (!script.cleaningThrows.empty() && folder.generic_string() == script.cleaningThrows) {
        throw std::filesystem::filesystem_error(
            "the folder cannot be examined",
            folder,
            std::make_error_code(std::errc::too_many_symbolic_link_levels));
    }
    const auto found = script.cleaned.find(folder.generic_string());
    return found == script.cleaned.end() ? CleanedFolder{} : found->second;
}

bool emptyRecycleBin()
{
    return fakes::scriptedPlatform().binSucceeds;
}

bool openSystemPage(SystemPage page)
{
    auto &script = fakes::scriptedPlatform();
    script.openedPages.push_back(page);
    return std::find(script.availablePages.begin(), script.availablePages.end(), page)
        != script.availablePages.end();
}

bool openFolder(const std::filesystem::path &folder)
{
    fakes::scriptedPlatform().openedFolders.push_back(folder.generic_string());
    return fakes::scriptedPlatform().foldersOpen;
}

CommandLine networkCommand(NetworkTask task)
{
    const auto &script = fakes::scriptedPlatform();
    if (const auto found = script.commands.find(task); found != script.commands.end()) {
        return found->second;
    }
    return windowsNetworkCommand(task);
}

RunOutcome runHidden(const CommandLine &command, std::chrono::milliseconds limit)
{
    fakes::scriptedPlatform().hiddenRuns.emplace_back(command, limit);
    return fakes::scriptedPlatform().hiddenOutcome;
}

} // namespace platform
