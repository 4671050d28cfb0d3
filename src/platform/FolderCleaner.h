// Emptying of a folder whose contents nobody vouches for, such as the one for temporary files.
// Thread: any; blocks for as long as the walk takes. Memory does not grow with the number of entries.
#pragma once

#include <cstdint>
#include <filesystem>

namespace platform {

struct CleanedFolder
{
    std::int32_t removedCount =
        0; // entries directly inside the folder that are gone, or gone in part
    std::uint64_t bytesFreed = 0; // sizes of the removed regular files directly inside the folder
};

// Deletes everything inside `folder`; the folder itself stays, and may be reached by a link.
//
// Links of every kind below it are removed themselves and never entered, volumes mounted there are left alone. All steps
// go by way of open folders, never by way of paths, so nobody can lead the walk astray by moving things meanwhile. What
// cannot be judged is not deleted. Read-only files are deleted like others. Nothing is ever truncated.
//
// What is in use stays and is not counted: on Windows what is open without leave to delete it; elsewhere sockets,
// FIFOs, devices, entries of other users, and what a running process has open, mapped, as its program, as its working
// folder or as its root. A folder that holds such a thing is emptied around it and counts. So does every folder that
// could be removed only in part. A link to a regular file frees, as far as the figure goes, the size of that file.
//
// Zeros when the folder is missing, is no folder, or cannot be opened for lack of permission.
// Throws std::filesystem::filesystem_error when it cannot be told whether the folder exists (a loop of links, say), and
// when the listing breaks off; what was deleted until then is gone.
CleanedFolder emptyFolder(const std::filesystem::path &folder);

} // namespace platform
