#include "platform/TestFiles.h"

#include <array>
#include <atomic>
#include <stdexcept>
#include <vector>
#include <windows.h>

#include <psapi.h>
#include <winioctl.h>

namespace testfiles {

namespace {

void check(bool succeeded, const char *what)
{
    if (!succeeded) {
        throw std::runtime_error(std::string(what) + ": " + std::to_string(GetLastError()));
    }
}

std::wstring longForm(const Path &path)
{
    Path plain = path;
    return L"\\\\?\\" + plain.make_preferred().native();
}

HANDLE open(const Path &path, DWORD access, DWORD disposition, DWORD flags = 0)
{
    return CreateFileW(
        longForm(path).c_str(), access, FILE_SHARE_READ, nullptr, disposition, flags, nullptr);
}

// Wine cannot make links; the system that it runs on can.
std::string hostPath(const Path &path)
{
    using Translate = char *(CDECL *)(const wchar_t *);
    const FARPROC found =
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    const auto translate = reinterpret_cast<Translate>(reinterpret_cast<void *>(found));
    Path plain = path;
    char *name = translate(plain.make_preferred().c_str());
    std::string result = name == nullptr ? "" : name;
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

bool runOnHost(const std::string &command)
{
    std::string line = "\\\\?\\unix\\bin\\sh -c \"" + command + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (CreateProcessA("\\\\?\\unix\\bin\\sh",
                       line.data(),
                       nullptr,
                       nullptr,
                       FALSE,
                       0,
                       nullptr,
                       nullptr,
                       &startup,
                       &process)
        == 0) {
        return false;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return true;
}

// The other system's programs report no exit code that could be relied on, so the result is looked at.
bool linkOnHost(const Path &target, const Path &link)
{
    const std::string command = "ln -s '" + hostPath(target) + "' '" + hostPath(link.parent_path())
        + "/" + link.filename().string() + "'";
    runOnHost(command);
    for (int tries = 0; tries < 100 && !isThere(link); ++tries) {
        Sleep(10);
    }
    return isThere(link); // a link to nothing is nothing to Wine
}

bool makeLink(const Path &target, const Path &link, DWORD flags)
{
    constexpr DWORD kUnprivileged = 2;
    if (isWine()) {
        return linkOnHost(target, link);
    }
    return CreateSymbolicLinkW(longForm(link).c_str(), target.c_str(), flags | kUnprivileged) != 0;
}

// The system's layout of a junction.
struct MountPoint
{
    DWORD tag = IO_REPARSE_TAG_MOUNT_POINT;
    WORD dataLength = 0;
    WORD reserved = 0;
    WORD substituteOffset = 0;
    WORD substituteLength = 0;
    WORD printOffset = 0;
    WORD printLength = 0;
};

std::vector<char> mountPointData(const Path &target)
{
    constexpr std::size_t kHeader = 8;
    Path plain = target;
    const std::wstring substitute = L"\\??\\" + plain.make_preferred().native();
    const auto bytes = substitute.size() * sizeof(wchar_t);
    std::vector<char> data(sizeof(MountPoint) + bytes + 2 * sizeof(wchar_t));
    MountPoint header;
    header.dataLength = static_cast<WORD>(data.size() - kHeader);
    header.substituteLength = static_cast<WORD>(bytes);
    header.printOffset = static_cast<WORD>(bytes + sizeof(wchar_t));
    memcpy(data.data(), &header, sizeof(header));
    memcpy(data.data() + sizeof(header), substitute.data(), bytes);
    return data;
}

} // namespace

bool isWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

void makeFolder(const Path &path)
{
    check(CreateDirectoryW(longForm(path).c_str(), nullptr) != 0, "CreateDirectory");
}

void makeFile(const Path &path, const std::string &content)
{
    HANDLE file = open(path, GENERIC_WRITE, CREATE_ALWAYS);
    check(file != INVALID_HANDLE_VALUE, "CreateFile");
    DWORD written = 0;
    WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    CloseHandle(file);
    check(written == content.size(), "WriteFile");
}

void makeReadOnly(const Path &path)
{
    check(SetFileAttributesW(longForm(path).c_str(), FILE_ATTRIBUTE_READONLY) != 0,
          "SetFileAttributes");
}

bool isThere(const Path &path)
{
    return GetFileAttributesW(longForm(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string contentOf(const Path &path)
{
    HANDLE file = open(path, GENERIC_READ, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        return {};
    }
    std::array<char, 4096> buffer{};
    DWORD length = 0;
    ReadFile(file, buffer.data(), static_cast<DWORD>(buffer.size()), &length, nullptr);
    CloseHandle(file);
    return {buffer.data(), length};
}

bool makeFileLink(const Path &target, const Path &link)
{
    return makeLink(target, link, 0);
}

bool makeFolderLink(const Path &target, const Path &link)
{
    return makeLink(target, link, SYMBOLIC_LINK_FLAG_DIRECTORY);
}

bool makeJunction(const Path &target, const Path &link)
{
    makeFolder(link);
    HANDLE folder = open(link,
                         GENERIC_WRITE,
                         OPEN_EXISTING,
                         FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    std::vector<char> data = mountPointData(target);
    DWORD returned = 0;
    const bool isMade = DeviceIoControl(folder,
                                        FSCTL_SET_REPARSE_POINT,
                                        data.data(),
                                        static_cast<DWORD>(data.size()),
                                        nullptr,
                                        0,
                                        &returned,
                                        nullptr)
        != 0;
    CloseHandle(folder);
    if (!isMade) {
        RemoveDirectoryW(longForm(link).c_str());
    }
    return isMade;
}

bool makeHardLink(const Path &target, const Path &link)
{
    return CreateHardLinkW(longForm(link).c_str(), longForm(target).c_str(), nullptr) != 0;
}

bool removeLink(const Path &link)
{
    if (isWine()) {
        return runOnHost("rm '" + hostPath(link.parent_path()) + "/" + link.filename().string()
                         + "'");
    }
    return RemoveDirectoryW(longForm(link).c_str()) != 0
        || DeleteFileW(longForm(link).c_str()) != 0;
}

bool isEmptyFolder(const Path &path)
{
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((longForm(path) + L"\\*").c_str(), &found);
    int entries = search == INVALID_HANDLE_VALUE ? 0 : 1;
    while (entries > 0 && FindNextFileW(search, &found) != 0) {
        ++entries;
    }
    FindClose(search);
    return entries <= 2; // "." and ".."
}

std::uint64_t residentBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof(counters);
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return counters.WorkingSetSize;
}

std::uint64_t freshNumber()
{
    static std::atomic<std::uint64_t> next = 0;
    return GetTickCount64() * 10000 + next++;
}

} // namespace testfiles
