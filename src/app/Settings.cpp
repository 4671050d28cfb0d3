// What the controls of the settings page drive.
#include "app/MainWindow.h"
#include "ui/ParticleCanvas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>
#include <algorithm>

namespace {

constexpr int kFewestParticles = 8;
constexpr double kSpeedSteps = 10.0; // of the slider, per unit of speed
constexpr double kSlowest = 0.1;

} // namespace

// Their values were set before: building the page drives nothing.
void MainWindow::connectSettings()
{
    const auto connectSlider = [this](QSlider *slider, void (MainWindow::*slot)(int)) {
        connect(slider, &QSlider::valueChanged, this, slot);
    };
    connectSlider(settings.hue, &MainWindow::onAccentHueChanged);
    connectSlider(settings.saturation, &MainWindow::onAccentSaturationChanged);
    connectSlider(settings.brightness, &MainWindow::onAccentValueChanged);
    connectSlider(settings.density, &MainWindow::onParticleDensityChanged);
    connectSlider(settings.speed, &MainWindow::onParticleSpeedChanged);
    connectSlider(settings.offsetX, &MainWindow::onNotifOffsetXChanged);
    connectSlider(settings.offsetY, &MainWindow::onNotifOffsetYChanged);

    connect(settings.particles, &QCheckBox::toggled, this, &MainWindow::onParticlesToggled);
    connect(
        settings.autoColorShift, &QCheckBox::toggled, this, &MainWindow::onAutoColorShiftToggled);
    connect(settings.randomize, &QPushButton::clicked, this, &MainWindow::onRandomizeTheme);
    connect(settings.performanceMode,
            &QComboBox::currentIndexChanged,
            this,
            &MainWindow::onPerformanceModeChanged);
    connect(settings.notifications,
            &QComboBox::currentIndexChanged,
            this,
            &MainWindow::onNotifPositionChanged);
}

void MainWindow::applyParticleSettings()
{
    onParticleDensityChanged(settings.density->value());
    onParticleSpeedChanged(settings.speed->value());
    onParticlesToggled(settings.particles->isChecked());
    onAutoColorShiftToggled(settings.autoColorShift->isChecked());
    particleCanvas->accentColor = accentColor;
    particleCanvas->update();
}

void MainWindow::applyToastPlacement()
{
    onNotifPositionChanged(settings.notifications->currentIndex());
    onNotifOffsetXChanged(settings.offsetX->value());
    onNotifOffsetYChanged(settings.offsetY->value());
}

void MainWindow::onParticleDensityChanged(int dots)
{
    if (particleCanvas != nullptr) {
        particleCanvas->count = std::max(dots, kFewestParticles);
        particleCanvas->initParticles();
        particleCanvas->update();
    }
}

void MainWindow::onParticleSpeedChanged(int tenths)
{
    if (particleCanvas != nullptr) {
        particleCanvas->speed = std::max(tenths / kSpeedSteps, kSlowest);
    }
}

void MainWindow::onParticlesToggled(bool on)
{
    if (particleCanvas != nullptr) {
        particleCanvas->enabled = on;
        particleCanvas->update();
    }
}
