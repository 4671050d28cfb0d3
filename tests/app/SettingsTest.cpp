// The settings page: its controls, what each drives, and how it is reached by the keyboard.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "notify/DesktopToast.h"
#include "notify/DesktopToastManager.h"
#include "ui/GlassCard.h"
#include "ui/ParticleCanvas.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGraphicsDropShadowEffect>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <limits>
#include <memory>

namespace {

// All controls, top to bottom.
QList<QWidget *> controlsOf(const MainWindow &window)
{
    const auto &settings = window.settings;
    return {settings.hue,
            settings.saturation,
            settings.brightness,
            settings.density,
            settings.speed,
            settings.particles,
            settings.autoColorShift,
            settings.randomize,
            settings.performanceMode,
            settings.notifications,
            settings.offsetX,
            settings.offsetY};
}

// Counts how often a theme is applied to any window's root surface.
class ThemeCounter : public QObject
{
public:
    ThemeCounter() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange
            && watched->objectName() == QLatin1String("rootSurface")) {
            ++applied;
        }
        return false;
    }
    int applied = 0;
};

QList<DesktopToast *> toasts()
{
    QList<DesktopToast *> found;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *toast = qobject_cast<DesktopToast *>(window)) {
            found.append(toast);
        }
    }
    return found;
}

