// CPU of re-stacking 200 toasts: when one goes, when a settings slider is dragged, and when all dismiss themselves.
// Needs a display.
#include "notify/DesktopToast.h"
#include "notify/DesktopToastManager.h"

#include <QApplication>
#include <QPushButton>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr int kToasts = 200;

double cpuMilliseconds()
{
    struct timespec now
    { };
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double cpuOf(const std::function<void()> &work)
{
    const double start = cpuMilliseconds();
    work();
    return cpuMilliseconds() - start;
}

std::vector<DesktopToast *> liveToasts()
{
    std::vector<DesktopToast *> toasts;
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *toast = qobject_cast<DesktopToast *>(widget)) {
            toasts.push_back(toast);
        }
    }
    return toasts;
}

void showAll(DesktopToastManager &manager, bool autoDismiss)
{
    for (int i = 0; i < kToasts; ++i) {
        manager.showToast(
            QStringLiteral("Clean Temp"),
            QStringLiteral("Toast %1 of many, with a text of two lines or so.").arg(i),
            QStringLiteral("Done"),
            i % 2 == 0,
            autoDismiss);
    }
}

// Lets the event loop run while any toast is in the state that `unsettled` tells.
void runWhile(bool (*unsettled)(const DesktopToast *))
{
    for (auto toasts = liveToasts(); std::any_of(toasts.begin(), toasts.end(), unsettled);
         toasts = liveToasts()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void waitUntilAllStand()
{
    runWhile([](const DesktopToast *toast) { return toast->windowOpacity() < 1.0; });
}

void waitUntilAllAreGone()
{
    runWhile([](const DesktopToast * /*toast*/) { return true; });
}

void print(const char *what, std::vector<double> figures)
{
    std::sort(figures.begin(), figures.end());
    std::printf("%-38s median %7.3f ms, worst %7.3f ms\n",
                what,
                figures.at(figures.size() / 2),
                figures.back());
}

// The newest stands nearest to the anchor, so that every other toast moves.
void closeNewestFirst()
{
    DesktopToastManager manager(nullptr);
    showAll(manager, false);
    waitUntilAllStand();
    std::vector<double> figures;
    for (auto toasts = liveToasts(); !toasts.empty(); toasts = liveToasts()) {
        auto *nearest = *std::min_element(toasts.begin(), toasts.end(), [](auto *one, auto *other) {
            return one->y() < other->y();
        });
        auto *button = nearest->findChild<QPushButton *>();
        figures.push_back(cpuOf([button] { button->click(); }));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    print("one of 200 closed, newest first", figures);
}

void dragOffset()
{
    DesktopToastManager manager(nullptr);
    showAll(manager, false);
    waitUntilAllStand();
    std::vector<double> figures;
    for (int offset = 0; offset <= 120; ++offset) {
        figures.push_back(cpuOf([&manager, offset] { manager.setOffset(offset, offset); }));
        QCoreApplication::processEvents();
    }
    print("200 moved by a dragged offset", figures);
}

// All that were shown in one go end their fades in one go: 200 removals, each with a re-layout, in a frame or two.
double removeTogether()
{
    DesktopToastManager manager(nullptr);
    showAll(manager, false);
    waitUntilAllStand();
    auto oldestFirst = liveToasts();
    std::sort(oldestFirst.begin(), oldestFirst.end(), [](auto *one, auto *other) {
        return one->y() < other->y(); // no re-layout yet: the newest is the farthest
    });
    const double figure = cpuOf([&manager, &oldestFirst] {
        for (DesktopToast *toast : oldestFirst) {
            manager.removeToast(toast);
        }
    });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return figure;
}

void removeTogetherRepeatedly()
{
    std::vector<double> figures(7);
    std::generate(figures.begin(), figures.end(), removeTogether);
    print("200 removed in one frame, oldest first", figures);
}

void dismissThemselves()
{
    DesktopToastManager manager(nullptr);
    const double shown = cpuOf([&manager] { showAll(manager, true); });
    const double whole = cpuOf([] { waitUntilAllAreGone(); });
    std::printf("200 shown: %.3f ms a toast; their lives, fades and ends: %.3f ms a toast\n",
                shown / kToasts,
                whole / kToasts);
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    closeNewestFirst();
    dragOffset();
    removeTogetherRepeatedly();
    dismissThemselves();
    return 0;
}
