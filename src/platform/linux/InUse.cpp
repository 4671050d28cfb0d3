#include "platform/linux/InUse.h"

#include "platform/linux/FolderListing.h"
#include "platform/linux/ProcessMaps.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <string_view>

namespace platform {

namespace {

bool isProcessId(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string readAll(int folder, const char *name)
{
    constexpr std::size_t kChunk = 65536;
    const FileDescriptor file(
        ::openat(folder, name, O_RDONLY | O_CLOEXEC)); // NOLINT(cppcoreguidelines-pro-type-vararg)
    std::string text;
    while (file.isOpen()) {
        const auto before = text.size();
        text.resize(before + kChunk);
        const auto length = ::read(file.get(), &text[before], kChunk);
        text.resize(before + static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        if (length == 0 || (length < 0 && errno != EINTR)) {
            break;
        }
    }
    return text;
}

FileId idOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

} // namespace

std::optional<InUse> InUse::snapshot()
{
    FolderListing processes(openFolder(AT_FDCWD, "/proc"));
    if (!processes.isOpen() || !factsOf(processes.folder(), "self")) {
        return std::nullopt;
    }
    InUse result;
    while (const char *name = processes.next()) {
        if (!isProcessId(name)) {
            continue;
        }
        const FileDescriptor process = openFolder(processes.folder(), name);
        if (process.isOpen()) {
            result.addProcess(process.get());
        }
    }
    return result;
}

void InUse::addProcess(int processFolder)
{
    for (const char *link : {"exe", "cwd", "root"}) {
        addTarget(processFolder, link);
    }
    addOpenFiles(processFolder);
    addMappedFiles(processFolder);
}

// These links of the kernel lead to the very file, whatever its name is now.
void InUse::addTarget(int folder, const char *link)
{
    struct stat target
    { };
    if (::fstatat(folder, link, &target, AT_NO_AUTOMOUNT) == 0) {
        files.insert(idOf(target));
    }
}

void InUse::addOpenFiles(int processFolder)
{
    FolderListing open(openFolder(processFolder, "fd"));
    while (open.isOpen()) {
        const char *name = open.next();
        if (name == nullptr) {
            break;
        }
        addTarget(open.folder(), name);
    }
}

// The device in this list is that of the volume, which the file itself may know by another number; so the path is asked
// too, and believed when the inode fits.
void InUse::addMappedFiles(int processFolder)
{
    for (const auto &mapped : maps::parse(readAll(processFolder, "maps"))) {
        if (!files.insert(mapped.id).second) {
            continue;
        }
        struct stat status
        { };
        if (::fstatat(AT_FDCWD, mapped.path.c_str(), &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT)
                == 0
            && status.st_ino == mapped.id.inode) {
            files.insert(idOf(status));
        }
    }
}

} // namespace platform
