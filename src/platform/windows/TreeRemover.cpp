#include "platform/windows/TreeRemover.h"

#include "platform/windows/FileDeletion.h"

namespace platform {

namespace {

constexpr int kMostListings = 8; // of a folder that others fill while it is being emptied

bool wasMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND
        || error == ERROR_DELETE_PENDING;
}

Removal whyNot(Removal otherwise)
{
    return wasMissing(GetLastError()) ? Removal::Missing : otherwise;
}

bool areEqual(std::wstring_view one, std::wstring_view other)
{
    return CompareStringOrdinal(one.data(),
                                static_cast<int>(one.size()),
                                other.data(),
                                static_cast<int>(other.size()),
                                TRUE)
        == CSTR_EQUAL;
}

// Not every system that runs Windows programs opens a link itself when asked to; where the handle stands for the link's
// target, it has another path.
bool isIn(HANDLE folder, std::wstring_view name, HANDLE file)
{
    const std::wstring path = nameOf(file);
    std::wstring folderPath = nameOf(folder);
    if (path.empty() || folderPath.empty()) {
        return false;
    }
    if (folderPath.back() != L'\\') {
        folderPath += L'\\';
    }
    return areEqual(path, folderPath.append(name));
}

// Whether the handle stands for what was listed: of the same kind, in the same place, and for folders, which will be
// entered, the same file.
bool isSame(HANDLE parent, const FolderEntry &entry, HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileInformationByHandle(file, &info) == 0) {
        return false;
    }
    constexpr DWORD kKind = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if ((info.dwFileAttributes & kKind) != (entry.attributes & kKind)) {
        return false;
    }
    const auto id = static_cast<std::uint64_t>(info.nFileIndexHigh) << 32U | info.nFileIndexLow;
    const bool isSameId = !entry.isFolder() || entry.isLink() || entry.id == 0 || entry.id == id;
    return isSameId && isIn(parent, entry.name, file);
}

// A file, or a link of whatever kind.
Removal removeSingle(HANDLE parent, const FolderEntry &entry)
{
    const bool isReadOnly = (entry.attributes & FILE_ATTRIBUTE_READONLY) != 0;
    FileHandle file =
        openEntry(parent, entry.name, isReadOnly ? kToDeleteReadOnly : kToDelete, Links::Open);
    if (!file.isOpen() && isReadOnly) {
        file = openEntry(parent, entry.name, kToDelete, Links::Open);
    }
    if (!file.isOpen()) {
        return whyNot(Removal::Kept);
    }
    return isSame(parent, entry, file.get()) && deleteOpen(file.get()) ? Removal::Gone
                                                                       : Removal::Kept;
}

} // namespace

Removal TreeRemover::remove(HANDLE parent, const FolderEntry &entry)
{
    if (!entry.isFolder() || entry.isLink()) {
        return removeSingle(parent, entry);
    }
    if (const auto refusal = enter(parent, entry)) {
        return *refusal;
    }
    while (!levels.empty()) {
        step();
    }
    return result;
}

// Empty when the folder was entered, else what becomes of it. A folder that may not be deleted, being in use itself, is
// emptied all the same.
std::optional<Removal> TreeRemover::enter(HANDLE parent, const FolderEntry &entry)
{
    Level level;
    level.folder =
        openEntry(parent, entry.name, kToDeleteReadOnly | FILE_LIST_DIRECTORY, Links::Open);
    if (!level.folder.isOpen() && !wasMissing(GetLastError())) {
        level.folder = openEntry(parent, entry.name, kToDelete | FILE_LIST_DIRECTORY, Links::Open);
    }
    if (!level.folder.isOpen() && !wasMissing(GetLastError())) {
        level.folder =
            openEntry(parent, entry.name, FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, Links::Open);
        level.keeps = true;
    }
    if (!level.folder.isOpen()) {
        return whyNot(Removal::Partly);
    }
    if (!isSame(parent, entry, level.folder.get())) {
        return Removal::Kept;
    }
    levels.push_back(std::move(level));
    return std::nullopt;
}

void TreeRemover::step()
{
    Level &level = levels.back();
    if (!level.folders.empty()) {
        const FolderEntry entry = std::move(level.folders.back());
        level.folders.pop_back();
        const auto depth = levels.size();
        const auto refusal = enter(level.folder.get(), entry); // may move the levels
        if (refusal && *refusal != Removal::Missing) {
            levels[depth - 1].keeps = true;
        }
    } else if (nextBatch(level)) {
        removeFiles(level);
    } else {
        level.keeps = level.keeps || GetLastError() != ERROR_NO_MORE_FILES;
        leave();
    }
}

void TreeRemover::removeFiles(Level &level)
{
    for (auto &entry : entries) {
        if (entry.isFolder() && !entry.isLink()) {
            level.folders.push_back(std::move(entry));
        } else if (removeSingle(level.folder.get(), entry) == Removal::Kept) {
            level.keeps = true;
        }
    }
}

bool TreeRemover::nextBatch(Level &level)
{
    if (level.listings == 0) {
        level.listings = 1;
        return batch.readFirst(level.folder.get(), entries);
    }
    return batch.read(level.folder.get(), entries);
}

// The last folder has been listed to its end: removes it, or leaves it where something in it stays.
void TreeRemover::leave()
{
    Level &level = levels.back();
    const bool isGone = !level.keeps && deleteOpen(level.folder.get());
    if (!isGone && !level.keeps && GetLastError() == ERROR_DIR_NOT_EMPTY
        && level.listings < kMostListings) {
        ++level
              .listings; // nothing was kept in it, so others fill it, or its listing left something out
        if (batch.readFirst(level.folder.get(), entries)) {
            removeFiles(level);
        }
        return;
    }
    levels.pop_back();
    if (levels.empty()) {
        result = isGone ? Removal::Gone : Removal::Partly;
    } else if (!isGone) {
        levels.back().keeps = true;
    }
}

} // namespace platform
