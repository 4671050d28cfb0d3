#include "platform/linux/Trash.h"

#include "platform/linux/TreeRemover.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>

namespace platform::trash {

namespace {

constexpr std::string_view kInfoSuffix = ".trashinfo";

bool exists(int folder, const std::string &name)
{
    return factsOf(folder, name.c_str()).has_value() || errno != ENOENT;
}

bool removeEntry(const FolderListing &folder, const char *name, TreeRemover &remover)
{
    const auto facts = factsOf(folder.folder(), name);
    if (!facts) {
        return errno == ENOENT;
    }
    const Removal removal = remover.remove(name, *facts);
    return removal == Removal::Gone || removal == Removal::Missing;
}

// Whether the entry of "info" describes something that is still there.
bool isDescription(int files, std::string_view name)
{
    return files >= 0 && name.ends_with(kInfoSuffix)
        && exists(files, std::string(name.substr(0, name.size() - kInfoSuffix.size())));
}

// Empties one of the folders, except for descriptions of what is left in the open folder `files`.
bool emptyPart(int trashFolder, const char *name, int files = -1)
{
    FolderListing part(openFolder(trashFolder, name));
    if (!part.isOpen()) {
        return errno == ENOENT;
    }
    const RemovalRules rules{::geteuid(), nullptr};
    TreeRemover remover(part, rules);
    bool isEmpty = true;
    while (const char *entry = part.next()) {
        const bool isGone = isDescription(files, entry) || removeEntry(part, entry, remover);
        isEmpty = isEmpty && isGone;
    }
    return isEmpty && errno == 0;
}

bool emptyTrash(const FolderListing &trash)
{
    const int folder = trash.folder();
    const bool filesGone = emptyPart(folder, "files");
    const FileDescriptor files = openFolder(folder, "files");
    const bool infoGone = (files.isOpen() || filesGone) && emptyPart(folder, "info", files.get());
    const bool expungedGone = emptyPart(folder, "expunged");
    const RemovalRules rules{::geteuid(), nullptr};
    TreeRemover remover(trash, rules);
    return removeEntry(trash, "directorysizes", remover) && filesGone && infoGone && expungedGone;
}

// Not open when it is missing, with errno ENOENT, or not a real folder of this user.
FolderListing openTrash(int parent, const char *name)
{
    FileDescriptor folder = openFolder(parent, name);
    const auto facts = folder.isOpen() ? factsOf(folder.get()) : std::nullopt;
    if (folder.isOpen() && (!facts || facts->owner != ::geteuid())) {
        errno = EPERM;
        return {};
    }
    return FolderListing(std::move(folder));
}

bool emptyHomeTrash(const std::filesystem::path &path)
{
    const FolderListing trash = openTrash(AT_FDCWD, path.c_str());
    return trash.isOpen() ? emptyTrash(trash) : errno == ENOENT;
}

bool emptyVolumeTrash(int parent, const char *name)
{
    const FolderListing trash = openTrash(parent, name);
    return !trash.isOpen() || emptyTrash(trash);
}

// The common .Trash is safe only when nobody but its owner can put a folder in another one's place.
bool emptyCommonTrash(int topFolder, const std::string &user)
{
    const FileDescriptor common = openFolder(topFolder, ".Trash");
    const auto facts = common.isOpen() ? factsOf(common.get()) : std::nullopt;
    return !facts || (facts->mode & S_ISVTX) == 0 || emptyVolumeTrash(common.get(), user.c_str());
}

bool emptyVolume(const std::filesystem::path &topFolder)
{
    const FileDescriptor top(::open(topFolder.c_str(), // NOLINT(cppcoreguidelines-pro-type-vararg)
                                    O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!top.isOpen()) {
        return true; // a file that is mounted, or nothing for this user
    }
    const std::string user = std::to_string(::geteuid());
    const bool commonGone = emptyCommonTrash(top.get(), user);
    return emptyVolumeTrash(top.get(), (".Trash-" + user).c_str()) && commonGone;
}

} // namespace

std::filesystem::path inHome()
{
    const char *data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && *data == '/') {
        return std::filesystem::path(data) / "Trash";
    }
    const char *home = std::getenv("HOME");
    if (home != nullptr && *home == '/') {
        return std::filesystem::path(home) / ".local/share/Trash";
    }
    return {};
}

bool empty(const std::filesystem::path &homeTrash,
           const std::vector<std::filesystem::path> &topFolders)
{
    bool isEmpty = homeTrash.empty() || emptyHomeTrash(homeTrash);
    for (const auto &folder : topFolders) {
        isEmpty = emptyVolume(folder) && isEmpty;
    }
    return isEmpty;
}

} // namespace platform::trash
