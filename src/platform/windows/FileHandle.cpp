#include "platform/windows/FileHandle.h"

#include <vector>
#include <winternl.h>

namespace platform {

namespace {

constexpr ULONG kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The form that is not limited to 260 characters.
std::wstring longForm(const std::filesystem::path &path)
{
    const std::wstring &given = path.native();
    const DWORD size = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(given.c_str(), size, full.data(), nullptr));
    if (full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) {
        return full;
    }
    if (full.starts_with(L"\\\\")) {
        return L"\\\\?\\UNC" + full.substr(1);
    }
    return L"\\\\?\\" + full;
}

} // namespace

FileHandle openPath(const std::filesystem::path &path, ACCESS_MASK access)
{
    if (path.empty()) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return {};
    }
    return FileHandle(CreateFileW(longForm(path).c_str(),
                                  access | SYNCHRONIZE,
                                  kShareAll,
                                  nullptr,
                                  OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS,
                                  nullptr));
}

FileHandle openEntry(HANDLE folder, std::wstring_view name, ACCESS_MASK access, Links links)
{
    UNICODE_STRING text{};
    text.Length = static_cast<USHORT>(name.size() * sizeof(wchar_t));
    text.MaximumLength = text.Length;
    text.Buffer = const_cast<wchar_t *>(name.data());
    OBJECT_ATTRIBUTES object{};
    object.Length = sizeof(object);
    object.RootDirectory = folder;
    object.ObjectName = &text;
    object.Attributes = OBJ_CASE_INSENSITIVE;
    ULONG options = FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_FOR_BACKUP_INTENT;
    if (links == Links::Open) {
        options |= FILE_OPEN_REPARSE_POINT;
    }
    HANDLE handle = INVALID_HANDLE_VALUE;
    IO_STATUS_BLOCK outcome{};
    const NTSTATUS status = NtCreateFile(&handle,
                                         access | SYNCHRONIZE,
                                         &object,
                                         &outcome,
                                         nullptr,
                                         0,
                                         kShareAll,
                                         FILE_OPEN,
                                         options,
                                         nullptr,
                                         0);
    if (status < 0) {
        SetLastError(RtlNtStatusToDosError(status));
        return {};
    }
    return FileHandle(handle);
}

std::wstring nameOf(HANDLE file)
{
    constexpr std::size_t kUsual = 512;
    constexpr std::size_t kLongest = 32768;
    for (const std::size_t characters : {kUsual, kLongest}) {
        std::vector<std::uint32_t> buffer(1 + characters * sizeof(wchar_t) / sizeof(std::uint32_t));
        auto *info = reinterpret_cast<FILE_NAME_INFO *>(buffer.data());
        const auto bytes = static_cast<DWORD>(buffer.size() * sizeof(std::uint32_t));
        if (GetFileInformationByHandleEx(file, FileNameInfo, info, bytes) != 0) {
            return {&info->FileName[0], info->FileNameLength / sizeof(wchar_t)};
        }
    }
    return {};
}

} // namespace platform
