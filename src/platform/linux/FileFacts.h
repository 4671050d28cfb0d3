// What the kernel says about a file, by its place in an open folder or by its descriptor. Links are never followed.
// Thread: any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <sys/stat.h>

namespace platform {

// One file on this machine, whatever its names, for as long as it exists.
struct FileId
{
    std::uint64_t device = 0; // as makedev() puts it together
    std::uint64_t inode = 0;

    bool operator==(const FileId &) const = default;
};

struct FileIdHash
{
    std::size_t operator()(const FileId &id) const
    {
        constexpr std::uint64_t kSpread = 0x9e3779b97f4a7c15ULL;
        return std::hash<std::uint64_t>()((id.inode ^ (id.device << 32U)) * kSpread);
    }
};

struct FileFacts
{
    FileId id;
    std::uint64_t mount = 0; // which mount it is seen through; 0 from kernels that do not tell
    std::uint64_t size = 0; // bytes
    std::uint32_t owner = 0; // user
    mode_t mode = 0;

    bool isFolder() const { return S_ISDIR(mode); }
    bool isRegular() const { return S_ISREG(mode); }
    bool isLink() const { return S_ISLNK(mode); }
    // A bind mount may show the same device again, so the mount counts too.
    bool isOnMountOf(const FileFacts &other) const
    {
        return id.device == other.id.device && mount == other.mount;
    }
};

// Empty on failure, with errno set.
std::optional<FileFacts> factsOf(int folder, const char *name);
std::optional<FileFacts> factsOf(int descriptor);

// The size in bytes of the regular file at the end of the link; 0 when there is none.
std::uint64_t sizeBehindLink(int folder, const char *name);

} // namespace platform
