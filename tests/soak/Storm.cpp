// Starts short-lived processes, so many a second, until it is ended: SoakStorm [PER_SECOND]. When asked to end it prints
// how many a second it has been.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kLife = std::chrono::milliseconds(20);

volatile std::sig_atomic_t isOver = 0;

void end(int /*signal*/)
{
    isOver = 1;
}

void startOne()
{
    const pid_t child = ::fork();
    if (child == 0) {
        std::this_thread::sleep_for(kLife);
        ::_exit(0);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const long perSecond = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 500;
    std::signal(SIGTERM, end);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM); // also when the window crashes // NOLINT(*-vararg)
    const auto start = Clock::now();
    const auto pause = std::chrono::nanoseconds(std::chrono::seconds(1)) / perSecond;
    long started = 0;
    while (isOver == 0) {
        startOne();
        ++started;
        while (::waitpid(-1, nullptr, WNOHANG) > 0) { }
        std::this_thread::sleep_until(start + pause * started);
    }
    const std::chrono::duration<double> seconds = Clock::now() - start;
    std::printf("%.0f\n", static_cast<double>(started) / seconds.count());
    return 0;
}
