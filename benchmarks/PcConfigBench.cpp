// What the PC Config page costs where there is no PowerShell: being built, collection included, being refreshed, and its
// report.
#include "pcconfig/PCConfigPage.h"
#include "platform/HardwareInventory.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

struct Cost
{
    double median = 0; // ms
    double worst = 0;
};

Cost costOf(int rounds, const std::function<void()> &work)
{
    constexpr double kNanosecondsPerMillisecond = 1e6;
    std::vector<double> costs;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer time;
        time.start();
        work();
        costs.push_back(static_cast<double>(time.nsecsElapsed()) / kNanosecondsPerMillisecond);
    }
    std::sort(costs.begin(), costs.end());
    return {costs[costs.size() / 2], costs.back()};
}

void print(const char *what, const Cost &cost)
{
    std::printf("%s: median %.3f ms, worst %.3f ms\n", what, cost.median, cost.worst);
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int kFew = 50;
    constexpr int kMany = 2000;
    const QTemporaryDir nothing;
    qputenv("PATH", nothing.path().toLocal8Bit()); // nor anything else
    const QApplication application(argc, argv);
    print("PC Config, the first page built", costOf(1, [] { const PCConfigPage page(nullptr); }));
    print("PC Config, a page built", costOf(kFew, [] { const PCConfigPage page(nullptr); }));
    print("the platform's inventory alone", costOf(kFew, [] { platform::queryHardware(); }));
    PCConfigPage page(nullptr);
    page.show();
    print("PC Config refreshed", costOf(kFew, [&page] { page.refreshInfo(); }));
    print("PC Config report", costOf(kMany, [&page] { page.buildReport(); }));
    return 0;
}
