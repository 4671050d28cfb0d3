#include "FrameScenes.h"

#include "CpuClock.h"
#include "app/MainWindow.h"
#include "ui/AnimatedNav.h"
#include "ui/NavButton.h"
#include "ui/ParticleCanvas.h"

#include <QGraphicsDropShadowEffect>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QTimer>
#include <QWindow>

namespace {

using namespace std::chrono_literals;

constexpr double kPercentile = 0.95;
constexpr int kStockFrames = 30;
constexpr int kFrames = 200;

void useStockShadows(QWidget &window)
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

void stopTimers(MainWindow &window)
{
    const auto timers = window.findChildren<QTimer *>();
    for (QTimer *timer : timers) {
        timer->stop();
    }
}

void waitForTransition(const MainWindow &window)
{
    while (window.pageStack->currentWidget()->graphicsEffect() != nullptr) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// A window at rest: nothing moves unless the scene moves it. With stock shadows nothing may hover over a card, which keeps
// a pointer to its own.
void openPage(MainWindow &window, int page, bool withStockShadows)
{
    window.show();
    window.onNavChanged(page);
    waitForTransition(window);
    runFor(200ms);
    stopTimers(window);
    if (withStockShadows) {
        useStockShadows(window);
    }
}

// As the window system would report it.
void sendMouse(QWidget &window, QEvent::Type type, const QPointF &place, Qt::MouseButtons held)
{
    const auto changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, window.mapToGlobal(place), changed, held, Qt::NoModifier);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

void moveTo(QWidget &window, const QWidget &target)
{
    const QPointF place = target.mapTo(&window, QRectF(target.rect()).center());
    sendMouse(window, QEvent::MouseMove, place, Qt::NoButton);
}

void append(FrameCosts &all, const FrameCosts &costs)
{
    all.frames.insert(all.frames.end(), costs.frames.begin(), costs.frames.end());
}

double measureLogLines(FrameMeter &meter)
{
    MainWindow window;
    openPage(window, MainWindow::CleanerPage, false);
    return meter
        .measure(window,
                 kFrames,
                 [&window](int i) { window.log(QStringLiteral("Line %1 of the log").arg(i)); })
        .quantile(kPercentile);
}

// The cursor goes from button to button, over the cards that they stand on, with the animations that follow.
double measureHover(FrameMeter &meter)
{
    FrameCosts all;
    for (int page = 0; page <= MainWindow::LogsPage; ++page) {
        MainWindow window;
        openPage(window, page, false);
        QList<QWidget *> targets;
        const auto buttons = window.findChildren<QAbstractButton *>();
        std::copy_if(buttons.begin(), buttons.end(), std::back_inserter(targets), [](QWidget *w) {
            return w->isVisible();
        });
        append(all, meter.measureFor(window, static_cast<int>(targets.size()), 250ms, [&](int i) {
            moveTo(window, *targets.at(i));
        }));
    }
    return all.quantile(kPercentile);
}

// Unfolds under the cursor, and folds when it has gone.
double measureSidebar(FrameMeter &meter)
{
    MainWindow window;
    openPage(window, MainWindow::DashboardPage, false);
    return meter
        .measureFor(window,
                    16,
                    500ms,
                    [&window](int i) {
                        const QWidget *target = window.pageStack;
                        if (i % 2 == 0) {
                            target = window.sidebar->items().at(i / 2);
                        }
                        moveTo(window, *target);
                    })
        .quantile(kPercentile);
}

// Held at its handle, from one end to the other.
FrameCosts measureSlider(FrameMeter &meter, MainWindow &window, QSlider &slider)
{
    constexpr int kSteps = 60;
    constexpr double kHandle = 16; // px
    slider.setValue(slider.minimum());
    const QPointF origin = slider.mapTo(&window, QPointF(kHandle / 2, slider.height() / 2.0));
    const auto placeOf = [&](int step) {
        return origin + QPointF((slider.width() - kHandle) * step / kSteps, 0);
    };
    sendMouse(window, QEvent::MouseButtonPress, placeOf(0), Qt::LeftButton);
    const FrameCosts costs = meter.measureFor(window, kSteps, 16ms, [&](int i) {
        sendMouse(window, QEvent::MouseMove, placeOf(i + 1), Qt::LeftButton);
    });
    sendMouse(window, QEvent::MouseButtonRelease, placeOf(kSteps), Qt::NoButton);
    return costs;
}

double measureSliders(FrameMeter &meter,
                      const std::function<QList<QSlider *>(const MainWindow &)> &which)
{
    MainWindow window;
    openPage(window, MainWindow::SettingsPage, false);
    FrameCosts all;
    for (QSlider *slider : which(window)) {
        append(all, measureSlider(meter, window, *slider));
    }
    return all.quantile(kPercentile);
}

double measurePlainSliders(FrameMeter &meter)
{
    return measureSliders(meter, [](const MainWindow &window) {
        return QList<QSlider *>{
            window.settings.density, window.settings.speed, window.settings.offsetX};
    });
}

double measureAccentSliders(FrameMeter &meter)
{
    return measureSliders(meter, [](const MainWindow &window) {
        return QList<QSlider *>{window.settings.hue, window.settings.brightness};
    });
}

double measurePageSwitches(FrameMeter &meter)
{
    MainWindow window;
    openPage(window, MainWindow::DashboardPage, false);
    return meter
        .measureFor(window, 16, 400ms, [&window](int i) { window.onNavChanged((i + 1) % 8); })
        .quantile(kPercentile);
}

} // namespace

double floorOfAFrame()
{
    const qreal ratio = qApp->devicePixelRatio();
    QImage target(QSize(1100, 680) * ratio, QImage::Format_ARGB32_Premultiplied);
    QImage layer(target.size(), target.format());
    layer.fill(QColor(10, 20, 30, 120));
    target.fill(Qt::black);
    FrameCosts costs;
    QPainter painter(&target);
    for (int i = 0; i < kFrames; ++i) {
        const double start = cpuMilliseconds();
        painter.drawImage(0, 0, layer);
        painter.drawImage(0, 0, layer);
        costs.frames.push_back(cpuMilliseconds() - start);
    }
    return costs.median();
}

PageCosts measurePage(FrameMeter &meter, int page, bool withStockShadows)
{
    MainWindow window;
    openPage(window, page, withStockShadows);
    const int frames = withStockShadows ? kStockFrames : kFrames;
    const double animated =
        meter.measure(window, frames, [&window](int) { window.tickParticles(); }).median();
    auto *label = window.pageStack->currentWidget()->findChild<QLabel *>();
    const double oneLabel =
        meter
            .measure(window,
                     frames,
                     [label](int i) { label->setText(QStringLiteral("Label %1").arg(i)); })
            .median();
    return {animated, oneLabel};
}

// The queries are left out here: a loop asks faster than anything changes. What they would change, is changed.
double measureTick(FrameMeter &meter, bool withStockShadows)
{
    MainWindow window;
    openPage(window, MainWindow::DashboardPage, withStockShadows);
    const auto tick = [&window](int i) {
        const int percent = 20 + i / 10;
        window.dashboard.time->setText(QStringLiteral("12:34:%1").arg(10 + i % 50));
        window.dashboard.ramValue->setText(
            QStringLiteral("5.%1 GB / 23.5 GB (%2%%)").arg(i % 10).arg(percent));
        window.dashboard.ramBar->setValue(percent);
    };
    return meter.measure(window, withStockShadows ? kStockFrames : kFrames, tick).median();
}

QJsonObject measureActions(FrameMeter &meter)
{
    return {{"log line", measureLogLines(meter)},
            {"hover", measureHover(meter)},
            {"sidebar", measureSidebar(meter)},
            {"slider", measurePlainSliders(meter)},
            {"accent slider", measureAccentSliders(meter)},
            {"page switch", measurePageSwitches(meter)}};
}
