#include "soak/SoakRun.h"

#include "app/MainWindow.h"
#include "monitor/ProcessWatcherWidget.h"

#include <QApplication>
#include <QPixmapCache>
#include <QTableWidget>

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenSteps = 60ms;
constexpr auto kUntilQuiet =
    4500ms; // longer than a toast stands, than a command runs and than a reading takes
constexpr int kQuarters = 4;

} // namespace

SoakRun::SoakRun(MainWindow &soaked, BlockWatch &watching, std::chrono::seconds wanted)
    : walk(soaked, watching, log)
    , window(soaked)
    , watch(watching)
    , log(soaked)
    , wallClock(soaked, watching)
    , figures(soaked.processWatcher->findChild<QTableWidget *>())
    , length(wanted)
{
    connect(&stepping, &QTimer::timeout, this, &SoakRun::go);
}

void SoakRun::start()
{
    taken = {Resources::now()};
    clock.start();
    wallClock.start();
    startStorm();
    stepping.start(kBetweenSteps);
}

void SoakRun::go()
{
    if (QApplication::activeModalWidget() != nullptr || walk.isPressing()) {
        return; // one thing after the other
    }
    if (std::chrono::milliseconds(clock.elapsed()) <= length / kQuarters) {
        walk.step();
        return;
    }
    settle([this] {
        taken.append(Resources::now());
        if (taken.size() > kQuarters) {
            QCoreApplication::quit();
            return;
        }
        startStorm();
        clock.start();
        stepping.start();
    });
}

// Lets everything come to its end, checks the log, and throws away what a user could throw away.
void SoakRun::settle(const std::function<void()> &then)
{
    stepping.stop();
    watch.setKind(
        BlockWatch::Kind::Ignored); // until the next event: the wait for the storm is the run's own
    endStorm();
    QTimer::singleShot(0, this, [this] { watch.setKind(BlockWatch::Kind::Usual); });
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
