// Running a program without a terminal, and waiting for it within a limit.
#include "platform/Command.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

namespace {

// Programs that went on after their limit; their end is collected at the next run, so that none stays a zombie.
class Stragglers
{
public:
    void add(pid_t process)
    {
        const std::scoped_lock lock(mutex);
        processes.push_back(process);
    }

    void collect()
    {
        const std::scoped_lock lock(mutex);
        std::erase_if(processes,
                      [](pid_t process) { return ::waitpid(process, nullptr, WNOHANG) != 0; });
    }

private:
    std::mutex mutex;
    std::vector<pid_t> processes;
};

Stragglers &stragglers()
{
    static Stragglers instance;
    return instance;
}

// Whoever started this program may have left it a SIGCHLD that is ignored. Then the kernel forgets children that end, and
// nobody can wait for one.
void keepEndedChildren()
{
    struct sigaction action
    { };
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

std::optional<pid_t> spawn(const std::filesystem::path &file, const CommandLine &command)
{
    std::vector<std::string> words{command.program};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    std::vector<char *> pointers(words.size() + 1, nullptr);
    std::transform(words.begin(), words.end(), pointers.begin(), [](std::string &word) {
        return word.data();
    });

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, file.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(process) : std::nullopt;
}

// True once the process has ended. Kernels before 5.3 have no process descriptors: there the end is asked for in turn.
bool endsWithin(pid_t process, std::chrono::milliseconds limit)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kTurn(5);
    const auto deadline = Clock::now() + limit;
    const int descriptor = static_cast<int>(
        ::syscall(SYS_pidfd_open, process, 0)); // NOLINT(cppcoreguidelines-pro-type-vararg)
    bool ended = false;
    while (!ended) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() < 0) {
            break;
        }
        struct pollfd waiting
        {
            descriptor, POLLIN, 0
        };
        const auto turn = descriptor >= 0 ? left : std::min(left, kTurn);
        ::poll(&waiting, descriptor >= 0 ? 1 : 0, static_cast<int>(turn.count()));
        siginfo_t info{};
        ended = ::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0
            && info.si_pid == process;
        if (!ended && Clock::now() >= deadline) {
            break;
        }
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return ended;
}

} // namespace

RunOutcome runHidden(const CommandLine &command, std::chrono::milliseconds limit)
{
    stragglers().collect();
    keepEndedChildren();
    const auto file = findOnPath(command.program);
    const auto process = file ? spawn(*file, command) : std::nullopt;
    if (!process) {
        return RunOutcome::NotStarted;
    }
    if (!endsWithin(*process, limit)) {
        stragglers().add(*process);
        return RunOutcome::StillRunning;
    }
    int status = 0;
    ::waitpid(*process, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? RunOutcome::Succeeded
                                                         : RunOutcome::Failed;
}

} // namespace platform
