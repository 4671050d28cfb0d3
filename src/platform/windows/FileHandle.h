// An open file of the kernel that is closed with its owner, and how to get one. Nothing here shuts others out.
// Thread: any.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <windows.h>

namespace platform {

class FileHandle
{
public:
    FileHandle() = default;
    explicit FileHandle(HANDLE owned)
        : handle(owned)
    { }
    FileHandle(FileHandle &&other) noexcept
        : handle(std::exchange(other.handle, INVALID_HANDLE_VALUE))
    { }
    FileHandle &operator=(FileHandle &&other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;
    ~FileHandle()
    {
        if (isOpen()) {
            CloseHandle(handle);
        }
    }

    bool isOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle; }

private:
    HANDLE handle = INVALID_HANDLE_VALUE;
};

// Opens a file or folder by path, however long, following links. Not open on failure, with GetLastError() set.
FileHandle openPath(const std::filesystem::path &path, ACCESS_MASK access);

enum class Links { Follow, Open };

// Opens the entry of that single name in an open folder. Not open on failure, with GetLastError() set.
FileHandle openEntry(HANDLE folder, std::wstring_view name, ACCESS_MASK access, Links links);

// The path of the open file on its volume, from "\\" on, as it really is: where the handle came about by way of a link,
// the path of the link's target. Empty on failure.
std::wstring nameOf(HANDLE file);

} // namespace platform
