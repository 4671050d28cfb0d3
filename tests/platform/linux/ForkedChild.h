// A process of the test's own, forked from it, that ends with its owner.
#pragma once

#include <array>
#include <csignal>
#include <functional>
#include <linux/sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testprocess {

class ForkedChild
{
public:
    // Runs `prepare` in the child and then waits for a signal. Comes back when `prepare` has. With `id`, the child gets that
    // identifier, where the system and the user's rights allow it; else isRunning() is false.
    explicit ForkedChild(const std::function<void()> &prepare, pid_t id = 0)
    {
        std::array<int, 2> ready{};
        if (::pipe(ready.data()) != 0) {
            return;
        }
        child = id == 0 ? ::fork() : forkAs(id);
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            prepare();
            ::close(ready[0]);
            ::close(ready[1]);
            while (true) {
                ::pause();
            }
        }
        ::close(ready[1]);
        char nothing = 0;
        while (child > 0 && ::read(ready[0], &nothing, 1) > 0) { }
        ::close(ready[0]);
    }
    ~ForkedChild() { end(); }
    ForkedChild(const ForkedChild &) = delete;
    ForkedChild &operator=(const ForkedChild &) = delete;

    bool isRunning() const { return child > 0; }
    pid_t id() const { return child; }

    void end()
    {
        if (child > 0) {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
            child = -1;
        }
    }

    // The signal that ended it, waited for; 0 when it ended otherwise.
    int waitForSignal()
    {
        int status = 0;
        ::waitpid(child, &status, 0);
        child = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    static pid_t forkAs(pid_t id)
    {
        struct clone_args arguments
        { };
        arguments.exit_signal = SIGCHLD;
        arguments.set_tid = reinterpret_cast<__u64>(&id);
        arguments.set_tid_size = 1;
        return static_cast<pid_t>(::syscall(SYS_clone3, &arguments, sizeof(arguments)));
    }

    pid_t child = -1;
};

// Runs the test in a process of its own and says whether it came to its end with true.
inline bool passesInFork(const std::function<bool()> &test)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(test() ? 0 : 1);
    }
    int status = 1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace testprocess
