#include "soak/BlockWatch.h"

#include <QEvent>
#include <QThread>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Where this thread waits for a processor, the display server that it then waits for does so, too, and for longer.
constexpr double kServerShare = 2;

double milliseconds(clockid_t clock)
{
    struct timespec time
    { };
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

BlockWatch::BlockWatch(int &argc, char **argv)
    : Application(argc, argv)
    , schedule(::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC))
{ }

BlockWatch::Moment BlockWatch::now() const
{
    Moment moment{milliseconds(CLOCK_MONOTONIC), milliseconds(CLOCK_THREAD_CPUTIME_ID), 0};
    std::array<char, 96> text{};
    if (::pread(schedule, text.data(), text.size() - 1, 0) > 0) {
        char *rest = nullptr;
        std::strtoull(text.data(), &rest, 10); // the time that it ran
        moment.waited = static_cast<double>(std::strtoull(rest, nullptr, 10)) / 1e6;
    }
    return moment;
}

bool BlockWatch::notify(QObject *receiver, QEvent *event)
{
    if (QThread::currentThread() != thread()) {
        return Application::notify(receiver, event);
    }
    const int loop = QThread::currentThread()->loopLevel();
    if (loop == measuredLoop) { // sent from within a handler that is being measured
        return Application::notify(receiver, event);
    }
    const int outer = measuredLoop;
    if (outer != 0 && !isInner) {
        finish(0); // that handler waits in a loop of its own from here on
    }
    isInner = outer != 0;
    const int type = event->type();
    measuredLoop = loop;
    begin = now();
    const bool result = Application::notify(receiver, event);
    finish(type);
    isInner = outer != 0;
    measuredLoop = outer;
    begin = now();
    return result;
}

void BlockWatch::finish(int type)
{
    const Moment end = now();
    const double wall = end.wall - begin.wall;
    const double cpu = end.cpu - begin.cpu;
    const double waited = end.waited - begin.waited;
    const double busy = wall - waited;
    const double slept = busy - cpu - kServerShare * waited;
    if (kind == Kind::Ignored) {
        return;
    }
    if (kind == Kind::Usual) {
        longestWall = std::max(longestWall, wall);
    }
    Worst &worst = kind == Kind::Usual ? usual : byDesign;
    overLimit += kind == Kind::Usual && (cpu > kMostWork || slept > kLongestSleep) ? 1 : 0;
    if (busy > worst.milliseconds) {
        worst = {busy, wall, cpu, QStringLiteral("%1, event %2").arg(action).arg(type)};
    }
}
