#include "platform/ProcessReader.h"

#include "platform/FileTime.h"
#include "platform/windows/FileHandle.h"
#include "platform/windows/ProcessHandle.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <array>
#include <cwchar>

namespace platform {

class ProcessReader::Pass
{
public:
    bool begin();
    bool next();
    void takeName();

    PROCESSENTRY32W entry{};
    ProcessHandle process;
    std::array<char, MAX_PATH * 3>
        name{}; // a character has at most three bytes for each of its units
    std::size_t nameLength = 0;

private:
    FileHandle list; // the system's snapshot; not open: over
    bool isFirst = true;
};

bool ProcessReader::Pass::begin()
{
    process = ProcessHandle();
    list = FileHandle(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    isFirst = true;
    return list.isOpen();
}

bool ProcessReader::Pass::next()
{
    process = ProcessHandle();
    if (!list.isOpen()) {
        return false;
    }
    entry.dwSize = sizeof(entry);
    const auto found =
        isFirst ? Process32FirstW(list.get(), &entry) : Process32NextW(list.get(), &entry);
    isFirst = false;
    if (found == 0) {
        list = FileHandle();
        return false;
    }
    takeName();
    return true;
}

void ProcessReader::Pass::takeName()
{
    const auto length = static_cast<int>(wcsnlen(&entry.szExeFile[0], MAX_PATH));
    const int bytes = WideCharToMultiByte(CP_UTF8,
                                          0,
                                          &entry.szExeFile[0],
                                          length,
                                          name.data(),
                                          static_cast<int>(name.size()),
                                          nullptr,
                                          nullptr);
    nameLength = static_cast<std::size_t>(bytes);
}

ProcessReader::ProcessReader()
    : pass(std::make_unique<Pass>())
{ }

ProcessReader::~ProcessReader() = default;

bool ProcessReader::begin()
{
    return pass->begin();
}

bool ProcessReader::next()
{
    return pass->next();
}

std::uint32_t ProcessReader::id() const
{
    return pass->entry.th32ProcessID;
}

std::string_view ProcessReader::name() const
{
    return {pass->name.data(), pass->nameLength};
}

bool ProcessReader::open()
{
    constexpr DWORD kAccess = PROCESS_QUERY_LIMITED_INFORMATION | PROCESS_VM_READ;
    pass->process = ProcessHandle(OpenProcess(kAccess, FALSE, id()));
    return pass->process.isOpen();
}

std::optional<std::uint64_t> ProcessReader::residentBytes()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    static_assert(sizeof(counters) == 80 || sizeof(void *) != 8);
    counters.cb = sizeof(counters);
    auto *base = reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&counters);
    if (K32GetProcessMemoryInfo(pass->process.get(), base, sizeof(counters)) == 0) {
        return std::nullopt;
    }
    return counters.WorkingSetSize;
}

std::optional<ProcessTimes> ProcessReader::times()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    if (GetProcessTimes(pass->process.get(), &created, &ended, &kernel, &user) == 0) {
        return std::nullopt;
    }
    return ProcessTimes{joinFileTime(kernel), joinFileTime(user), joinFileTime(created)};
}

std::optional<std::uint64_t> ProcessReader::transferredBytes()
{
    IO_COUNTERS counters{};
    if (GetProcessIoCounters(pass->process.get(), &counters) == 0) {
        return std::nullopt;
    }
    return counters.ReadTransferCount + counters.WriteTransferCount;
}

} // namespace platform
