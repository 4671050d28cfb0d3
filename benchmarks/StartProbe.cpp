// Shows one window and prints when its first frame had been painted, in nanoseconds of the monotonic clock.
//   StartProbe bare     an empty window of the toolkit
//   StartProbe veltra   the program's window
#include "app/MainWindow.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

// The paint of a whole window happens inside the handling of one event; the frame is out when that has returned.
class FirstFrame : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !seen) {
            seen = true;
            QTimer::singleShot(0, this, [] {
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                std::printf("%lld\n",
                            static_cast<long long>(
                                std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
                QCoreApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool seen = false;
};

} // namespace

int main(int argc, char **argv)
{
    const bool bare = argc > 1 && std::string_view(argv[1]) == "bare";
    QApplication application(argc, argv);
    std::unique_ptr<QWidget> window;
    if (bare) {
        window = std::make_unique<QWidget>();
        window->resize(1100, 680);
    } else {
        window = std::make_unique<MainWindow>();
    }
    FirstFrame filter;
    window->installEventFilter(&filter);
    window->show();
    return QApplication::exec();
}
