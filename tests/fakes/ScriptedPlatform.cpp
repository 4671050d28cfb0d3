#include "fakes/ScriptedPlatform.h"

#include "platform/SpecialFolders.h"
#include "platform/TickCount.h"

#include <stdexcept>
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

} // namespace platform
