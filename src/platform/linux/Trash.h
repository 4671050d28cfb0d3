// The trash of the desktop (freedesktop.org): a folder with "files", "info" (one NAME.trashinfo for each of them) and
// perhaps "expunged" and "directorysizes".
// Thread: any; blocks.
#pragma once

#include <filesystem>
#include <vector>

namespace platform::trash {

// $XDG_DATA_HOME/Trash, by default ~/.local/share/Trash. Empty when neither variable is an absolute path.
std::filesystem::path inHome();

// Deletes what the user has in `homeTrash`, and for each of `topFolders` in .Trash/UID, where .Trash must be a real
// folder with the sticky bit, and in .Trash-UID. Only real folders of this user are touched, and in them only entries
// of this user; links are never followed. Missing and empty trashes are fine, an empty path is none.
// False when something could not be deleted, or when `homeTrash` exists but is no such folder. A folder on a volume that
// is none is passed over: it is somebody else's, and nothing of this user can be in it.
bool empty(const std::filesystem::path &homeTrash,
           const std::vector<std::filesystem::path> &topFolders);

} // namespace platform::trash
