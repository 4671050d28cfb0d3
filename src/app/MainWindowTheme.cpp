// The accent colour: where it comes from and where it goes.
#include "app/MainWindow.h"

#include "ui/AnimatedNav.h"
#include "ui/ParticleCanvas.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QRandomGenerator>
#include <QSlider>

namespace {

constexpr double kPulseStep = 0.06; // radians per tick
constexpr double kFullTurn = 6.28318;

constexpr int kOpaque = 255;
constexpr int kHues = 360;
constexpr int kRandomSaturationFrom = 90;
constexpr int kRandomSaturations = 166;
constexpr int kRandomBrightnessFrom = 160;
constexpr int kRandomBrightnesses = 96;

int valueOr(const QSlider *slider, int fallback)
{
    return slider != nullptr ? slider->value() : fallback;
}

void setIfPresent(QSlider *slider, int value)
{
    if (slider != nullptr) {
        slider->setValue(value);
    }
}

} // namespace

void MainWindow::applyTheme()
{
    if (rootSurface == nullptr) {
        return;
    }
    accentColor = theme::clampedAccent(accentColor);
    if (!isRandomizing) {
        dressRootSurface();
    }
    if (sidebar != nullptr) {
        sidebar->setAccentColor(accentColor);
    }
}

// By far the larger part of the work: the toolkit gives every widget of all pages its look anew.
void MainWindow::dressRootSurface()
{
    surfacePalette = theme::palette(accentColor);
    rootSurface->setStyleSheet(theme::styleSheet(accentColor));
    theme::adopt(rootSurface, surfacePalette);
    applyValueColor();
}

// The style sheet writes the large figures in the highlight, which may be too dark to be read where the user made the
// accent so. Then the labels have a colour of their own.
void MainWindow::applyValueColor() const
{
    const QColor highlight = theme::highlightFor(accentColor);
    const QColor text = theme::textFor(highlight);
    const QString rule =
        text == highlight ? QString() : QStringLiteral("color: %1;").arg(text.name());
    const auto labels = rootSurface->findChildren<QLabel *>(QStringLiteral("statValue"));
    for (QLabel *label : labels) {
        if (label->styleSheet() != rule) {
            label->setStyleSheet(rule);
        }
    }
}

void MainWindow::adoptTheme(QObject *polished) const
{
    auto *widget = qobject_cast<QWidget *>(polished);
    if (widget != nullptr && rootSurface != nullptr && theme::isDressedBy(rootSurface, widget)) {
        theme::adopt(widget, surfacePalette);
    }
}

void MainWindow::setAccent(const QColor &accent)
{
    accentColor = accent;
    applyTheme();
    if (particleCanvas != nullptr) {
        particleCanvas->accentColor = accentColor;
        particleCanvas->update();
    }
}

void MainWindow::onAccentHueChanged(int hue)
{
    setAccent(QColor::fromHsv(hue,
                              valueOr(settings.saturation, theme::kInitialSaturation),
                              valueOr(settings.brightness, theme::kInitialBrightness),
                              kOpaque));
}

void MainWindow::onAccentSaturationChanged(int saturation)
{
    setAccent(QColor::fromHsv(valueOr(settings.hue, theme::kInitialHue),
                              saturation,
                              valueOr(settings.brightness, theme::kInitialBrightness),
                              kOpaque));
}

void MainWindow::onAccentValueChanged(int value)
{
    setAccent(QColor::fromHsv(valueOr(settings.hue, theme::kInitialHue),
                              valueOr(settings.saturation, theme::kInitialSaturation),
                              value,
                              kOpaque));
}

void MainWindow::onRandomizeTheme()
{
    auto &random = *QRandomGenerator64::global();
    const int hue = random.bounded(kHues);
    const int saturation = kRandomSaturationFrom + random.bounded(kRandomSaturations);
    const int brightness = kRandomBrightnessFrom + random.bounded(kRandomBrightnesses);
    // Each slider that moves applies the theme. What nobody can see in between is done once, at the end: three times would
    // hold the window up for a tenth of a second.
    const QColor before = accentColor;
    isRandomizing = true;
    setIfPresent(settings.hue, hue);
    setIfPresent(settings.saturation, saturation);
    setIfPresent(settings.brightness, brightness);
    isRandomizing = false;
    if (rootSurface != nullptr && accentColor != before) {
        dressRootSurface();
    }
}

void MainWindow::onAutoColorShiftToggled(bool on)
{
    if (particleCanvas != nullptr) {
        particleCanvas->autoColorShift = on;
    }
}

void MainWindow::pulsePrimaryButtons()
{
    if (property("perfMode").toInt() == 0) {
        return;
    }
    const double next = pulsePhase + kPulseStep;
    pulsePhase = next > kFullTurn ? 0.0 : next;
}
