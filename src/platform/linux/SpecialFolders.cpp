#include "platform/SpecialFolders.h"

#include <cstdlib>

namespace platform {

std::filesystem::path temporaryFolder()
{
    for (const char *name : {"TEMP", "TMPDIR"}) {
        const char *value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "/tmp";
}

std::filesystem::path systemFolder()
{
    return {};
}

} // namespace platform