DesktopToast *toast()
{
    return toasts().value(0);
}

} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
        window->timers.particles->stop();
    }
    void cleanup() { window.reset(); }

    void sliders_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("initial");
        QTest::addColumn<bool>("glows");
        const auto row = [](int index, const char *label, int from, int to, int value, bool glows) {
            QTest::newRow(label) << index << QString::fromLatin1(label) << from << to << value
                                 << glows;
        };
        row(0, "Hue", 0, 359, 205, true);
        row(1, "Saturation", 20, 255, 133, true);
        row(2, "Brightness", 90, 255, 255, true);
        row(3, "Particle Density", 10, 180, 110, true);
        row(4, "Particle Speed", 1, 30, 9, true);
        row(10, "Notification Offset X", 0, 120, 16, false);
        row(11, "Notification Offset Y", 0, 120, 16, false);
    }

    void sliders()
    {
        QFETCH(int, index);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, glows);
        auto *slider = qobject_cast<QSlider *>(controlsOf(*window).at(index));
        QCOMPARE(slider->orientation(), Qt::Horizontal);
        QTEST(slider->value(), "initial");
        slider->setValue(-1000);
        QCOMPARE(slider->value(), from);
        slider->setValue(1000);
        QCOMPARE(slider->value(), to);
        QTEST(slider->accessibleName(), "label");
        const auto *glow = qobject_cast<QGraphicsDropShadowEffect *>(slider->graphicsEffect());
        QCOMPARE(glow != nullptr, glows);
        if (glow != nullptr) {
            QColor color = theme::initialAccent();
            color.setAlpha(70);
            QCOMPARE(glow->color(), color);
            QCOMPARE(glow->blurRadius(), 10.0);
        }
    }

    void sliderRowsAreAGrid()
    {
        const QStringList labels{QStringLiteral("Hue"),
                                 QStringLiteral("Saturation"),
                                 QStringLiteral("Brightness"),
                                 QStringLiteral("Particle Density"),
                                 QStringLiteral("Particle Speed")};
        const auto *grid = window->settings.page->findChild<QGridLayout *>();
        QCOMPARE(grid->rowCount(), 5);
        for (int row = 0; row < 5; ++row) {
            const auto *label = qobject_cast<QLabel *>(grid->itemAtPosition(row, 0)->widget());
            QCOMPARE(label->text(), labels.at(row));
            QCOMPARE(grid->itemAtPosition(row, 1)->widget(), controlsOf(*window).at(row));
        }
    }

    void boxesAndChoices()
    {
        const auto &settings = window->settings;
        QCOMPARE(settings.particles->text(), QStringLiteral("Enable particles"));
        QCOMPARE(settings.autoColorShift->text(), QStringLiteral("Auto color shift animation"));
        QVERIFY(settings.particles->isChecked() && settings.autoColorShift->isChecked());
        QVERIFY(settings.particles->isEnabled() && settings.autoColorShift->isEnabled());
        QCOMPARE(settings.randomize->text(), QStringLiteral("Randomize Theme"));
        QCOMPARE(
            itemsOf(settings.performanceMode),
            QStringList(
                {QStringLiteral("Low Memory"), QStringLiteral("Middle"), QStringLiteral("High")}));
        QCOMPARE(settings.performanceMode->currentIndex(), 2);
        QCOMPARE(itemsOf(settings.notifications),
                 QStringList({QStringLiteral("Top-Right"),
                              QStringLiteral("Top-Left"),
                              QStringLiteral("Bottom-Right"),
                              QStringLiteral("Bottom-Left"),
                              QStringLiteral("Top-Center"),
                              QStringLiteral("Bottom-Center")}));
        QCOMPARE(settings.notifications->currentIndex(), 0);
        QVERIFY(!settings.performanceMode->isEditable() && !settings.notifications->isEditable());
    }

    void texts()
    {
        const auto cards = window->settings.page->findChildren<GlassCard *>();
        QCOMPARE(cards.size(), 2);
        const auto labelAt = [](const GlassCard *card, int index) {
            return qobject_cast<QLabel *>(card->layout()->itemAt(index)->widget());
        };
        QCOMPARE(labelAt(cards.at(0), 0)->text(), QStringLiteral("Customization Lab"));
        QCOMPARE(labelAt(cards.at(0), 2)->text(),
                 QStringLiteral("Particles are active globally on all pages by default."));
        QCOMPARE(labelAt(cards.at(1), 0)->text(), QStringLiteral("Safety Policy"));
        QVERIFY(labelAt(cards.at(1), 2)->wordWrap());
        QCOMPARE(labelAt(cards.at(1), 2)->text(),
                 QStringLiteral(
                     "This optimizer intentionally limits features to safe operations:\n- Temp "
                     "clean\n- Recycle Bin empty\n- DNS flush\n\nNo registry cleaning.\nNo fake "
                     "RAM boost features."));
        QStringList titles;
        const auto labels = cards.at(0)->findChildren<QLabel *>(QStringLiteral("cardTitle"));
        for (const QLabel *label : labels) {
            titles.append(label->text());
        }
        QCOMPARE(titles,
                 QStringList({QStringLiteral("Customization Lab"),
                              QStringLiteral("Performance Mode"),
                              QStringLiteral("Notifications")}));
    }

    // No control reports a change while the page is built: the theme is applied once, the mode never.
    void buildingDrivesNothing()
    {
        fakes::scriptedPlatform() = {};
        const ThemeCounter themes;
        const MainWindow another;
        QCOMPARE(themes.applied, 1);
        QVERIFY(fakes::scriptedPlatform().backdropCalls.empty());
        QCOMPARE(another.accentColor, theme::initialAccent());
        QCOMPARE(another.property("perfMode").toInt(), 2);
    }

    void canvasStartsWithTheControls()
    {
        const auto *canvas = window->particleCanvas;
        QCOMPARE(canvas->count, 110);
        QCOMPARE(canvas->particles.size(), 110U);
        QCOMPARE(canvas->speed, 0.9);
        QVERIFY(canvas->enabled && canvas->autoColorShift);
        QCOMPARE(canvas->accentColor, window->accentColor);
    }

    void densities_data()
    {
        QTest::addColumn<int>("wanted");
        QTest::addColumn<int>("dots");
        QTest::newRow("negative") << -5 << 8;
        QTest::newRow("seven") << 7 << 8;
        QTest::newRow("eight") << 8 << 8;
        QTest::newRow("most") << 180 << 180;
    }

    void densities()
    {
        QFETCH(int, wanted);
        QFETCH(int, dots);
        window->onParticleDensityChanged(wanted);
        QCOMPARE(window->particleCanvas->count, dots);
        QCOMPARE(window->particleCanvas->particles.size(), static_cast<std::size_t>(dots));
    }

    void speeds_data()
    {
        QTest::addColumn<int>("tenths");
        QTest::addColumn<double>("speed");
        QTest::newRow("negative") << -3 << 0.1;
        QTest::newRow("zero") << 0 << 0.1;
        QTest::newRow("slowest") << 1 << 0.1;
        QTest::newRow("initial") << 9 << 0.9;
        QTest::newRow("fastest") << 30 << 3.0;
    }

    void speeds()
    {
        QFETCH(int, tenths);
        window->onParticleSpeedChanged(tenths);
        QTEST(window->particleCanvas->speed, "speed");
    }

    void controlsDriveTheirSlots()
    {
        const auto &settings = window->settings;
        const auto *canvas = window->particleCanvas;
        settings.density->setValue(42);
        QCOMPARE(canvas->particles.size(), 42U);
        settings.density->setValue(0);
        QCOMPARE(canvas->count, 10); // the slider's least is more than the slot's
        settings.speed->setValue(25);
        QCOMPARE(canvas->speed, 2.5);
        settings.particles->click();
        QVERIFY(!canvas->enabled);
        settings.autoColorShift->click();
        QVERIFY(!canvas->autoColorShift);
        settings.hue->setValue(10);
        settings.saturation->setValue(20);
        settings.brightness->setValue(90);
        QCOMPARE(window->accentColor, QColor::fromHsv(10, 20, 90));
        QCOMPARE(canvas->accentColor, window->accentColor);
        settings.performanceMode->setCurrentIndex(1);
        QCOMPARE(window->property("perfMode").toInt(), 1);
    }

    void randomThemeMovesTheSliders()
    {
        const auto &settings = window->settings;
        for (int i = 0; i < 30; ++i) {
            settings.randomize->click();
            QVERIFY(settings.saturation->value() >= 90 && settings.brightness->value() >= 160);
            QCOMPARE(window->accentColor,
                     QColor::fromHsv(settings.hue->value(),
                                     settings.saturation->value(),
                                     settings.brightness->value()));
        }
    }

    // Each slider that moves sets the accent; the toolkit's part, which takes long, comes once.
    void randomThemeDressesTheWindowOnce()
    {
        const auto &settings = window->settings;
        for (int i = 0; i < 5; ++i) {
            settings.saturation->setValue(0); // out of the random range, so that it changes
            QList<QColor> accents;
            const auto note = [this, &accents] {
                accents.append(window->accentColor);
            };
            const QObject context;
            for (const QSlider *slider : {settings.hue, settings.saturation, settings.brightness}) {
                connect(slider, &QSlider::valueChanged, &context, note); // after the window's own
            }
            const QColor before = window->accentColor;
            ThemeCounter counter;
            settings.randomize->click();
            QCOMPARE(counter.applied, 1);
            QVERIFY(settings.saturation->value() > 0);
            QVERIFY(!accents.isEmpty() && accents.constFirst() != before);
            QCOMPARE(accents.constLast(), window->accentColor);
            QCOMPARE(window->particleCanvas->accentColor, window->accentColor);
            QCOMPARE(window->rootSurface->styleSheet(), theme::styleSheet(window->accentColor));
        }
    }

    void placementOfNotifications()
    {
        window->onNotifPositionChanged(0);
        window->toastManager->showToast(QStringLiteral("t"), {}, {}, true, false);
        const QRect screen = window->toastManager->activeScreenGeometry();
        DesktopToast *shown = toast();
        const auto &settings = window->settings;
        settings.offsetX->setValue(50);
        QCOMPARE(shown->x(), screen.right() - shown->width() - 50);
        settings.offsetY->setValue(70);
        QCOMPARE(shown->pos(), QPoint(screen.right() - shown->width() - 50, screen.top() + 70));
        settings.notifications->setCurrentIndex(1);
        QCOMPARE(shown->pos(), QPoint(screen.left() + 50, screen.top() + 70));
    }

    // Two toasts: only so can be seen which way they are stacked.
    void placesBeyondTheListAreItsEnds_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("same");
        QTest::newRow("-1") << -1 << 0;
        QTest::newRow("smallest") << std::numeric_limits<int>::min() << 0;
        QTest::newRow("9") << 9 << 5;
        QTest::newRow("largest") << std::numeric_limits<int>::max() << 5;
    }

    void placesBeyondTheListAreItsEnds()
    {
        QFETCH(int, index);
        QFETCH(int, same);
        for (const char *title : {"first", "second"}) {
            window->toastManager->showToast(QLatin1String(title), {}, {}, true, false);
        }
        const QList<DesktopToast *> shown = toasts();
        const auto places = [this, &shown](int chosen) {
            window->onNotifPositionChanged(DesktopToastManager::TopCenter); // comes from elsewhere
            window->onNotifPositionChanged(chosen);
            QList<QPoint> found;
            for (const DesktopToast *toast : shown) {
                found.append(toast->pos());
            }
            return found;
        };
        const auto expected = places(same);
        QCOMPARE(expected.size(), 2);
        QCOMPARE(places(index), expected);
        for (int other = 0; other < 6; ++other) {
            QVERIFY(other == same || places(other) != expected);
        }
    }

    void slotsWithoutTheirTargets()
    {
        ParticleCanvas *canvas = std::exchange(window->particleCanvas, nullptr);
        window->onParticleDensityChanged(50);
        window->onParticleSpeedChanged(20);
        window->onParticlesToggled(false);
        window->onPerformanceModeChanged(0);
        window->onPerformanceModeChanged(1);
        window->onPerformanceModeChanged(2);
        QCOMPARE(canvas->count, 110);
        QCOMPARE(canvas->speed, 0.9);
        QVERIFY(canvas->enabled);
        window->particleCanvas = canvas;
        DesktopToastManager *manager = std::exchange(window->toastManager, nullptr);
        window->settings.notifications->setCurrentIndex(3);
        window->settings.offsetX->setValue(1);
        window->settings.offsetY->setValue(1);
        window->toastManager = manager;
    }

    void tabWalksTopToBottom()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        window->onNavChanged(MainWindow::SettingsPage);
        const auto controls = controlsOf(*window);
        const auto *page = qobject_cast<QScrollArea *>(window->settings.page);
        controls.constFirst()->setFocus(Qt::TabFocusReason);
        for (QWidget *control : controls) {
            QCOMPARE(QApplication::focusWidget(), control);
            const QRect seen(control->mapTo(page->viewport(), QPoint(0, 0)), control->size());
            QVERIFY(page->viewport()->rect().contains(seen));
            QTest::keyClick(control, Qt::Key_Tab);
        }
        for (qsizetype i = 1; i < controls.size(); ++i) { // and in reading order on the page
            const QPoint before = controls.at(i - 1)->mapTo(window.get(), QPoint(0, 0));
            const QPoint after = controls.at(i)->mapTo(window.get(), QPoint(0, 0));
            QVERIFY(after.y() > before.y() || after.x() > before.x());
        }
    }

    void keyboardChangesSettings()
    {
        window->show();
        const auto &settings = window->settings;
        window->onNavChanged(MainWindow::SettingsPage);
        QTest::keyClick(settings.hue, Qt::Key_Right);
        QCOMPARE(window->accentColor.hsvHue(), 206);
        QTest::keyClick(settings.particles, Qt::Key_Space);
        QVERIFY(!window->particleCanvas->enabled);
        QTest::keyClick(settings.performanceMode, Qt::Key_Up);
        QCOMPARE(window->property("perfMode").toInt(), 1);
    }

    void everyControlHasAName()
    {
        for (QWidget *control : controlsOf(*window)) {
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
            QVERIFY(accessible != nullptr);
            QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(),
                     control->metaObject()->className());
        }
    }

    void glowsAreTheirOwnWhileHeld()
    {
        QSlider *slider = window->settings.hue;
        const auto *glow = qobject_cast<QGraphicsDropShadowEffect *>(slider->graphicsEffect());
        slider->setSliderDown(true);
        QVERIFY(glow->blurRadius() >= 18);
        slider->setSliderDown(false);
        QCOMPARE(glow->blurRadius(), 10.0);
        QCOMPARE(glow->color().alpha(), 70);
    }

private:
    static QStringList itemsOf(const QComboBox *choice)
    {
        QStringList items;
        for (int i = 0; i < choice->count(); ++i) {
            items.append(choice->itemText(i));
        }
        return items;
    }

    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(SettingsTest)
#include "SettingsTest.moc"
