#include "platform/linux/ProcessFiles.h"

#include "platform/linux/ProcFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t kCutCommand = 15; // bytes that the kernel keeps of a command

// "<id>/<entry>", below /proc.
class EntryPath
{
public:
    EntryPath(std::uint32_t id, std::string_view entry)
    {
        char *end = std::to_chars(path.data(), path.data() + path.size(), id).ptr;
        *end = '/';
        end = std::copy(entry.begin(), entry.end(), end + 1);
        *end = '\0';
    }
    const char *get() const { return path.data(); }

private:
    std::array<char, 32> path{};
};

bool isDenied()
{
    return errno == EACCES || errno == EPERM;
}

std::string_view withoutEnding(std::string_view text, std::string_view ending)
{
    if (text.ends_with(ending)) {
        text.remove_suffix(ending.size());
    }
    return text;
}

// What the kernel has as the command, without anything escaped.
std::string_view readCommand(int procFolder, std::uint32_t id, std::span<char> buffer)
{
    const FileDescriptor file = openForReading(procFolder, EntryPath(id, "comm").get());
    return withoutEnding(readStart(file, buffer), "\n");
}

// The executable's file name; empty where it may not be known.
std::string_view readExecutable(int procFolder, std::uint32_t id, std::span<char> buffer)
{
    const auto length =
        ::readlinkat(procFolder, EntryPath(id, "exe").get(), buffer.data(), buffer.size());
    if (length <= 0) {
        return {};
    }
    const std::string_view path(buffer.data(), static_cast<std::size_t>(length));
    return withoutEnding(path.substr(path.rfind('/') + 1), " (deleted)");
}

} // namespace

ProcessAccess
readStat(int procFolder, ProcessFiles &files, std::span<char> buffer, procstat::ProcessStat &stat)
{
    std::string_view text = readStart(files.stat, buffer);
    if (text.empty()) {
        const std::uint32_t id = files.id;
        files = ProcessFiles();
        files.id = id;
        errno = 0;
        files.stat = openForReading(procFolder, EntryPath(id, "stat").get());
        text = readStart(files.stat, buffer);
    }
    if (text.empty()) {
        return isDenied() ? ProcessAccess::Denied : ProcessAccess::Gone;
    }
    const auto parsed = procstat::parseProcess(text);
    if (!parsed) {
        return ProcessAccess::Denied;
    }
    stat = *parsed;
    return ProcessAccess::Readable;
}

std::optional<std::uint64_t>
readTransfer(int procFolder, ProcessFiles &files, std::span<char> buffer, bool retry)
{
    if (!files.io.isOpen()) {
        if (files.ioDenied && !retry) {
            return std::nullopt;
        }
        files.io = openForReading(procFolder, EntryPath(files.id, "io").get());
        files.ioDenied = !files.io.isOpen() && isDenied();
    }
    return procstat::parseTransfer(readStart(files.io, buffer));
}

std::string_view
readName(int procFolder, std::uint32_t id, std::string_view command, NameBuffer &buffer)
{
    constexpr std::size_t kRoomForCommand = 256;
    const auto room = std::span(buffer).first(kRoomForCommand);
    const auto rest = std::span(buffer).subspan(kRoomForCommand);

    std::string_view name;
    if (command.find('\\') != std::string_view::npos) {
        name = readCommand(procFolder, id, room);
    }
    if (name.empty()) {
        const auto length = std::min(command.size(), room.size());
        std::copy_n(command.begin(), length, room.begin());
        name = {room.data(), length};
    }
    if (name.size() == kCutCommand) {
        const auto executable = readExecutable(procFolder, id, rest);
        if (executable.size() > name.size() && executable.starts_with(name)) {
            return executable;
        }
    }
    return name;
}

} // namespace platform
