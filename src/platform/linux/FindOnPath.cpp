#include "platform/Command.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace platform {

namespace {

bool isProgram(const std::filesystem::path &file)
{
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0;
}

} // namespace

std::optional<std::filesystem::path> findOnPath(const std::string &program)
{
    const char *path = std::getenv("PATH");
    if (path == nullptr || program.empty() || program.find('/') != std::string::npos) {
        return std::nullopt;
    }
    const std::string_view folders = path;
    for (std::size_t start = 0; start <= folders.size();) {
        const std::size_t end = std::min(folders.find(':', start), folders.size());
        const std::string_view folder = folders.substr(start, end - start);
        start = end + 1;
        // An empty or relative one would be the current folder.
        std::filesystem::path file = std::filesystem::path(folder) / program;
        if (folder.starts_with('/') && isProgram(file)) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace platform
