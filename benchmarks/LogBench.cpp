// What a line of the activity log costs at the beginning and after a hundred thousand lines.
#include "app/MainWindow.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <ctime>

namespace {

double cpuMicroseconds()
{
    struct timespec now
    { };
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

double perLine(MainWindow &window, int lines)
{
    const double start = cpuMicroseconds();
    for (int i = 0; i < lines; ++i) {
        window.log(QStringLiteral("Temp cleaned. Deleted 12 items."));
    }
    return (cpuMicroseconds() - start) / lines;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    MainWindow window;
    window.show();
    window.onNavChanged(MainWindow::CleanerPage);
    const auto timers = window.findChildren<QTimer *>();
    for (QTimer *timer : timers) {
        timer->stop();
    }
    constexpr int kSample = 200;
    perLine(window, 10);
    const double early = perLine(window, kSample);
    perLine(window, 100'000);
    const double late = perLine(window, kSample);
    std::printf("log line: %.1f us at the beginning, %.1f us after 100000 lines, ratio %.2f\n",
                early,
                late,
                late / early);
    return 0;
}
