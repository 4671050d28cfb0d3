// What the desktop opens for the user. Nothing waits for the opened window to be closed.
// Thread: the GUI's. Each call takes up to a second where a helper program has to answer.
#pragma once

#include <filesystem>

namespace platform {

enum class SystemPage { Storage, StartupApps, Security, EdgeClearData, ChromeClearData };

// The settings page, or the desktop's own tool for the same job. False: there is none, or it could not be opened.
bool openSystemPage(SystemPage page);

// The folder in the desktop's file manager.
bool openFolder(const std::filesystem::path &folder);

} // namespace platform
