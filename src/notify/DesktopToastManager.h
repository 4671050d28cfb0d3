// Places, stacks and dismisses the desktop notifications.
#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>

class DesktopToast;

// Stacks toasts in a corner, or at the top or bottom centre, of the screen under the mouse cursor. A new toast lands
// beyond the far end of the stack and moves no other; the next re-layout orders the stack by age, the newest nearest to
// the anchor. The toasts are windows of their own: they are deleted when they are removed, or with the manager. All
// lengths in px, all places global. GUI thread.
class DesktopToastManager : public QObject
{
    Q_OBJECT

public:
    // In the order of the settings page.
    enum Position : int { TopRight, TopLeft, BottomRight, BottomLeft, TopCenter, BottomCenter };
    Q_ENUM(Position)

    explicit DesktopToastManager(QObject *parent = nullptr);
    ~DesktopToastManager() override;

    // Any number of toasts can stand at the same time. With `autoDismiss` the toast fades out after 3200 ms, without it
    // stands until it is closed.
    void showToast(const QString &title,
                   const QString &text,
                   const QString &state,
                   bool success,
                   bool autoDismiss);

    // Both re-layout. Neither checks its values: callers clamp them.
    void setPosition(Position newPosition);
    void setOffset(int x, int y);

    // Without the task bar: the screen under the cursor, else the primary one, else 1920 x 1080 at the origin.
    QRect activeScreenGeometry() const;

    // The top left corner of the only toast.
    QPoint anchorPoint(const QSize &size, const QRect &screen) const;

    // Every toast is in its place when this returns; nothing is animated.
    void relayout();

public slots:
    // Deletes the toast on the next turn of the event loop, and re-layouts; where many have faded out, once for all of them
    // on that turn. Tolerates null, a toast that has been removed before, and one that was never shown here.
    void removeToast(DesktopToast *toast);

private:
    bool isAtTop() const;
    int stackHeight(const DesktopToast *except) const;

    QList<QPointer<DesktopToast>> toasts; // newest first; an entry becomes null when its toast dies
    Position position = TopRight;
    bool isRelayoutQueued = false;
    int offsetX = 16; // from the anchoring edge; at the centre, to the right
    int offsetY = 16; // from the anchoring edge
};
