// Ten thousand settings in seeded disorder, through the controls and past them; what must hold holds after each.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "ui/ParticleCanvas.h"
#include "ui/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGraphicsEffect>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <array>

namespace {

using Slot = void (MainWindow::*)(int);

// Applying a theme takes a thousand times as long as anything else, so it has its turn less often.
constexpr int kThemeEvery = 25;

constexpr std::array<Slot, 3> kThemeSlots{&MainWindow::onAccentHueChanged,
                                          &MainWindow::onAccentSaturationChanged,
                                          &MainWindow::onAccentValueChanged};
constexpr std::array<Slot, 6> kSlots{&MainWindow::onParticleDensityChanged,
                                     &MainWindow::onParticleSpeedChanged,
                                     &MainWindow::onNotifPositionChanged,
                                     &MainWindow::onNotifOffsetXChanged,
                                     &MainWindow::onNotifOffsetYChanged,
                                     &MainWindow::onPerformanceModeChanged};

void themeStep(MainWindow &window, QRandomGenerator &random)
{
    const auto &settings = window.settings;
    switch (random.bounded(4)) {
    case 0:
        settings.randomize->click();
        break;
    case 1:
        std::array{settings.hue, settings.saturation, settings.brightness}
            .at(random.bounded(3))
            ->setValue(random.bounded(-50, 450));
        break;
    default: // what no slider can send
        (window.*kThemeSlots.at(random.bounded(3)))(random.bounded(0, 256));
        break;
    }
}

void otherStep(MainWindow &window, QRandomGenerator &random)
{
    const auto &settings = window.settings;
    switch (random.bounded(8)) {
    case 0:
        std::array{settings.density, settings.speed, settings.offsetX, settings.offsetY}
            .at(random.bounded(4))
            ->setValue(random.bounded(-50, 250));
        break;
    case 1:
        std::array{settings.particles, settings.autoColorShift}.at(random.bounded(2))->click();
        break;
    case 2:
        settings.performanceMode->setCurrentIndex(random.bounded(3));
        break;
    case 3:
        settings.notifications->setCurrentIndex(random.bounded(6));
        break;
    case 4:
        window.tickParticles();
        window.pulsePrimaryButtons();
        break;
    case 5:
        (window.*kSlots.at(random.bounded(5)))(random.bounded(-300, 300));
        break;
    case 6:
        window.onPerformanceModeChanged(random.bounded(3));
        break;
    default:
        random.bounded(2) == 0 ? window.onParticlesToggled(random.bounded(2) == 0)
                               : window.onAutoColorShiftToggled(random.bounded(2) == 0);
        break;
    }
}

void checkCanvas(const MainWindow &window)
{
    const QColor accent = window.accentColor;
    QVERIFY(accent.isValid() && accent.alpha() == 255);
    QCOMPARE(theme::clampedAccent(accent), accent);
    const ParticleCanvas &canvas = *window.particleCanvas;
    QCOMPARE(canvas.accentColor, accent);
    QVERIFY(canvas.count >= 8);
    QCOMPARE(canvas.particles.size(), static_cast<std::size_t>(canvas.count));
    QVERIFY(canvas.speed >= 0.1);
    QVERIFY(canvas.hueOffset >= 0 && canvas.hueOffset < 360);
    QVERIFY(window.pulsePhase >= 0 && window.pulsePhase <= 6.28318);
}

void checkMode(const MainWindow &window)
{
    const int mode = window.property("perfMode").toInt();
    const bool runs = mode != 0;
    QCOMPARE(window.property("lowMemoryMode").toBool(), !runs);
    const auto &timers = window.timers;
    QVERIFY(timers.particles->isActive() == runs && timers.pulse->isActive() == runs
            && timers.locationWeather->isActive() == runs);
    constexpr std::array kIntervals{100, 33, 16};
    QCOMPARE(timers.particles->interval(), kIntervals.at(mode));
    if (runs) {
        QCOMPARE(timers.pulse->interval(), mode == 1 ? 66 : 33);
    }
    QCOMPARE(window.particleCanvas->isHidden(), !runs);
    QCOMPARE(window.windowSurface->graphicsEffect()->isEnabled(), runs);
    const auto &settings = window.settings;
    QVERIFY(settings.particles->isEnabled() == runs
            && settings.autoColorShift->isEnabled() == runs);
    if (!runs) {
        QVERIFY(!settings.particles->isChecked() && !settings.autoColorShift->isChecked());
    }
}

} // namespace

class SettingsWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void tenThousandSettings_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<int>("steps");
        QTest::newRow("hidden") << false << 8000;
        QTest::newRow("shown") << true << 2000;
    }

    void tenThousandSettings()
    {
        QFETCH(bool, shown);
        QFETCH(int, steps);
        fakes::scriptedPlatform() = {};
        MainWindow window;
        window.setVisible(shown);
        QRandomGenerator random(21112026);
        for (int step = 0; step < steps; ++step) {
            if (step % kThemeEvery == 0) {
                themeStep(window, random);
            } else {
                otherStep(window, random);
            }
            checkCanvas(window);
            checkMode(window);
            if (QTest::currentTestFailed()) {
                qWarning("after step %d", step);
                return;
            }
            if (step % 100 == 0) {
                QCoreApplication::processEvents();
            }
        }
    }
};

QTEST_MAIN(SettingsWalkTest)
#include "SettingsWalkTest.moc"
