// The names in an open folder, one after another. Deleting the entry just named is fine.
// Thread: one at a time.
#pragma once

#include "platform/linux/FileDescriptor.h"

#include <dirent.h>
#include <memory>

namespace platform {

// Opens the folder of that name in an open folder, or of that path with AT_FDCWD, for listing. A link is an error, and so
// is anything else that is no folder: not open, with errno set.
FileDescriptor openFolder(int parent, const char *name);

class FolderListing
{
public:
    FolderListing() = default; // not open
    explicit FolderListing(
        FileDescriptor folder); // not open when the folder is not, or memory is short

    bool isOpen() const { return stream != nullptr; }
    int folder() const { return ::dirfd(stream.get()); }

    // The next name, as the raw bytes that it is; valid until the next call. "." and ".." are left out.
    // Null at the end, with errno 0, and on failure, with errno set.
    const char *next();
    void startOver() { ::rewinddir(stream.get()); }

    // Where the listing stands; another listing of the same folder can go on from there.
    long position() const { return ::telldir(stream.get()); }
    void goOnFrom(long position) { ::seekdir(stream.get(), position); }

private:
    struct Closer
    {
        void operator()(DIR *open) const { ::closedir(open); }
    };
    std::unique_ptr<DIR, Closer> stream;
};

} // namespace platform
