#include "platform/Command.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace platform {

std::optional<std::filesystem::path> findOnPath(const std::string &program)
{
    const char *path = std::getenv("PATH");
    if (path == nullptr || program.empty() || program.find('/') != std::string::npos) {
        return std::nullopt;
    }
    std::string_view rest = path;
    while (true) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        if (folder.starts_with('/')) { // an empty or relative one would be the current folder
            const auto file = std::filesystem::path(folder) / program;
            std::error_code error;
            if (std::filesystem::is_regular_file(file, error)
                && ::access(file.c_str(), X_OK) == 0) {
                return file;
            }
        }
        if (folder.size() == rest.size()) {
            return std::nullopt;
        }
        rest.remove_prefix(folder.size() + 1);
    }
}

} // namespace platform
