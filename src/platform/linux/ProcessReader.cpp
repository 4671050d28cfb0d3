#include "platform/ProcessReader.h"

#include "platform/linux/FolderListing.h"
#include "platform/linux/KeptProcesses.h"
#include "platform/linux/ProcFile.h"
#include "platform/linux/ProcessFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

constexpr std::uint32_t kPassesBetweenRetries = 16;

// Half of what this process may have open; the other half is for the rest of the program.
std::size_t keptLimit()
{
    constexpr rlim_t kMost = 65536;
    struct rlimit open
    { };
    if (::getrlimit(RLIMIT_NOFILE, &open) != 0) {
        return 0;
    }
    return static_cast<std::size_t>(std::min(open.rlim_cur / 2, kMost));
}

// The process that an entry of /proc is about; 0 when it is about something else.
std::uint32_t processId(std::string_view name)
{
    std::uint32_t id = 0;
    const auto *end = name.data() + name.size();
    const auto parsed = std::from_chars(name.data(), end, id);
    return parsed.ec == std::errc() && parsed.ptr == end ? id : 0;
}

} // namespace

class ProcessReader::Pass
{
public:
    bool begin();
    bool next();
    std::string_view name();
    std::optional<std::uint64_t> transferredBytes();

    ProcessFiles files; // of the present process
    ProcessAccess access = ProcessAccess::Gone;
    procstat::ProcessStat stat; // points into `text`, until the next thing is read into that

private:
    bool listProcesses();
    void addListed(std::span<const char> entries);

    FileDescriptor folder; // /proc
    KeptProcesses kept{keptLimit()};
    std::vector<std::uint32_t> ids; // rising
    std::size_t position = 0; // in `ids`: the next one
    std::uint32_t passes = 0;
    bool isOver = true;
    bool nameIsRead = false;
    std::string_view currentName;
    NameBuffer nameBuffer{};
    alignas(dirent64) std::array<char, 32768> text{}; // directory entries are read in place
};

bool ProcessReader::Pass::begin()
{
    if (!folder.isOpen()) {
        folder = openFolder(AT_FDCWD, "/proc");
    }
    files = ProcessFiles();
    access = ProcessAccess::Gone;
    kept.beginPass();
    isOver = !listProcesses();
    ++passes;
    return !isOver;
}

bool ProcessReader::Pass::listProcesses()
{
    ids.clear();
    position = 0;
    if (!folder.isOpen() || ::lseek(folder.get(), 0, SEEK_SET) != 0) {
        return false;
    }
    while (true) {
        const auto length = ::getdents64(folder.get(), text.data(), text.size());
        if (length < 0) {
            return false;
        }
        if (length == 0) {
            break;
        }
        addListed(std::span(text).first(static_cast<std::size_t>(length)));
    }
    if (!std::is_sorted(ids.begin(), ids.end())) {
        std::sort(ids.begin(), ids.end());
    }
    return true;
}

void ProcessReader::Pass::addListed(std::span<const char> entries)
{
    while (!entries.empty()) {
        // The kernel lays the entries out so that they can be read in place.
        const auto *entry = reinterpret_cast<const dirent64 *>(
            entries.data()); // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
        if (const auto id = processId(&entry->d_name[0])) {
            ids.push_back(id);
        }
        entries = entries.subspan(entry->d_reclen);
    }
}

bool ProcessReader::Pass::next()
{
    if (isOver) {
        return false;
    }
    if (access != ProcessAccess::Gone) {
        kept.giveBack(std::move(files));
    }
    access = ProcessAccess::Gone;
    while (position < ids.size()) {
        files = kept.take(ids[position]);
        ++position;
        access = readStat(folder.get(), files, text, stat);
        if (access == ProcessAccess::Gone && (errno == EMFILE || errno == ENFILE)) {
            kept.clear(); // somebody needs them more
            access = readStat(folder.get(), files, text, stat);
        }
        if (access != ProcessAccess::Gone) {
            nameIsRead = false;
            return true;
        }
    }
    kept.endPass();
    isOver = true;
    return false;
}

// Read with the first question about the process, since the command lies in the buffer that the others need.
std::string_view ProcessReader::Pass::name()
{
    if (!nameIsRead) {
        nameIsRead = true;
        currentName = access == ProcessAccess::Readable
            ? readName(folder.get(), files.id, stat.command, nameBuffer)
            : "?";
    }
    return currentName;
}

std::optional<std::uint64_t> ProcessReader::Pass::transferredBytes()
{
    name();
    const bool isRetry = (passes + files.id) % kPassesBetweenRetries == 0;
    return readTransfer(folder.get(), files, text, isRetry);
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
    return pass->files.id;
}

std::string_view ProcessReader::name() const
{
    return pass->name();
}

bool ProcessReader::open()
{
    return pass->access == ProcessAccess::Readable;
}

std::optional<std::uint64_t> ProcessReader::residentBytes()
{
    static const auto pageSize = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    if (!open()) {
        return std::nullopt;
    }
    return pass->stat.residentPages * pageSize;
}

std::optional<ProcessTimes> ProcessReader::times()
{
    if (!open()) {
        return std::nullopt;
    }
    const auto &stat = pass->stat;
    ProcessTimes times;
    times.kernel = procstat::ticksToFileTime(stat.systemTicks, ticksPerSecond());
    times.user = procstat::ticksToFileTime(stat.userTicks, ticksPerSecond());
    times.created = stat.startTicks;
    return times;
}

std::optional<std::uint64_t> ProcessReader::transferredBytes()
{
    return open() ? pass->transferredBytes() : std::nullopt;
}

} // namespace platform
