// What the three performance modes switch on, off, and slower.
#include "app/PerformanceMode.h"

#include "app/MainWindow.h"
#include "ui/ParticleCanvas.h"

#include <QCheckBox>
#include <QGraphicsEffect>
#include <QTimer>

void MainWindow::onPerformanceModeChanged(int mode)
{
    const bool animated = mode != performance::LowMemory;
    setProperty("perfMode", mode);
    setProperty("lowMemoryMode", !animated);
    setEffectsEnabled(animated);
    settings.particles->setEnabled(animated);
    settings.autoColorShift->setEnabled(animated);
    if (!animated) {
        enterLowMemory();
    } else if (mode == performance::Middle) {
        enterPace(performance::kMiddlePace);
        settings.autoColorShift->setChecked(false); // its slot tells the canvas
    } else {
        enterPace(performance::kHighPace);
        onAutoColorShiftToggled(settings.autoColorShift->isChecked());
    }
    applyNativeAcrylic();
}

void MainWindow::setEffectsEnabled(bool enabled)
{
    if (rootSurface == nullptr) {
        return;
    }
    const auto widgets = rootSurface->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (QGraphicsEffect *effect = widget->graphicsEffect()) {
            effect->setEnabled(enabled);
        }
    }
}

// The boxes stay unchecked when this mode is left; checking them again is the user's choice.
void MainWindow::enterLowMemory()
{
    timers.particles->setInterval(performance::kRestingParticles);
    timers.particles->stop();
    if (particleCanvas != nullptr) {
        particleCanvas->setVisible(false);
    }
    timers.pulse->stop();
    timers.locationWeather->stop();
    settings.autoColorShift->setChecked(false);
    settings.particles->setChecked(false);
}

void MainWindow::enterPace(const performance::Pace &pace)
{
    timers.particles->start(pace.particles);
    if (particleCanvas != nullptr) {
        particleCanvas->setVisible(true);
    }
    timers.pulse->start(pace.pulse);
    timers.locationWeather->start(performance::kLocationWeatherInterval);
    onParticlesToggled(settings.particles->isChecked());
}
