// The performance modes: timers, effects, background, boxes, backdrop; and who is repainted when.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "ui/CachedShadow.h"
#include "ui/ParticleCanvas.h"
#include "ui/PictureDifference.h"
#include "ui/TestInput.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGraphicsBlurEffect>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <memory>

namespace {

// How often a widget, or anything in it, is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget)
    {
        widget->installEventFilter(this);
        const auto children = widget->findChildren<QWidget *>();
        for (QWidget *child : children) {
            child->installEventFilter(this);
        }
    }
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

struct Expected
{
    int particlesInterval = 0;
    int pulseInterval = 0;
    bool runs = false; // timers, effects, canvas, backdrop
    bool shift = false; // the box
    bool particles = false; // the box
};

} // namespace

Q_DECLARE_METATYPE(Expected)

class PerformanceModeTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
    }
    void cleanup() { window.reset(); }

    void modes_data()
    {
        QTest::addColumn<QList<int>>("chosen");
        QTest::addColumn<Expected>("expected");
        const Expected low{100, 0, false, false, false};
        const Expected middle{33, 66, true, false, true};
        const Expected high{16, 33, true, true, true};
        const Expected middleAfterLow{33, 66, true, false, false};
        const Expected highAfterMiddle{16, 33, true, false, true};
        const Expected highAfterLow{16, 33, true, false, false};
        QTest::newRow("low memory") << QList<int>{0} << low;
        QTest::newRow("middle") << QList<int>{1} << middle;
        QTest::newRow("high") << QList<int>{2} << high;
        QTest::newRow("beyond high") << QList<int>{3} << high;
        QTest::newRow("low, middle") << QList<int>{0, 1} << middleAfterLow;
        QTest::newRow("low, high") << QList<int>{0, 2} << highAfterLow;
        QTest::newRow("middle, high") << QList<int>{1, 2} << highAfterMiddle;
        QTest::newRow("middle, low") << QList<int>{1, 0} << low;
        QTest::newRow("low, middle, high") << QList<int>{0, 1, 2} << highAfterLow;
        QTest::newRow("low twice") << QList<int>{0, 0} << low;
    }

    void modes()
    {
        QFETCH(QList<int>, chosen);
        QFETCH(Expected, expected);
        window->show();
        for (const int mode : chosen) {
            window->onPerformanceModeChanged(mode);
        }
        QCOMPARE(window->property("perfMode"), QVariant(chosen.constLast()));
        QCOMPARE(window->property("lowMemoryMode"), QVariant(!expected.runs));
        QCOMPARE(window->timers.particles->interval(), expected.particlesInterval);
        if (expected.runs) {
            QCOMPARE(window->timers.pulse->interval(), expected.pulseInterval);
            QCOMPARE(window->timers.locationWeather->interval(), 900000);
        }
        for (const QTimer *timer :
             {window->timers.particles, window->timers.pulse, window->timers.locationWeather}) {
            QCOMPARE(timer->isActive(), expected.runs);
        }
        QVERIFY(window->timers.statistics->isActive() && window->timers.networkStatus->isActive());

        const auto &settings = window->settings;
        const ParticleCanvas *canvas = window->particleCanvas;
        QCOMPARE(canvas->isVisible(), expected.runs);
        QCOMPARE(settings.particles->isEnabled(), expected.runs);
        QCOMPARE(settings.autoColorShift->isEnabled(), expected.runs);
        QCOMPARE(settings.particles->isChecked(), expected.particles);
        QCOMPARE(settings.autoColorShift->isChecked(), expected.shift);
        QCOMPARE(canvas->enabled, expected.particles);
        QCOMPARE(canvas->autoColorShift, expected.shift);
        QCOMPARE(fakes::scriptedPlatform().backdropCalls.size(),
                 static_cast<std::size_t>(chosen.size()));
        QCOMPARE(fakes::scriptedPlatform().backdropCalls.back().enabled, expected.runs);
    }

    // Every descendant's effect, of any kind and at any depth.
    void effectsFollow_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("low memory") << 0;
        QTest::newRow("middle") << 1;
        QTest::newRow("high") << 2;
    }

    void effectsFollow()
    {
        QFETCH(int, mode);
        auto *deep = new QWidget(new QWidget(window->settings.page));
        deep->setGraphicsEffect(new QGraphicsBlurEffect);
        testinput::enter(window->settings.randomize); // which makes its glow
        window->onPerformanceModeChanged(mode == 0 ? 1 : 0);
        window->onPerformanceModeChanged(mode);
        int effects = 0;
        const auto widgets = window->rootSurface->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (widget->graphicsEffect() != nullptr) {
                QCOMPARE(widget->graphicsEffect()->isEnabled(), mode != 0);
                ++effects;
            }
        }
        QVERIFY(effects > 15);
        QCOMPARE(deep->graphicsEffect()->isEnabled(), mode != 0);
    }

    void withoutARootSurface()
    {
        QWidget *root = std::exchange(window->rootSurface, nullptr);
        window->onPerformanceModeChanged(0);
        QVERIFY(window->windowSurface->graphicsEffect()->isEnabled());
        window->rootSurface = root;
    }

    void greyedBoxesCannotBeClicked()
    {
        window->show();
        window->settings.performanceMode->setCurrentIndex(0);
        for (QCheckBox *box : {window->settings.particles, window->settings.autoColorShift}) {
            QTest::mouseClick(box, Qt::LeftButton, {}, {10, box->height() / 2});
            QVERIFY(!box->isChecked());
        }
    }

    void particlesComeBackWhenTheUserWants()
    {
        auto &settings = window->settings;
        settings.performanceMode->setCurrentIndex(0);
        settings.performanceMode->setCurrentIndex(2);
        QVERIFY(!window->particleCanvas->enabled);
        settings.particles->click();
        settings.autoColorShift->click();
        QVERIFY(window->particleCanvas->enabled && window->particleCanvas->autoColorShift);
    }

    // The timers really tick, and stop ticking.
    void timersTick()
    {
        window->show();
        ParticleCanvas *canvas = window->particleCanvas;
        const double phase = window->pulsePhase;
        const int hue = canvas->hueOffset;
        QTRY_VERIFY(canvas->hueOffset != hue && window->pulsePhase != phase);
        window->onPerformanceModeChanged(0);
        window->tickParticles();
        canvas->particles = {{100, 100, 1, 1, 2, 0}};
        window->tickParticles(); // one that was under way
        QCOMPARE(canvas->particles.at(0).x, 100.0);
        window->onPerformanceModeChanged(2);
        window->settings.particles->click();
        QTRY_VERIFY(canvas->particles.at(0).x > 100.0);
    }

    void windowResizedWhileTheCanvasIsHidden()
    {
        window->show();
        window->onPerformanceModeChanged(0);
        window->resize(800, 500);
        QCoreApplication::processEvents();
        window->onPerformanceModeChanged(2);
        QCOMPARE(window->particleCanvas->size(), window->rootSurface->size());
        const QObjectList &siblings = window->rootSurface->children();
        QVERIFY(siblings.indexOf(window->particleCanvas) < siblings.indexOf(window->windowSurface));
    }

    // The picture after a visit to "Low Memory" is the one from before it.
    void effectsComeBackAsTheyWere()
    {
        window->show();
        stopTimers();
        window->onNavChanged(MainWindow::NetworkPage);
        QTRY_VERIFY(window->network.page->graphicsEffect() == nullptr);
        window->onParticlesToggled(false);
        const QImage before = window->rootSurface->grab().toImage();
        window->onPerformanceModeChanged(0);
        const QImage low = window->rootSurface->grab().toImage();
        window->network.ping->setText(QStringLiteral("changed meanwhile"));
        window->onPerformanceModeChanged(2);
        stopTimers();
        QVERIFY(window->rootSurface->grab().toImage() != before);
        window->network.ping->setText(QStringLiteral("Ping: -- ms"));
        const QImage after = window->rootSurface->grab().toImage();
        QVERIFY(low != before);
        QVERIFY(largestDifference(after, before) <= 1);
    }

    // One frame paints the canvas once; what lies above it is only drawn, from kept pictures.
    void animatedFrame()
    {
        showAtRest(MainWindow::SettingsPage);
        PaintCounter canvas(window->particleCanvas);
        PaintCounter content(window->contentLayer);
        const auto shadows = window->findChildren<CachedShadow *>();
        const auto renders = [&shadows] {
            int sum = 0;
            for (const CachedShadow *shadow : shadows) {
                sum += shadow->renderCount() + shadow->blurCount();
            }
            return sum;
        };
        const int before = renders();
        for (int frame = 1; frame <= 20; ++frame) {
            window->tickParticles();
            QCoreApplication::processEvents();
            QCOMPARE(canvas.paints, frame);
        }
        QCOMPARE(content.paints, 0);
        QCOMPARE(renders(), before);
    }

    // A second's new time is rendered alone: neither it, nor the layout and the dots that follow, take the other cards along.
    void secondsAreCheap()
    {
        showAtRest(MainWindow::DashboardPage);
        window->dashboard.time->setText(QStringLiteral("11:11:10 AM"));
        QCoreApplication::processEvents();
        window->tickParticles();
        QCoreApplication::processEvents();
        const auto *shadow = static_cast<CachedShadow *>(window->windowSurface->graphicsEffect());
        const qint64 before = shadow->renderedPixels();
        constexpr int kSeconds = 9;
        for (int second = 0; second < kSeconds; ++second) {
            window->dashboard.time->setText(QStringLiteral("11:11:1%1 AM").arg(second % 2 + 1));
            QCoreApplication::processEvents();
            window->tickParticles();
            QCoreApplication::processEvents();
        }
        const qint64 perSecond = (shadow->renderedPixels() - before) / kSeconds;
        QVERIFY(perSecond > 0);
        const QSize whole = window->windowSurface->size();
        QVERIFY2(perSecond < whole.width() * whole.height() / 10,
                 qPrintable(QString::number(perSecond)));
    }

    // The property alone decides, also while the canvas can be seen.
    void tickWithoutPerformanceDoesNothing()
    {
        showAtRest(MainWindow::SettingsPage);
        QWidget *canvas = window->particleCanvas;
        canvas->setGeometry(0, 0, 300, 200);
        QCoreApplication::processEvents();
        window->setProperty("perfMode", 0);
        PaintCounter all(canvas);
        window->tickParticles();
        QCoreApplication::processEvents();
        QCOMPARE(canvas->size(), QSize(300, 200));
        QCOMPARE(all.paints, 0);
        window->setProperty("perfMode", 1);
        window->tickParticles();
        QCOMPARE(canvas->size(), window->rootSurface->size());
        QTRY_VERIFY(all.paints > 0);
    }

    void nothingIsPaintedAtRest()
    {
        showAtRest(MainWindow::SettingsPage);
        window->onPerformanceModeChanged(0);
        QCoreApplication::processEvents();
        PaintCounter all(window.get());
        window->timers.statistics->start();
        window->timers.networkStatus->start();
        const int queries = fakes::scriptedPlatform().memoryQueries;
        QTRY_VERIFY(fakes::scriptedPlatform().memoryQueries > queries); // a second goes by
        for (int i = 0; i < 5; ++i) {
            window->tickParticles();
            window->pulsePrimaryButtons();
            QCoreApplication::processEvents();
        }
        QCOMPARE(all.paints, 0);
    }

    void nothingIsPaintedWhileHidden()
    {
        showAtRest(MainWindow::DashboardPage);
        window->hide();
        PaintCounter all(window.get());
        for (int i = 0; i < 10; ++i) {
            window->tickParticles();
            window->updateSystemStats();
            window->onAccentHueChanged(i);
            QCoreApplication::processEvents();
        }
        QCOMPARE(all.paints, 0);
        window->show();
        QTRY_VERIFY(all.paints > 0);
    }

    // Not every desktop tells a minimised window that nobody sees it.
    void nothingMovesWhileMinimised()
    {
        showAtRest(MainWindow::DashboardPage);
        stopTimers();
        window->showMinimized();
        QCoreApplication::processEvents();
        PaintCounter all(window.get());
        const double before = window->particleCanvas->particles.front().phase;
        for (int i = 0; i < 10; ++i) {
            window->tickParticles();
            QCoreApplication::processEvents();
        }
        QCOMPARE(all.paints, 0);
        QCOMPARE(window->particleCanvas->particles.front().phase, before);
        window->showNormal();
        window->tickParticles();
        QTRY_VERIFY(all.paints > 0);
        QVERIFY(window->particleCanvas->particles.front().phase != before);
    }

private:
    void stopTimers()
    {
        const auto timers = window->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
        for (QTimer *timer : timers) {
            timer->stop();
        }
    }

    void showAtRest(int page)
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->onNavChanged(page);
        QTRY_VERIFY(window->dashboard.page->graphicsEffect() == nullptr
                    && window->settings.page->graphicsEffect() == nullptr);
        stopTimers();
        QTRY_VERIFY(fakes::scriptedPlatform().memoryQueries > 0); // the first figures are there
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(PerformanceModeTest)
#include "PerformanceModeTest.moc"
