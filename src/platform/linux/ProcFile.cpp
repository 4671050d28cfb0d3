#include "platform/linux/ProcFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

FileDescriptor openForReading(int folder, const char *name)
{
    return FileDescriptor(
        ::openat(folder, name, O_RDONLY | O_CLOEXEC)); // NOLINT(cppcoreguidelines-pro-type-vararg)
}

std::string_view readStart(const FileDescriptor &file, std::span<char> buffer)
{
    if (!file.isOpen()) {
        return {};
    }
    ssize_t length = -1;
    do {
        length = ::pread(file.get(), buffer.data(), buffer.size(), 0);
    } while (length < 0 && errno == EINTR);
    return {buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

std::uint64_t ticksPerSecond()
{
    static const auto ticks = ::sysconf(_SC_CLK_TCK);
    return ticks > 0 ? static_cast<std::uint64_t>(ticks) : 0;
}

} // namespace platform
