// What one reading of all processes costs, per process, against `top -b` over the same ones: with as many files kept open as
// this process may have, and with the usual limit of 1,024.
#include "CpuClock.h"
#include "monitor/ProcessSampler.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kReadings = 20;
constexpr rlim_t kUsualLimit = 1024;

class Sleepers
{
public:
    explicit Sleepers(int count)
    {
        for (int i = 0; i < count; ++i) {
            const pid_t child = ::fork();
            if (child == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                while (true) {
                    ::pause();
                }
            }
            if (child > 0) {
                children.push_back(child);
            }
        }
    }
    ~Sleepers()
    {
        for (const pid_t child : children) {
            ::kill(child, SIGKILL);
        }
        for (const pid_t child : children) {
            ::waitpid(child, nullptr, 0);
        }
    }
    Sleepers(const Sleepers &) = delete;
    Sleepers &operator=(const Sleepers &) = delete;

private:
    std::vector<pid_t> children;
};

// CPU of a run of top over that many readings, in milliseconds; below 0 when it does not run.
double topMilliseconds(int readings)
{
    std::string count = std::to_string(readings);
    std::array<char *, 7> arguments = {const_cast<char *>("top"),
                                       const_cast<char *>("-b"),
                                       const_cast<char *>("-n"),
                                       count.data(),
                                       const_cast<char *>("-d"),
                                       const_cast<char *>("0.05"),
                                       nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    struct rusage usage
    { };
    const bool hasRun =
        ::posix_spawnp(&child, "top", &actions, nullptr, arguments.data(), environ) == 0
        && ::wait4(child, &status, 0, &usage) == child && status == 0;
    ::posix_spawn_file_actions_destroy(&actions);
    const auto milliseconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return hasRun ? milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime) : -1;
}

struct Cost
{
    double microseconds = 0; // per process and reading
    qsizetype processes = 0;
};

Cost measureSampler()
{
    ProcessSampler sampler;
    Cost cost;
    QObject::connect(
        &sampler, &ProcessSampler::snapshotReady, [&cost](const ProcessSnapshot &snapshot) {
            cost.processes = snapshot.rows.size();
        });
    sampler.sample(); // the first meets everything for the first time
    sampler.sample();
    const double start = cpuMilliseconds();
    for (int i = 0; i < kReadings; ++i) {
        sampler.sample();
    }
    cost.microseconds =
        (cpuMilliseconds() - start) * 1e3 / kReadings / static_cast<double>(cost.processes);
    return cost;
}

Cost measureWithLimit(rlim_t limit)
{
    struct rlimit before
    { };
    ::getrlimit(RLIMIT_NOFILE, &before);
    struct rlimit wanted = before;
    wanted.rlim_cur = std::min(limit, before.rlim_cur);
    ::setrlimit(RLIMIT_NOFILE, &wanted);
    const Cost cost = measureSampler();
    ::setrlimit(RLIMIT_NOFILE, &before);
    return cost;
}

void measure(int wanted)
{
    const Sleepers sleepers(wanted);
    const Cost own = measureSampler();
    const Cost usual = measureWithLimit(kUsualLimit);
    const double top = (topMilliseconds(kReadings + 1) - topMilliseconds(1)) * 1e3 / kReadings
        / static_cast<double>(own.processes);
    std::printf("%10lld %12.2f %16.2f %10.2f %8.2f %16.2f\n",
                static_cast<long long>(own.processes),
                own.microseconds,
                usual.microseconds,
                top,
                own.microseconds / top,
                usual.microseconds / top);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    std::printf("%10s %12s %16s %10s %8s %16s\n",
                "processes",
                "reading us",
                "1024 files us",
                "top us",
                "ratio",
                "ratio 1024 files");
    for (const int processes : {200, 1000, 5000}) {
        measure(processes);
    }
    return 0;
}
