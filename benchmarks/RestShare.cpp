#include "RestShare.h"

#include "CpuClock.h"
#include "FrameMeter.h"
#include "app/MainWindow.h"
#include "app/PerformanceMode.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>

namespace {

using namespace std::chrono_literals;

constexpr auto kSettling = 3s; // the first statistics, and the page's entrance
constexpr auto kMeasured = 10s;
constexpr double kPerCent = 100;

double shareOver(std::chrono::milliseconds time)
{
    QElapsedTimer clock;
    clock.start();
    const double start = cpuMilliseconds();
    runFor(time);
    return kPerCent * (cpuMilliseconds() - start) / static_cast<double>(clock.elapsed());
}

double shareIn(int mode, void (QWidget::*hideIt)() = nullptr)
{
    MainWindow window;
    window.show();
    window.settings.performanceMode->setCurrentIndex(mode);
    if (hideIt != nullptr) {
        runFor(1s);
        (window.*hideIt)();
    }
    runFor(kSettling);
    return shareOver(kMeasured);
}

double residentMebibytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    constexpr double kPagesInMebibyte = 256;
    return file.readAll().split(' ').value(1).toDouble() / kPagesInMebibyte;
}

} // namespace

QJsonObject measureRest()
{
    return {{"1 High", shareIn(performance::High)},
            {"2 Middle", shareIn(performance::Middle)},
            {"3 Low Memory", shareIn(performance::LowMemory)},
            {"4 High, minimised", shareIn(performance::High, &QWidget::showMinimized)},
            {"5 High, hidden", shareIn(performance::High, &QWidget::hide)}};
}

QJsonObject measureMemory()
{
    MainWindow window;
    window.show();
    runFor(10s);
    const double early = residentMebibytes();
    runFor(590s);
    return {{"1 after 10 s", early}, {"2 after 10 min", residentMebibytes()}};
}
