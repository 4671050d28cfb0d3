#include "soak/BlockWatch.h"

#include <QDir>
#include <QEvent>
#include <QFile>
#include <QThread>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace {

double milliseconds(clockid_t clock)
{
    struct timespec time
    { };
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// How long a thread was at work, and how long it waited for a processor, in milliseconds.
struct Schedule
{
    double ran = 0;
    double waited = 0;
};

Schedule scheduleOf(int file)
{
    constexpr double kNanosecondsPerMillisecond = 1e6;
    std::array<char, 96> text{};
    if (::pread(file, text.data(), text.size() - 1, 0) <= 0) {
        return {};
    }
    char *rest = nullptr;
    const auto ran = static_cast<double>(std::strtoull(text.data(), &rest, 10));
    const auto waited = static_cast<double>(std::strtoull(rest, nullptr, 10));
    return {ran / kNanosecondsPerMillisecond, waited / kNanosecondsPerMillisecond};
}

int openSchedule(const QByteArray &process)
{
    const QByteArray path = "/proc/" + process + "/schedstat";
    return ::open(path.constData(), O_RDONLY | O_CLOEXEC); // NOLINT(*-vararg)
}

// The toolkit's threads that the GUI thread waits for.
QList<QByteArray> helpingThreads()
{
    QList<QByteArray> found;
    const QStringList threads =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        QFile file(QStringLiteral("/proc/self/task/%1/comm").arg(thread));
        const QByteArray name =
            file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
        if (name == "QXcbEventQueue" || name.startsWith("Thread (pooled")) {
            found.append(thread.toLatin1());
        }
    }
    return found;
}

} // namespace

BlockWatch::BlockWatch(int &argc, char **argv)
    : Application(argc, argv)
    , schedule(openSchedule("thread-self"))
{
    const auto processes = qgetenv("VELTRA_SOAK_DISPLAY").split(' ');
    for (const QByteArray &process : processes) {
        displaySchedules.append(openSchedule(process));
    }
    constexpr int kFindEvery = 500; // ms
    connect(&finding, &QTimer::timeout, this, &BlockWatch::findHelpers);
    finding.start(kFindEvery);
}

// The measure of the present handler begins anew, since what it is taken with changes.
void BlockWatch::findHelpers()
{
    for (const int file : std::as_const(threadSchedules)) {
        ::close(file);
    }
    threadSchedules.clear();
    const auto threads = helpingThreads();
    for (const QByteArray &thread : threads) {
        threadSchedules.append(openSchedule("self/task/" + thread));
    }
    begin = now();
}

double BlockWatch::waitedForProcessor() const
{
    return scheduleOf(schedule).waited;
}

BlockWatch::Moment BlockWatch::now() const
{
    double helpers = 0;
    for (const int file : displaySchedules + threadSchedules) {
        const Schedule shown = scheduleOf(file);
        helpers += shown.ran + shown.waited;
    }
    struct rusage usage
    { };
    ::getrusage(RUSAGE_THREAD, &usage);
    return {milliseconds(CLOCK_MONOTONIC),
            milliseconds(CLOCK_THREAD_CPUTIME_ID),
            scheduleOf(schedule).waited,
            helpers,
            usage.ru_nvcsw};
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
    measured = receiver->metaObject()->className();
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
    const double slept = end.sleeps > begin.sleeps ? busy - cpu - (end.helpers - begin.helpers) : 0;
    if (kind == Kind::Ignored) {
        return;
    }
    if (kind == Kind::Usual) {
        longestWall = std::max(longestWall, wall);
    }
    Worst &worst = kind == Kind::Usual ? usual : byDesign;
    const QString what =
        QStringLiteral("%1, event %2 of %3").arg(action).arg(type).arg(QLatin1String(measured));
    if (kind == Kind::Usual && (cpu > kLimit || slept > kLimit)) {
        overLimit.append(
            QStringLiteral("%1 ms at work, %2 ms asleep: %3").arg(cpu).arg(slept).arg(what));
    }
    if (busy > worst.milliseconds) {
        worst = {busy, wall, cpu, what};
    }
}
