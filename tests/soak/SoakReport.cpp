// The table at the end of a soak run, and what is wrong in it.
#include "soak/SoakRun.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr double kMostGrowth = 8; // MiB: the noise of caches and of the allocator
constexpr int kMostNewDescriptors = 4;
constexpr int kMostProcessFiles = 64; // more than two for each process there is
constexpr int kMostNewThreads = 2;
constexpr int kMostNewOnServer = 16; // windows, pictures, cursors; a toast alone has several

void row(const char *name, const QString &value)
{
    std::printf("  %-52s %s\n", name, qPrintable(value));
}

void row(const char *name, int value)
{
    row(name, QString::number(value));
}

QString worst(const BlockWatch::Worst &worst)
{
    return QStringLiteral("%1 ms (wall %2, CPU %3; %4)")
        .arg(worst.milliseconds, 0, 'f', 1)
        .arg(worst.wall, 0, 'f', 1)
        .arg(worst.cpu, 0, 'f', 1)
        .arg(worst.what);
}

QString inWords(int number)
{
    return QString::number(number);
}

QString inWords(double number)
{
    return QString::number(number, 'f', 1);
}

} // namespace

void SoakRun::printWork() const
{
    const QString skipped = QStringLiteral("skipped: no small volume");
    const bool hasVolume = !walk.smallVolume.isEmpty();
    row("steps", walk.steps);
    row("toasts", walk.toasts);
    row("tasks ended", walk.endedTasks);
    row("processes started beside it, a second", stormRates.join(QStringLiteral(", ")));
    row("cleanings of the temporary folder", walk.cleanings);
    row("  on a disk that was full", hasVolume ? QString::number(walk.fullTemps) : skipped);
    row("exports to a disk that was full", hasVolume ? QString::number(walk.fullDisks) : skipped);
    row("log lines, complete, in order, with the right time",
        complaints.isEmpty() ? QString::number(log.lines) : QStringLiteral("NO"));
    row("jumps of the wall clock, up to 36 h back and forth", wallClock.jumps);
    row("  dashboard without the right time, longest",
        QStringLiteral("%1 ms").arg(wallClock.longestWrong, 0, 'f', 0));
    row("rows of the process table that were looked at", figures.rows);
    row("  highest load of a process", QStringLiteral("%1 %").arg(figures.highestCpu, 0, 'f', 1));
}

void SoakRun::printBlocks() const
{
    row("GUI thread not there for the user, longest", worst(watch.usual));
    row("  over 100 ms of own work, or asleep for that long",
        static_cast<int>(watch.overLimit.size()));
    row("  with the wait for a processor",
        QStringLiteral("%1 ms").arg(watch.longestWall, 0, 'f', 1));
    row("  where the operation blocks by design", worst(watch.byDesign));
}

void SoakRun::printResources() const
{
    const auto all = [this](const auto Resources::*figure) {
        QStringList words;
        for (const Resources &resources : taken) {
            words.append(inWords(resources.*figure));
        }
        return words.join(QStringLiteral(" / "));
    };
    row("memory in use, MiB, at start and after each quarter", all(&Resources::residentMiB));
    row("  shared with the display server", all(&Resources::sharedMiB));
    row("  allocated", all(&Resources::heapMiB));
    row("open descriptors", all(&Resources::descriptors));
    row("  and of files of processes", all(&Resources::processFiles));
    row("threads", all(&Resources::threads));
    row("resources of the display server", all(&Resources::onServer));
}

void SoakRun::judgeGrowth()
{
    const Resources &warm = taken.at(1);
    const Resources &atEnd = taken.constLast();
    const double growth =
        std::max(atEnd.residentMiB - warm.residentMiB, atEnd.heapMiB - warm.heapMiB);
    if (growth > kMostGrowth) {
        complaints.append(QStringLiteral("the memory grew by %1 MiB").arg(growth, 0, 'f', 1));
    }
    const auto judge = [this](const char *what, int more, int most) {
        if (more > most) {
            complaints.append(QStringLiteral("%1 more %2").arg(more).arg(QLatin1String(what)));
        }
    };
    judge("descriptors", atEnd.descriptors - warm.descriptors, kMostNewDescriptors);
    judge("threads", atEnd.threads - warm.threads, kMostNewThreads);
    judge("resources of the display server", atEnd.onServer - warm.onServer, kMostNewOnServer);
    judge("files of processes than two for each",
          atEnd.processFiles - 2 * atEnd.processes,
          kMostProcessFiles);
    if (atEnd.onServer <= 0) {
        complaints.append(QStringLiteral("the display server did not tell what it holds"));
    }
}

bool SoakRun::report()
{
    std::printf("\nSoak run of %lld s\n", static_cast<long long>(length.count()));
    printWork();
    printBlocks();
    printResources();
    for (const QString &block : std::as_const(watch.overLimit)) {
        complaints.append(QStringLiteral("the GUI thread was blocked: ") + block);
    }
    judgeGrowth();
    complaints += wallClock.complaints() + figures.complaints;
    for (const QString &complaint : std::as_const(complaints)) {
        std::printf("  WRONG: %s\n", qPrintable(complaint));
    }
    return complaints.isEmpty();
}
