// Running other programs: where they are found, and a run without a window.
// Thread: any. All text is UTF-8.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct CommandLine
{
    std::string program; // a bare name, as it is found on PATH
    std::vector<std::string> arguments;

    bool operator==(const CommandLine &) const = default;
};

// The program's file, from the absolute folders of PATH, in their order. Never from the current folder, and never from
// beside this program, whatever the system's own search would do. Empty when it is not there.
std::optional<std::filesystem::path> findOnPath(const std::string &program);

enum class NetworkTask { FlushDns, RenewLease, ResetSockets };

// The command that really does this here: the one of Windows where that program is on PATH; else this system's own; and
// where there is none, the one of Windows all the same, whose start will fail.
CommandLine networkCommand(NetworkTask task);

// The command of Windows for the task, whether it exists here or not.
CommandLine windowsNetworkCommand(NetworkTask task);

enum class RunOutcome { Succeeded, Failed, NotStarted, StillRunning };

// Runs a program hidden, without input and output, and waits for at most `limit`. Succeeded: exit code 0. A program that
// still runs then is left alone and goes on.
RunOutcome runHidden(const CommandLine &command, std::chrono::milliseconds limit);

} // namespace platform
