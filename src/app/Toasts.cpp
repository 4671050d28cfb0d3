// Everything that ends up as a notification on the screen.
#include "app/MainWindow.h"
#include "core/OptimizerCore.h"
#include "notify/DesktopToastManager.h"

#include <QSlider>
#include <algorithm>
#include <utility>

namespace {

constexpr int kLastPosition = DesktopToastManager::BottomCenter;
constexpr int kInitialOffset = 16; // px

const MainWindow *announcedTo = nullptr; // the core has one receiver: the window that came last

QString stateLine(bool running, bool success)
{
    if (running) {
        return QStringLiteral("Running...");
    }
    return success ? QStringLiteral("Done [OK]") : QStringLiteral("Failed [X]");
}

} // namespace

void MainWindow::setupToasts()
{
    toastManager = new DesktopToastManager(this);
}

// The core announces on whatever thread it runs, with its lock held: here it is only posted.
void MainWindow::setupToastBridge()
{
    announcedTo = this;
    OptimizerCore::setToastCallback(
        [this](const std::string &title, const std::string &text, bool running, bool success) {
            QMetaObject::invokeMethod(
                this,
                [this,
                 title = QString::fromStdString(title),
                 text = QString::fromStdString(text),
                 running,
                 success] { showActionToast(title, text, running, success, false); },
                Qt::QueuedConnection);
        });
}

// Unless another window has taken the announcements over.
void MainWindow::releaseToastBridge()
{
    if (announcedTo == this) {
        announcedTo = nullptr;
        OptimizerCore::setToastCallback({});
    }
}

void MainWindow::showActionToast(
    const QString &title, const QString &text, bool running, bool success, bool /*unused*/)
{
    if (toastManager != nullptr) {
        toastManager->showToast(title, text, stateLine(running, success), success, !running);
    }
}

void MainWindow::onProcessWatcherToast(
    const QString &title, const QString &text, const QString &state, bool success, bool autoDismiss)
{
    if (toastManager == nullptr) {
        return;
    }
    toastManager->showToast(title, text, state, success, autoDismiss);
    log(title + QStringLiteral(": ") + text);
}

void MainWindow::onNotifPositionChanged(int index)
{
    if (toastManager != nullptr) {
        const int position = std::clamp(index, 0, kLastPosition);
        toastManager->setPosition(static_cast<DesktopToastManager::Position>(position));
    }
}

void MainWindow::onNotifOffsetXChanged(int x)
{
    if (toastManager != nullptr) {
        toastManager->setOffset(
            x, settings.offsetY != nullptr ? settings.offsetY->value() : kInitialOffset);
    }
}

void MainWindow::onNotifOffsetYChanged(int y)
{
    if (toastManager != nullptr) {
        toastManager->setOffset(
            settings.offsetX != nullptr ? settings.offsetX->value() : kInitialOffset, y);
    }
}

void MainWindow::reportFailure(const QString &what)
{
    const QString action = std::exchange(runningAction, QString());
    if (action.isEmpty()) {
        log(QStringLiteral("Unexpected error: ") + what);
        return;
    }
    showActionToast(action, what, false, false, false);
    log(action + QStringLiteral(": ") + what);
}
