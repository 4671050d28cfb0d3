#include "platform/FolderCleaner.h"

#include "platform/windows/TreeRemover.h"

namespace platform {

namespace {

bool isMissing(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
        return true;
    default:
        return false;
    }
}

bool isRefusal(DWORD error)
{
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
}

[[noreturn]] void raise(const char *what, const std::filesystem::path &folder, DWORD error)
{
    throw std::filesystem::filesystem_error(
        what, folder, std::error_code(static_cast<int>(error), std::system_category()));
}

// Whether there is something to list; throws when that cannot be told.
bool isFolder(const std::filesystem::path &path)
{
    const FileHandle file = openPath(path, FILE_READ_ATTRIBUTES);
    if (!file.isOpen()) {
        const DWORD error = GetLastError();
        if (isMissing(error) || isRefusal(error)) {
            return false;
        }
        raise("cannot tell whether the folder exists", path, error);
    }
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(file.get(), &info) != 0
        && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Of the regular file, if necessary behind a link; what the listing says may be out of date.
std::uint64_t sizeToCount(HANDLE folder, const FolderEntry &entry)
{
    if (entry.isFolder()) {
        return 0;
    }
    const FileHandle file = openEntry(folder, entry.name, FILE_READ_ATTRIBUTES, Links::Follow);
    FILE_STANDARD_INFO info{};
    if (!file.isOpen()
        || GetFileInformationByHandleEx(file.get(), FileStandardInfo, &info, sizeof(info)) == 0
        || info.Directory) {
        return 0;
    }
    return static_cast<std::uint64_t>(info.EndOfFile.QuadPart);
}

void cleanEntry(HANDLE folder,
                const FolderEntry &entry,
                TreeRemover &remover,
                CleanedFolder &result)
{
    const std::uint64_t size = sizeToCount(folder, entry);
    const Removal removal = remover.remove(folder, entry);
    if (removal == Removal::Gone || removal == Removal::Partly) {
        ++result.removedCount;
        result.bytesFreed += size;
    }
}

} // namespace

CleanedFolder emptyFolder(const std::filesystem::path &folder)
{
    CleanedFolder result{};
    if (!isFolder(folder)) {
        return result;
    }
    const FileHandle open = openPath(folder, FILE_LIST_DIRECTORY);
    if (!open.isOpen()) {
        return result;
    }
    FolderBatch batch;
    std::vector<FolderEntry> entries;
    TreeRemover remover;
    while (batch.read(open.get(), entries)) {
        for (const auto &entry : entries) {
            cleanEntry(open.get(), entry, remover, result);
        }
    }
    // The root of an empty volume has no entry at all, not even its own.
    if (const DWORD error = GetLastError();
        error != ERROR_NO_MORE_FILES && error != ERROR_FILE_NOT_FOUND) {
        raise("cannot list the folder", folder, error);
    }
    return result;
}

} // namespace platform
