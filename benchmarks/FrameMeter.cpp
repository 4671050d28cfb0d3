#include "FrameMeter.h"

#include "CpuClock.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cmath>

double FrameCosts::quantile(double share) const
{
    if (frames.empty()) {
        return 0;
    }
    std::vector<double> sorted = frames;
    std::sort(sorted.begin(), sorted.end());
    const auto rank =
        static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
    return sorted[std::clamp<std::size_t>(rank, 1, sorted.size()) - 1];
}

FrameMeter::FrameMeter(int &argc, char **argv)
    : QApplication(argc, argv)
{ }

bool FrameMeter::notify(QObject *receiver, QEvent *event)
{
    const bool isFrame = receiver == watched && event->type() == QEvent::UpdateRequest;
    const bool result = QApplication::notify(receiver, event);
    if (isFrame) {
        endFrame();
    }
    return result;
}

void FrameMeter::endFrame()
{
    const double now = cpuMilliseconds();
    costs.frames.push_back(now - mark);
    mark = now;
}

FrameCosts FrameMeter::measure(QWidget &window, int count, const std::function<void(int)> &action)
{
    return measureFor(window, count, std::chrono::milliseconds(0), action);
}

FrameCosts FrameMeter::measureFor(QWidget &window,
                                  int count,
                                  std::chrono::milliseconds time,
                                  const std::function<void(int)> &action)
{
    runFor(std::chrono::milliseconds(50)); // what is still to be painted
    costs = {};
    for (int i = 0; i < count; ++i) {
        watched = &window;
        mark = cpuMilliseconds();
        action(i);
        runFor(time);
        watched = nullptr;
    }
    return std::exchange(costs, {});
}

void runFor(std::chrono::milliseconds time)
{
    QElapsedTimer clock;
    clock.start();
    QCoreApplication::processEvents();
    while (clock.elapsed() < time.count()) {
        QTimer::singleShot(
            static_cast<int>(time.count() - clock.elapsed()), QCoreApplication::instance(), [] {});
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}
