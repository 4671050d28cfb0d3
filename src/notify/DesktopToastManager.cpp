#include "notify/DesktopToastManager.h"

#include "notify/DesktopToast.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kDisplayTime = 3200ms;

// More than any screen shows. Hundreds that fade out together would each move all that are left.
constexpr qsizetype kMostToMoveAtOnce = 40;

// px
constexpr int kGap = 10; // between two toasts
constexpr int kSlideDistance = 22; // towards the end point, away from the anchoring edge
constexpr QRect kFallbackScreen(0, 0, 1920, 1080);

} // namespace

DesktopToastManager::DesktopToastManager(QObject *parent)
    : QObject(parent)
{ }

DesktopToastManager::~DesktopToastManager()
{
    for (const QPointer<DesktopToast> &toast : std::as_const(toasts)) {
        if (toast) {
            toast->hide();
            toast->deleteLater();
        }
    }
}

void DesktopToastManager::showToast(
    const QString &title, const QString &text, const QString &state, bool success, bool autoDismiss)
{
    auto *toast = new DesktopToast;
    toast->setPayload(title, text, state, success);
    connect(toast, &DesktopToast::closeRequested, this, &DesktopToastManager::removeToast);
    toasts.prepend(toast);

    const QSize size = toast->size().expandedTo(toast->sizeHint());
    const QPoint anchor = anchorPoint(size, activeScreenGeometry());
    const int direction = isAtTop() ? 1 : -1;
    const QPoint end = anchor + QPoint(0, direction * stackHeight(toast));
    toast->animateShow(end - QPoint(0, direction * kSlideDistance), end);

    if (autoDismiss) {
        QTimer::singleShot(kDisplayTime, Qt::PreciseTimer, toast, &DesktopToast::animateHide);
    }
}

void DesktopToastManager::setPosition(Position newPosition)
{
    position = newPosition;
    relayout();
}

void DesktopToastManager::setOffset(int x, int y)
{
    offsetX = x;
    offsetY = y;
    relayout();
}

QRect DesktopToastManager::activeScreenGeometry() const
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen != nullptr ? screen->availableGeometry() : kFallbackScreen;
}

QPoint DesktopToastManager::anchorPoint(const QSize &size, const QRect &screen) const
{
    const int left = screen.left() + offsetX;
    const int right = screen.right() - size.width() - offsetX;
    const int centre = (screen.left() + screen.right()) / 2 - size.width() / 2 + offsetX;
    const int top = screen.top() + offsetY;
    const int bottom = screen.bottom() - size.height() - offsetY;
    switch (position) {
    case TopLeft:
        return {left, top};
    case BottomRight:
        return {right, bottom};
    case BottomLeft:
        return {left, bottom};
    case TopCenter:
        return {centre, top};
    case BottomCenter:
        return {centre, bottom};
    case TopRight:
        break;
    }
    return {right, top};
}

void DesktopToastManager::relayout()
{
    isRelayoutQueued = false;
    const QRect screen = activeScreenGeometry();
    const int direction = isAtTop() ? 1 : -1;
    int stacked = 0;
    for (const QPointer<DesktopToast> &toast : std::as_const(toasts)) {
        if (!toast) {
            continue;
        }
        toast->settleAt(anchorPoint(toast->size(), screen) + QPoint(0, direction * stacked));
        stacked += toast->height() + kGap;
    }
}

void DesktopToastManager::removeToast(DesktopToast *toast)
{
    toasts.removeAll(toast);
    if (toast != nullptr) {
        toast->deleteLater();
    }
    const bool hasFaded = toast != nullptr && toast->hasFadedOut();
    const bool areMany = isRelayoutQueued || toasts.size() > kMostToMoveAtOnce;
    if (!hasFaded || !areMany) {
        relayout();
    } else if (!isRelayoutQueued) {
        isRelayoutQueued = true;
        QMetaObject::invokeMethod(this, &DesktopToastManager::relayout, Qt::QueuedConnection);
    }
}

// Whether the stack grows downwards. A position that has no name is anchored at the top, but grows upwards.
bool DesktopToastManager::isAtTop() const
{
    return position == TopRight || position == TopLeft || position == TopCenter;
}

int DesktopToastManager::stackHeight(const DesktopToast *except) const
{
    int height = 0;
    for (const QPointer<DesktopToast> &toast : std::as_const(toasts)) {
        if (toast && toast != except) {
            height += toast->height() + kGap;
        }
    }
    return height;
}
