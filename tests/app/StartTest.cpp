// The way from the entry to the exit code, with whatever arguments. A program of its own: it makes the application.
#include "app/Start.h"

#include "app/MainWindow.h"
#include "fakes/ScriptedPlatform.h"

#include <QApplication>
#include <QCursor>
#include <QStackedWidget>
#include <QTimer>
#include <array>
#include <cstdio>

namespace {

int failures = 0;
bool waitedDuringConstruction = false;
bool waitedUntilDressed = false;
bool isGoneWhenShown = false;
bool reachedTheLoop = false;

bool isWaiting()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
}

// Looks at the cursor at the end of the construction, when the window is given its look, and when it is shown.
class Watcher : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange
            && watched->objectName() == QLatin1String("rootSurface")) {
            waitedUntilDressed = isWaiting();
        }
        if (event->type() == QEvent::Show && qobject_cast<MainWindow *>(watched) != nullptr) {
            isGoneWhenShown = QGuiApplication::overrideCursor() == nullptr;
        }
        return false;
    }
};

void check(bool condition, const char *what)
{
    std::printf("%s: %s\n", condition ? "PASS" : "FAIL", what);
    failures += condition ? 0 : 1;
}

void inspectAndClose()
{
    reachedTheLoop = true;
    check(QGuiApplication::overrideCursor() == nullptr, "no wait cursor once the window is shown");
    const auto windows = QApplication::topLevelWidgets();
    MainWindow *window = nullptr;
    for (QWidget *widget : windows) {
        window = window == nullptr ? qobject_cast<MainWindow *>(widget) : window;
    }
    check(window != nullptr && window->isVisible(), "the window is visible");
    check(window != nullptr && window->windowState() == Qt::WindowNoState,
          "the window is neither maximised nor full screen");
    check(window != nullptr && window->size() == QSize(1100, 680), "the window has its size");
    check(window != nullptr && window->pageStack->currentIndex() == 0, "the dashboard is shown");
    check(QCoreApplication::organizationName().isEmpty(), "no organisation name is set");
    check(qApp->styleSheet().isEmpty(), "the application has no style sheet");
    if (window != nullptr) {
        window->close();
    }
}

void plan()
{
    fakes::scriptedPlatform().onDiskName = [] {
        waitedDuringConstruction = isWaiting();
    };
    static Watcher watcher;
    qApp->installEventFilter(&watcher);
    QTimer::singleShot(0, qApp, inspectAndClose);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(plan)

int main()
{
    char program[] = "VeltraOptimizer"; // NOLINT(modernize-avoid-c-arrays)
    char unknown[] = "--no-such-option"; // NOLINT(modernize-avoid-c-arrays)
    char file[] = "a file.txt"; // NOLINT(modernize-avoid-c-arrays)
    std::array<char *, 4> arguments{program, unknown, file, nullptr};
    const int result = qMain(3, arguments.data());
    check(reachedTheLoop, "the event loop ran");
    check(waitedDuringConstruction, "a wait cursor during construction");
    check(waitedUntilDressed, "a wait cursor until the window has its look");
    check(isGoneWhenShown, "no wait cursor when the window is shown");
    check(result == 0, "exit code 0 after a normal close");
    return failures == 0 ? 0 : 1;
}
