// A platform that says what the test wrote into it. Linking `veltra_scripted_platform` puts it in the real one's place.
#pragma once

#include "platform/Command.h"
#include "platform/FolderCleaner.h"
#include "platform/Shell.h"
#include "platform/SystemDisk.h"
#include "platform/SystemMemory.h"
#include "platform/WindowBackdrop.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fakes {

struct BackdropCall
{
    platform::NativeWindow window = 0;
    bool enabled = false;
};

struct ScriptedPlatform
{
    std::optional<platform::MemoryStatus> memory =
        platform::MemoryStatus{16ULL << 30, 12ULL << 30, 25};
    std::optional<platform::DiskSpace> disk = platform::DiskSpace{512ULL << 30, 384ULL << 30};
    std::string diskName = "C:";
    std::uint64_t tickCount = 0;
    std::filesystem::path temporaryFolder;
    std::filesystem::path systemFolder;
    std::vector<BackdropCall> backdropCalls;
    std::map<std::string, platform::CleanedFolder>
        cleaned; // what emptying that folder brings; others bring nothing
    std::string cleaningThrows; // the folder whose cleaning throws
    std::vector<std::string> cleanedFolders; // in order
    bool binSucceeds = true;
    std::vector<platform::SystemPage> openedPages; // asked for, in order
    std::vector<std::string> openedFolders;
    std::vector<platform::SystemPage> availablePages; // the others cannot be opened
    bool foldersOpen = true;
    std::map<platform::NetworkTask, platform::CommandLine> commands; // others: the ones of Windows
    std::vector<std::pair<platform::CommandLine, std::chrono::milliseconds>> hiddenRuns;
    platform::RunOutcome hiddenOutcome = platform::RunOutcome::Succeeded;
    int memoryQueries = 0;
    int diskQueries = 0;
    std::function<void()> onDiskName; // called when the window is being built
    const char *memoryThrows =
        nullptr; // the next query of memory throws a std::runtime_error with this text, once
};

// The one instance; assign a fresh one to start over.
ScriptedPlatform &scriptedPlatform();

} // namespace fakes
