#include "platform/linux/FolderListing.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>

namespace platform {

FileDescriptor openFolder(int parent, const char *name)
{
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    return FileDescriptor(
        ::openat(parent, name, kFlags)); // NOLINT(cppcoreguidelines-pro-type-vararg)
}

FolderListing::FolderListing(FileDescriptor folder)
{
    if (!folder.isOpen()) {
        return;
    }
    stream.reset(::fdopendir(folder.get()));
    if (stream) {
        folder.release(); // the stream closes it
    }
}

const char *FolderListing::next()
{
    while (true) {
        errno = 0;
        const dirent *entry = ::readdir(stream.get());
        if (entry == nullptr) {
            return nullptr;
        }
        const char *name = &entry->d_name[0];
        const std::string_view text = name;
        if (text != "." && text != "..") {
            return name;
        }
    }
}

} // namespace platform
