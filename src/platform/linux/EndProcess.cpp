#include "platform/EndProcess.h"

#include "platform/linux/FolderListing.h"
#include "platform/linux/ProcessFiles.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <limits>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::uint32_t kInit = 1; // ends with the machine; the kernel drops signals from below it

// The C library's own functions for these cannot be linked from C++ before its version 2.37.
FileDescriptor hold(pid_t id)
{
    const auto process = ::syscall(SYS_pidfd_open, id, 0); // NOLINT(*-vararg)
    return FileDescriptor(static_cast<int>(process));
}

EndOutcome kill(const FileDescriptor &process)
{
    if (::syscall(SYS_pidfd_send_signal, process.get(), SIGKILL, nullptr, 0)
        == 0) { // NOLINT(*-vararg)
        return EndOutcome::Ended;
    }
    return errno == EPERM || errno == ESRCH ? EndOutcome::Unavailable : EndOutcome::Failed;
}

} // namespace

EndOutcome endProcess(std::uint32_t id, const std::function<bool(const ProcessIdentity &)> &isMeant)
{
    if (id == 0 || id > static_cast<std::uint32_t>(std::numeric_limits<pid_t>::max())) {
        return EndOutcome::Unavailable;
    }
    // Whatever is read by the identifier from here on, the signal goes to the process that has it at this moment, or to
    // nobody.
    const FileDescriptor process = hold(static_cast<pid_t>(id));
    const FileDescriptor procFolder = openFolder(AT_FDCWD, "/proc");
    if (!process.isOpen() || !procFolder.isOpen()) {
        return EndOutcome::Unavailable;
    }
    ProcessFiles files;
    files.id = id;
    procstat::ProcessStat stat;
    std::array<char, 4096> text{};
    if (readStat(procFolder.get(), files, text, stat) != ProcessAccess::Readable
        || stat.hasEnded()) {
        return EndOutcome::Unavailable;
    }
    NameBuffer buffer{};
    const auto name = readName(procFolder.get(), id, stat.command, buffer);
    if (!isMeant({.name = name, .created = stat.startTicks})) {
        return EndOutcome::Unavailable;
    }
    // Protected: the kernel would take the signal for these, and do nothing.
    return id == kInit || stat.isKernelThread() ? EndOutcome::Unavailable : kill(process);
}

} // namespace platform
