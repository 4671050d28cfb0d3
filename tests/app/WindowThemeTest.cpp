// The accent in the window: slots, palette and font on every widget, contrast, pulse.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "ui/AnimatedNav.h"
#include "ui/Contrast.h"
#include "ui/NavButton.h"
#include "ui/ParticleCanvas.h"
#include "ui/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <memory>

using testcolor::contrast;
using testcolor::luminance;

namespace {

QImage pictureOver(QWidget &window, const QColor &desktop)
{
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(desktop);
    window.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

class WindowThemeTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
        window->timers.pulse->stop();
        window->timers.particles->stop();
    }

    void cleanup() { window.reset(); }

    void startsWithTheInitialAccent()
    {
        QCOMPARE(window->accentColor, QColor::fromHsv(205, 133, 255, 255));
        QCOMPARE(window->rootSurface->styleSheet(), theme::styleSheet(window->accentColor));
        QVERIFY(window->styleSheet().isEmpty());
        QVERIFY(qApp->styleSheet().isEmpty());
        QCOMPARE(window->sidebar->items().constFirst()->accent(), window->accentColor);
    }

    void applyThemeLiftsTheMember_data()
    {
        QTest::addColumn<QColor>("wanted");
        QTest::addColumn<QColor>("used");
        QTest::newRow("grey") << QColor(128, 128, 128) << QColor::fromHsv(205, 20, 128);
        QTest::newRow("black") << QColor(Qt::black) << QColor::fromHsv(205, 20, 90);
        QTest::newRow("hue 359") << QColor::fromHsv(359, 255, 255)
                                 << QColor::fromHsv(359, 255, 255);
    }

    void applyThemeLiftsTheMember()
    {
        QFETCH(QColor, wanted);
        QFETCH(QColor, used);
        window->accentColor = wanted;
        const QColor canvas = window->particleCanvas->accentColor;
        window->applyTheme();
        QCOMPARE(window->accentColor, used);
        QCOMPARE(window->rootSurface->styleSheet(), theme::styleSheet(used));
        QCOMPARE(window->sidebar->items().constLast()->accent(), used);
        QCOMPARE(window->particleCanvas->accentColor, canvas); // the canvas is not its business
    }

