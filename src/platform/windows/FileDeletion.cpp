#include "platform/windows/FileDeletion.h"

namespace platform {

namespace {

// Newer than some systems and headers, hence spelt out.
struct DispositionEx
{
    DWORD flags;
};
constexpr auto kDispositionInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
constexpr DWORD kDelete = 0x01;
constexpr DWORD kNameGoesAtOnce = 0x02;
constexpr DWORD kIgnoreReadOnly = 0x10;

bool isUnknownRequest(DWORD error)
{
    return error == ERROR_INVALID_PARAMETER || error == ERROR_INVALID_FUNCTION
        || error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_LEVEL
        || error == ERROR_CALL_NOT_IMPLEMENTED;
}

bool setAttributes(HANDLE file, DWORD attributes)
{
    FILE_BASIC_INFO info{}; // times of 0 stay as they are
    info.FileAttributes = attributes;
    return SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof(info)) != 0;
}

bool deleteWritable(HANDLE file)
{
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = TRUE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof(info)) != 0;
}

bool deleteTheOldWay(HANDLE file)
{
    FILE_BASIC_INFO before{};
    if (GetFileInformationByHandleEx(file, FileBasicInfo, &before, sizeof(before)) == 0) {
        return false;
    }
    if ((before.FileAttributes & FILE_ATTRIBUTE_READONLY) == 0) {
        return deleteWritable(file);
    }
    const DWORD writable = before.FileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    if (!setAttributes(file, writable != 0 ? writable : FILE_ATTRIBUTE_NORMAL)) {
        return false;
    }
    if (deleteWritable(file)) {
        return true;
    }
    const DWORD error = GetLastError();
    setAttributes(file, before.FileAttributes);
    SetLastError(error);
    return false;
}

} // namespace

bool deleteOpen(HANDLE file)
{
    DispositionEx info{kDelete | kNameGoesAtOnce | kIgnoreReadOnly};
    if (SetFileInformationByHandle(file, kDispositionInfoEx, &info, sizeof(info)) != 0) {
        return true;
    }
    return isUnknownRequest(GetLastError()) && deleteTheOldWay(file);
}

} // namespace platform
