// Everything that the user can set. The controls are the only place where the settings are kept.
#include "app/MainWindow.h"
#include "app/PerformanceMode.h"
#include "app/SettingsControls.h"
#include "notify/DesktopToastManager.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"
#include "ui/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace settingscontrols;

namespace {

constexpr int kSpacing = 16;

constexpr Range kHues{0, 359};
constexpr Range kSaturations{theme::kSmallestSaturation, 255};
constexpr Range kBrightnesses{theme::kSmallestBrightness, 255};
constexpr Range kDensities{10, 180}; // dots
constexpr int kInitialDensity = 110;
constexpr Range kSpeeds{1, 30}; // tenths
constexpr int kInitialSpeed = 9;
constexpr Range kOffsets{0, 120}; // px
constexpr int kInitialOffset = 16;

QStringList modeNames()
{
    return {QStringLiteral("Low Memory"), QStringLiteral("Middle"), QStringLiteral("High")};
}

// In the order of DesktopToastManager::Position.
QStringList positionNames()
{
    return {QStringLiteral("Top-Right"),
            QStringLiteral("Top-Left"),
            QStringLiteral("Bottom-Right"),
            QStringLiteral("Bottom-Left"),
            QStringLiteral("Top-Center"),
            QStringLiteral("Bottom-Center")};
}

QString safetyPolicy()
{
    return QStringLiteral("This optimizer intentionally limits features to safe operations:\n"
                          "- Temp clean\n"
                          "- Recycle Bin empty\n"
                          "- DNS flush\n"
                          "\n"
                          "No registry cleaning.\n"
                          "No fake RAM boost features.");
}

} // namespace

void MainWindow::setupSettingsPage()
{
    auto *page = new ScrollPage(pageStack);
    settings.page = page;
    GlassCard *lab = createGlassCard(page, QStringLiteral("Customization Lab"));
    addNote(lab, QStringLiteral("Particles are active globally on all pages by default."));
    setupLookSettings(lab);
    setupParticleSettings(lab);
    setupModeSettings(lab);
    page->contentLayout()->addWidget(lab);

    GlassCard *policy = createGlassCard(page, QStringLiteral("Safety Policy"));
    addNote(policy, safetyPolicy());
    page->contentLayout()->addWidget(policy);
    page->contentLayout()->addStretch(1);
}

void MainWindow::setupLookSettings(GlassCard *card)
{
    settings.hue = createSlider(card, kHues, theme::kInitialHue);
    settings.saturation = createSlider(card, kSaturations, accentColor.hsvSaturation());
    settings.brightness = createSlider(card, kBrightnesses, accentColor.value());
    settings.density = createSlider(card, kDensities, kInitialDensity);
    settings.speed = createSlider(card, kSpeeds, kInitialSpeed);

    QGridLayout *grid = addGrid(card);
    addRow(grid, 0, QStringLiteral("Hue"), settings.hue);
    addRow(grid, 1, QStringLiteral("Saturation"), settings.saturation);
    addRow(grid, 2, QStringLiteral("Brightness"), settings.brightness);
    addRow(grid, 3, QStringLiteral("Particle Density"), settings.density);
    addRow(grid, 4, QStringLiteral("Particle Speed"), settings.speed);
    for (QSlider *slider : {settings.hue,
                            settings.saturation,
                            settings.brightness,
                            settings.density,
                            settings.speed}) {
        applySliderInteractionGlow(slider, accentColor);
    }
}

void MainWindow::setupParticleSettings(GlassCard *card)
{
    settings.particles = createBox(card, QStringLiteral("Enable particles"));
    settings.autoColorShift = createBox(card, QStringLiteral("Auto color shift animation"));
    settings.randomize = createButton(card, QStringLiteral("Randomize Theme"));
    auto *row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addWidget(settings.particles);
    row->addWidget(settings.autoColorShift);
    row->addWidget(settings.randomize, 1);
    qobject_cast<QVBoxLayout *>(card->layout())->addLayout(row);
}

void MainWindow::setupModeSettings(GlassCard *card)
{
    settings.performanceMode = createChoice(card, modeNames(), performance::High);
    settings.notifications = createChoice(card, positionNames(), DesktopToastManager::TopRight);
    settings.offsetX = createSlider(card, kOffsets, kInitialOffset);
    settings.offsetY = createSlider(card, kOffsets, kInitialOffset);

    const QString title = QStringLiteral("cardTitle");
    QGridLayout *grid = addGrid(card);
    addRow(grid, 0, QStringLiteral("Performance Mode"), settings.performanceMode)
        ->setObjectName(title);
    addRow(grid, 1, QStringLiteral("Notifications"), settings.notifications)->setObjectName(title);
    addRow(grid, 2, QStringLiteral("Notification Offset X"), settings.offsetX);
    addRow(grid, 3, QStringLiteral("Notification Offset Y"), settings.offsetY);
}
