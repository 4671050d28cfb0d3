#include "soak/SoakRun.h"

#include "app/MainWindow.h"

#include <QApplication>
#include <QPixmapCache>
#include <cstdio>

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenSteps = 60ms;
constexpr auto kUntilQuiet =
    4500ms; // longer than a toast stands, than a command runs and than a reading takes
constexpr int kWarmUpShare = 4; // of the whole run
constexpr double kMostGrowth = 8; // MiB: the noise of caches and of the allocator
constexpr int kMostNewDescriptors = 4;
constexpr int kMostProcessFiles = 64; // more than two for each process there is

void row(const char *name, const QString &value)
{
    std::printf("  %-52s %s\n", name, qPrintable(value));
}

QString worst(const BlockWatch::Worst &worst)
{
    return QStringLiteral("%1 ms (wall %2, CPU %3; %4)")
        .arg(worst.milliseconds, 0, 'f', 1)
        .arg(worst.wall, 0, 'f', 1)
        .arg(worst.cpu, 0, 'f', 1)
        .arg(worst.what);
}

} // namespace

SoakRun::SoakRun(MainWindow &soaked, BlockWatch &watching, std::chrono::seconds wanted)
    : walk(soaked, watching, log)
    , window(soaked)
    , watch(watching)
    , log(soaked)
    , length(wanted)
{
    connect(&stepping, &QTimer::timeout, this, &SoakRun::go);
}

void SoakRun::start()
{
    atStart = Resources::now();
    clock.start();
    startStorm();
    stepping.start(kBetweenSteps);
}

void SoakRun::go()
{
    if (QApplication::activeModalWidget() != nullptr) {
        return; // the question is answered first
    }
    const auto gone = std::chrono::milliseconds(clock.elapsed());
    if (!isWarm && gone > length / kWarmUpShare) {
        settle([this] {
            isWarm = true;
            warm = Resources::now();
            startStorm();
            stepping.start();
        });
    } else if (gone > length) {
        settle([this] {
            atEnd = Resources::now();
            QCoreApplication::quit();
        });
    } else {
        walk.step();
    }
}

// Lets everything come to its end, checks the log, and throws away what a user could throw away.
void SoakRun::settle(const std::function<void()> &then)
{
    stepping.stop();
    endStorm();
    QTimer::singleShot(kUntilQuiet, this, [this, then] {
        watch.setKind(BlockWatch::Kind::Ignored);
        walk.calmDown();
        QPixmapCache::clear();
        complaints += log.verify();
        QTimer::singleShot(kUntilQuiet, this, then);
    });
}

void SoakRun::startStorm()
{
    storm.start(QStringLiteral(VELTRA_SOAK_STORM), {QStringLiteral("500")});
}

void SoakRun::endStorm()
{
    storm.terminate();
    storm.waitForFinished();
    stormRates.append(QString::fromLatin1(storm.readAllStandardOutput().trimmed()));
}

bool SoakRun::report()
{
    const double growth = atEnd.residentMiB - warm.residentMiB;
    const double heapGrowth = atEnd.heapMiB - warm.heapMiB;
    const int descriptors = atEnd.descriptors - warm.descriptors;
    const auto figures = [](double start, double later, double end) {
        return QStringLiteral("%1 / %2 / %3")
            .arg(start, 0, 'f', 1)
            .arg(later, 0, 'f', 1)
            .arg(end, 0, 'f', 1);
    };
    std::printf("\nSoak run of %lld s\n", static_cast<long long>(length.count()));
    row("steps, cleanings, toasts",
        QStringLiteral("%1, %2, %3").arg(walk.steps).arg(walk.cleanings).arg(walk.toasts));
    row("processes started beside it, a second", stormRates.join(QStringLiteral(", ")));
    row("exports to a disk that was full",
        walk.smallVolume.isEmpty() ? QStringLiteral("skipped: no small volume")
                                   : QString::number(walk.fullDisks));
    row("log lines, complete and in order",
        complaints.isEmpty() ? QString::number(log.lines) : QStringLiteral("NO"));
    row("GUI thread not there for the user, longest", worst(watch.usual));
    row("  over 100 ms of own work, or asleep for over 500 ms", QString::number(watch.overLimit));
    row("  with the wait for a processor",
        QStringLiteral("%1 ms").arg(watch.longestWall, 0, 'f', 1));
    row("  where the operation blocks by design", worst(watch.byDesign));
    row("resident MiB at start / warm / end",
        figures(atStart.residentMiB, warm.residentMiB, atEnd.residentMiB));
    row("allocated MiB at start / warm / end",
        figures(atStart.heapMiB, warm.heapMiB, atEnd.heapMiB));
    row("open descriptors at start / warm / end",
        QStringLiteral("%1 / %2 / %3")
            .arg(atStart.descriptors)
            .arg(warm.descriptors)
            .arg(atEnd.descriptors));
    row("  and of files of processes",
        QStringLiteral("%1 / %2 / %3")
            .arg(atStart.processFiles)
            .arg(warm.processFiles)
            .arg(atEnd.processFiles));
    if (watch.overLimit > 0) {
        complaints.append(QStringLiteral("the GUI thread was blocked"));
    }
    if (growth > kMostGrowth || heapGrowth > kMostGrowth) {
        complaints.append(QStringLiteral("the memory grew by %1 MiB").arg(growth, 0, 'f', 1));
    }
    if (descriptors > kMostNewDescriptors) {
        complaints.append(QStringLiteral("%1 more descriptors").arg(descriptors));
    }
    if (atEnd.processFiles > 2 * atEnd.processes + kMostProcessFiles) {
        complaints.append(
            QStringLiteral("files of %1 processes are kept open").arg(atEnd.processFiles / 2));
    }
    for (const QString &complaint : std::as_const(complaints)) {
        std::printf("  WRONG: %s\n", qPrintable(complaint));
    }
    return complaints.isEmpty();
}
