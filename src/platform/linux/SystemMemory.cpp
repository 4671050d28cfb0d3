#include "platform/SystemMemory.h"

#include "platform/linux/MemInfo.h"

#include <array>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace platform {

std::optional<MemoryStatus> queryMemory()
{
    const int file =
        ::open("/proc/meminfo", O_RDONLY | O_CLOEXEC); // NOLINT(cppcoreguidelines-pro-type-vararg)
    if (file < 0) {
        return std::nullopt;
    }
    std::array<char, 4096> buffer{};
    const auto length = ::read(file, buffer.data(), buffer.size());
    ::close(file);
    if (length <= 0) {
        return std::nullopt;
    }
    return meminfo::parse(std::string_view(buffer.data(), static_cast<std::size_t>(length)));
}

} // namespace platform
