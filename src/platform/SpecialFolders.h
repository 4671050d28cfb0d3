// Folders that the system names.
// Thread: any, as long as nobody changes the environment meanwhile.
#pragma once

#include <filesystem>

namespace platform {

// The user's temporary folder: TEMP; where the platform has the custom, else TMPDIR, else /tmp.
// Empty when nothing names one. Whether it exists is not checked.
std::filesystem::path temporaryFolder();

// The folder of the operating system itself ("C:\Windows"); empty where there is no such thing, or on failure.
std::filesystem::path systemFolder();

} // namespace platform
