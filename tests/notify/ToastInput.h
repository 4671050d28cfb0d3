// What the tests of the toasts share: parts by name, the toasts that exist, and the end of their lives.
#pragma once

#include "notify/DesktopToast.h"
#include "notify/DesktopToastManager.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

namespace toastinput {

inline QLabel *label(const QWidget *toast, const char *name)
{
    return toast->findChild<QLabel *>(QString::fromLatin1(name));
}

inline QPushButton *closeButton(const QWidget *toast)
{
    return toast->findChild<QPushButton *>(QStringLiteral("toastClose"));
}

inline QList<DesktopToast *> liveToasts()
{
    QList<DesktopToast *> toasts;
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *toast = qobject_cast<DesktopToast *>(widget)) {
            toasts.append(toast);
        }
    }
    return toasts;
}

// Deletes what asked for it.
inline void bury()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The toast that this call made.
inline DesktopToast *show(DesktopToastManager &manager,
                          const QString &text = QStringLiteral("Text"),
                          bool autoDismiss = false)
{
    const auto before = liveToasts();
    manager.showToast(QStringLiteral("Title"), text, QStringLiteral("State"), true, autoDismiss);
    const auto after = liveToasts();
    for (DesktopToast *toast : after) {
        if (!before.contains(toast)) {
            return toast;
        }
    }
    return nullptr;
}

} // namespace toastinput
