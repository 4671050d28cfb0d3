// CPU per frame of the real window on each page, with the cached shadows and with the stock effect in their place, and
// the CPU of one statistics tick. Needs a display.
#include "app/MainWindow.h"
#include "ui/ParticleCanvas.h"

#include <QApplication>
#include <QGraphicsDropShadowEffect>
#include <QLabel>
#include <QPainter>
#include <QStackedWidget>
#include <QTimer>
#include <cstdio>
#include <ctime>
#include <functional>

namespace {

double cpuMilliseconds()
{
    struct timespec now
    { };
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// CPU per call of `change` and the frame that follows it.
double perFrame(QWidget &window, int frames, const std::function<void()> &change)
{
    QCoreApplication::processEvents();
    const double start = cpuMilliseconds();
    for (int i = 0; i < frames; ++i) {
        change();
        QCoreApplication::sendPostedEvents(&window, QEvent::UpdateRequest);
        QCoreApplication::processEvents();
    }
    return (cpuMilliseconds() - start) / frames;
}

void useStockEffects(QWidget &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const auto *cached = qobject_cast<QGraphicsDropShadowEffect *>(widget->graphicsEffect());
        if (cached == nullptr) {
            continue;
        }
        auto *stock = new QGraphicsDropShadowEffect(widget);
        stock->setBlurRadius(cached->blurRadius());
        stock->setColor(cached->color());
        stock->setOffset(cached->offset());
        widget->setGraphicsEffect(stock);
    }
}

struct Figures
{
    double animated = 0;
    double oneLabel = 0;
};

Figures measure(bool stock, int page)
{
    MainWindow window;
    window.show();
    window.onNavChanged(page);
    while (window.pageStack->currentWidget()->graphicsEffect() != nullptr) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const auto timers = window.findChildren<QTimer *>();
    for (QTimer *timer : timers) {
        timer->stop();
    }
    if (stock) {
        // The cards keep a pointer to their shadow for the hover; nothing hovers here.
        useStockEffects(window);
    }
    int tick = 0;
    Figures figures;
    figures.animated = perFrame(window, stock ? 30 : 300, [&] { window.tickParticles(); });
    auto *label = window.pageStack->currentWidget()->findChild<QLabel *>();
    figures.oneLabel = perFrame(
        window, stock ? 30 : 60, [&] { label->setText(QStringLiteral("Label %1").arg(++tick)); });
    return figures;
}

// Two blends of the window's size: less is not possible with translucent content above a moving background.
double floorOfAFrame()
{
    QImage target(1100, 680, QImage::Format_ARGB32_Premultiplied);
    QImage layer(target.size(), target.format());
    layer.fill(QColor(10, 20, 30, 120));
    target.fill(Qt::black);
    constexpr int kFrames = 300;
    const double start = cpuMilliseconds();
    QPainter painter(&target);
    for (int i = 0; i < kFrames; ++i) {
        painter.drawImage(0, 0, layer);
        painter.drawImage(0, 0, layer);
    }
    return (cpuMilliseconds() - start) / kFrames;
}

void printTick()
{
    MainWindow window;
    constexpr int kTicks = 2000;
    const double start = cpuMilliseconds();
    for (int i = 0; i < kTicks; ++i) {
        window.updateSystemStats();
    }
    std::printf("statistics tick without painting: %.4f ms\n",
                (cpuMilliseconds() - start) / kTicks);
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    printTick();
    std::printf("floor, two blends of the window's size: %.2f ms\n", floorOfAFrame());
    std::printf("%-5s %28s %28s\n", "page", "animated: stock/cached", "one label: stock/cached");
    for (int page = 0; page < 8; ++page) {
        const Figures cached = measure(false, page);
        const Figures stock = measure(true, page);
        std::printf("%-5d %9.2f / %6.2f ms = %5.1f %9.2f / %6.2f ms = %5.1f\n",
                    page,
                    stock.animated,
                    cached.animated,
                    stock.animated / cached.animated,
                    stock.oneLabel,
                    cached.oneLabel,
                    stock.oneLabel / cached.oneLabel);
    }
    return 0;
}
