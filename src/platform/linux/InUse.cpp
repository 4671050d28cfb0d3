#include "platform/linux/InUse.h"

#include "platform/linux/FolderListing.h"
#include "platform/linux/ProcFile.h"
#include "platform/linux/ProcessMaps.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

namespace {

bool isProcessId(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Whether the last failure was for want of something, and not because a process has ended or may not be looked into.
bool isShortage()
{
    return errno == EMFILE || errno == ENFILE || errno == ENOMEM;
}

std::string readAll(const FileDescriptor &file)
{
    constexpr std::size_t kChunk = 65536;
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
        if (process.isOpen() ? !result.addProcess(process.get()) : isShortage()) {
            return std::nullopt;
        }
    }
    return errno == 0 ? std::optional(std::move(result)) : std::nullopt;
}

bool InUse::addProcess(int processFolder)
{
    for (const char *link : {"exe", "cwd", "root"}) {
        addTarget(processFolder, link);
    }
    return addOpenFiles(processFolder) && addMappedFiles(processFolder);
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

bool InUse::addOpenFiles(int processFolder)
{
    FolderListing open(openFolder(processFolder, "fd"));
    if (!open.isOpen()) {
        return !isShortage();
    }
    while (const char *name = open.next()) {
        addTarget(open.folder(), name);
    }
    return !isShortage();
}

// The device in this list is that of the volume, which the file itself may know by another number; so the path is asked
// too, and believed when the inode fits.
bool InUse::addMappedFiles(int processFolder)
{
    const FileDescriptor list = openForReading(processFolder, "maps");
    if (!list.isOpen()) {
        return !isShortage();
    }
    for (const auto &mapped : maps::parse(readAll(list))) {
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
    return true;
}

} // namespace platform