    // The large figures: in the highlight, unless that is too dark to be read.
    void figuresAreInTheHighlight_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::addColumn<bool>("readable");
        QTest::newRow("initial") << QColor::fromHsv(205, 133, 255) << true;
        QTest::newRow("less bright") << QColor::fromHsv(205, 133, 200) << true;
        QTest::newRow("red") << QColor::fromHsv(0, 160, 255) << true;
        QTest::newRow("deep blue") << QColor::fromHsv(240, 255, 255) << false;
        QTest::newRow("darkest") << QColor::fromHsv(240, 255, 90) << false;
    }

    void figuresAreInTheHighlight()
    {
        QFETCH(QColor, accent);
        QFETCH(bool, readable);
        window->show();
        window->accentColor = accent;
        window->applyTheme();
        const QColor highlight = theme::highlightFor(accent);
        const QList<QLabel *> figures =
            window->rootSurface->findChildren<QLabel *>(QStringLiteral("statValue"));
        QCOMPARE(figures.size(), 7);
        for (QLabel *figure : figures) {
            figure->ensurePolished();
            const QColor shown = figure->palette().color(QPalette::WindowText);
            QCOMPARE(shown.rgb() == highlight.rgb(), readable);
            QVERIFY(contrast(shown, QColor(28, 36, 58)) >= 4.5);
        }
    }

    void applyThemeWithoutItsWidgets()
    {
        QWidget *root = std::exchange(window->rootSurface, nullptr);
        window->accentColor = Qt::black;
        window->applyTheme();
        QCOMPARE(window->accentColor, QColor(Qt::black));
        window->rootSurface = root;
        window->sidebar = nullptr;
        window->applyTheme();
        QCOMPARE(window->accentColor, QColor::fromHsv(205, 20, 90));
    }

    void slotsWithoutSliders()
    {
        window->settings.hue = nullptr;
        window->settings.saturation = nullptr;
        window->settings.brightness = nullptr;
        window->onAccentHueChanged(10);
        QCOMPARE(window->accentColor, QColor::fromHsv(10, 133, 255));
        QCOMPARE(window->particleCanvas->accentColor, window->accentColor);
        window->onAccentSaturationChanged(77);
        QCOMPARE(window->accentColor, QColor::fromHsv(205, 77, 255));
        window->onAccentValueChanged(99);
        QCOMPARE(window->accentColor, QColor::fromHsv(205, 133, 99));
        window->onAccentValueChanged(5);
        QCOMPARE(window->accentColor.value(), 90);
        QCOMPARE(window->particleCanvas->accentColor, window->accentColor);
        window->onRandomizeTheme();
        QCOMPARE(window->accentColor.value(), 90);
    }

    void slotsWithSliders()
    {
        window->settings.hue->setValue(42);
        QCOMPARE(window->accentColor, QColor::fromHsv(42, 133, 255));
        window->settings.saturation->setValue(200);
        QCOMPARE(window->accentColor, QColor::fromHsv(42, 200, 255));
        window->settings.brightness->setValue(100);
        QCOMPARE(window->accentColor, QColor::fromHsv(42, 200, 100));
    }

    void randomThemeWithSomeSliders()
    {
        QSlider *saturation = std::exchange(window->settings.saturation, nullptr);
        const int before = saturation->value();
        window->onRandomizeTheme();
        QCOMPARE(saturation->value(), before);
        QVERIFY(window->settings.brightness->value() >= 160);
    }

    void sidebarLabelsAreReadable_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::addColumn<bool>("hovered");
        for (const QColor &accent :
             {theme::initialAccent(), QColor::fromHsv(60, 20, 255), QColor::fromHsv(0, 255, 90)}) {
            for (const bool hovered : {false, true}) {
                QTest::addRow("%s %d", qPrintable(accent.name()), hovered ? 1 : 0)
                    << accent << hovered;
            }
        }
    }

    void sidebarLabelsAreReadable()
    {
        QFETCH(QColor, accent);
        QFETCH(bool, hovered);
        window->show();
        window->accentColor = accent;
        window->applyTheme();
        window->sidebar->setExpanded(true, false);
        QCoreApplication::processEvents();
        for (NavButton *button : window->sidebar->items()) {
            button->setTextOpacity(0);
            button->setHoverStrength(hovered ? 1 : 0);
        }
        const QImage picture = pictureOver(*window, Qt::white);
        for (NavButton *button : window->sidebar->items()) {
            // From above to below the middle, where the letters stand.
            for (const int y : {22, 27, 32}) {
                const QColor behind =
                    picture.pixelColor(button->mapTo(window.get(), QPoint(80, y)));
                const double ratio = contrast(QColor(235, 246, 255), behind);
                QVERIFY2(ratio >= 4.5,
                         qPrintable(QStringLiteral("%1 on %2").arg(ratio).arg(behind.name())));
            }
        }
    }

    void randomThemesStayInRange()
    {
        for (int i = 0; i < 100; ++i) {
            window->onRandomizeTheme();
            QVERIFY(window->settings.saturation->value() >= 90);
            QVERIFY(window->settings.brightness->value() >= 160);
            QCOMPARE(window->accentColor,
                     QColor::fromHsv(window->settings.hue->value(),
                                     window->settings.saturation->value(),
                                     window->settings.brightness->value()));
        }
    }

    void autoColorShiftOnlySetsTheFlag()
    {
        window->onAutoColorShiftToggled(false);
        QVERIFY(!window->particleCanvas->autoColorShift);
        window->onAutoColorShiftToggled(true);
        QVERIFY(window->particleCanvas->autoColorShift);
        ParticleCanvas *canvas = std::exchange(window->particleCanvas, nullptr);
        window->onAutoColorShiftToggled(false);
        window->onAccentHueChanged(1);
        window->tickParticles();
        QVERIFY(canvas->autoColorShift);
        window->particleCanvas = canvas;
    }

    void pulseWraps()
    {
        QCOMPARE(window->pulsePhase, 0.0);
        for (int tick = 1; tick < 105; ++tick) {
            window->pulsePrimaryButtons();
            QVERIFY(window->pulsePhase > 0.0);
        }
        QVERIFY(std::abs(window->pulsePhase - 6.24) < 1e-9);
        window->pulsePrimaryButtons();
        QCOMPARE(window->pulsePhase, 0.0);
    }

    void pulseSleepsInLowMemory()
    {
        window->setProperty("perfMode", 0);
        window->pulsePrimaryButtons();
        QCOMPARE(window->pulsePhase, 0.0);
        window->setProperty("perfMode", 1);
        window->pulsePrimaryButtons();
        QCOMPARE(window->pulsePhase, 0.06);
    }

    // Also for widgets that come later, and after the accent changed.
    void everyWidgetGetsPaletteAndFont()
    {
        window->show();
        addStrangers(window->startup.page);
        window->onNavChanged(MainWindow::StartupPage);
        for (const int hue : {205, 20}) {
            window->onAccentHueChanged(hue);
            QCOMPARE(window->rootSurface->palette().color(QPalette::Text),
                     QColor(0xf2, 0xf6, 0xff));
            const auto widgets = window->startup.page->findChildren<QWidget *>();
            for (const QWidget *widget : widgets) {
                if (!widget->testAttribute(Qt::WA_WState_Polished)) {
                    continue;
                }
                QVERIFY(luminance(widget->palette().color(QPalette::Text)) > 0.7);
                QVERIFY(luminance(widget->palette().color(QPalette::ButtonText)) > 0.7);
                QVERIFY(luminance(widget->palette().color(QPalette::WindowText)) > 0.7);
                QCOMPARE(widget->palette().color(QPalette::Highlight), window->accentColor);
                QVERIFY(widget->font().pixelSize() >= 13);
                QCOMPARE(widget->font().families().constFirst(), QStringLiteral("Segoe UI"));
            }
        }
    }

    void textIsReadableWhateverIsBehind_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QColor>("desktop");
        for (int page = 0; page < 8; ++page) {
            for (const char *desktop : {"black", "white"}) {
                QTest::addRow("page %d on %s", page, desktop) << page << QColor(desktop);
            }
        }
    }

    void textIsReadableWhateverIsBehind()
    {
        QFETCH(int, page);
        QFETCH(QColor, desktop);
        window->show();
        addStrangers(window->pageStack->widget(page));
        window->pageStack->setCurrentIndex(page);
        window->pageStack->widget(page)->setGraphicsEffect(nullptr);
        window->updateSystemStats();
        QCoreApplication::processEvents();
        const QImage picture = pictureOver(*window, desktop);
        int checked = 0;
        const auto widgets = window->rootSurface->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (!widget->isVisible() || !showsText(widget)) {
                continue;
            }
            const bool bordered = qobject_cast<QPushButton *>(widget) != nullptr
                || qobject_cast<QComboBox *>(widget) != nullptr;
            const int inset = bordered ? 6 : 2; // past the border
            const QPoint corner =
                widget->mapTo(window.get(), QPoint(inset, widget->height() - 1 - inset));
            const QColor behind = picture.pixelColor(corner);
            const double ratio =
                contrast(widget->palette().color(widget->foregroundRole()), behind);
            QVERIFY2(ratio >= 4.5,
                     qPrintable(QStringLiteral("%1 %2: %3 on %4")
                                    .arg(QLatin1String(widget->metaObject()->className()),
                                         widget->objectName())
                                    .arg(ratio)
                                    .arg(behind.name())));
            ++checked;
        }
        QVERIFY(checked > 5);
    }

private:
    static void addStrangers(QWidget *page)
    {
        QWidget *card = page->findChild<QFrame *>(QStringLiteral("glassCard"));
        for (QWidget *widget :
             std::initializer_list<QWidget *>{new QPushButton(QStringLiteral("Button"), card),
                                              new QLabel(QStringLiteral("Label"), card),
                                              new QLineEdit(QStringLiteral("Edit"), card),
                                              new QTextEdit(QStringLiteral("Text"), card)}) {
            card->layout()->addWidget(widget);
        }
    }

    static bool showsText(QWidget *widget)
    {
        return qobject_cast<QLabel *>(widget) != nullptr
            || qobject_cast<QTextEdit *>(widget) != nullptr
            || qobject_cast<QPushButton *>(widget) != nullptr
            || qobject_cast<QLineEdit *>(widget) != nullptr
            || qobject_cast<QCheckBox *>(widget) != nullptr
            || qobject_cast<QComboBox *>(widget) != nullptr;
    }

    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(WindowThemeTest)
#include "WindowThemeTest.moc"
