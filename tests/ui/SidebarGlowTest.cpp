#include "ui/SidebarGlow.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cmath>

namespace {

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, {});
    return image;
}

QTimer *timerOf(const SidebarGlow &glow)
{
    return glow.findChild<QTimer *>();
}

// Stops the clock, so that only the test makes steps.
void runUntilSettled(SidebarGlow &glow, int ticks)
{
    for (int i = 0; i < ticks; ++i) {
        glow.tick();
    }
}

} // namespace

class SidebarGlowTest : public QObject
{
    Q_OBJECT

private slots:
    void startsIdle()
    {
        const SidebarGlow glow(nullptr);
        QVERIFY(glow.testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(glow.testAttribute(Qt::WA_NoSystemBackground));
        QVERIFY(!glow.hasMouseTracking());
        QCOMPARE(glow.center(), QPointF(0, 0));
        QCOMPARE(glow.currentStrength(), 0.0);
        QCOMPARE(timerOf(glow)->interval(), 16);
        QVERIFY(!timerOf(glow)->isSingleShot());
        QVERIFY(!timerOf(glow)->isActive());
    }

    void stepsTowardsItsTargets()
    {
        SidebarGlow glow(nullptr);
        glow.setCursorPos({100, -50});
        glow.setActive(true);
        glow.tick();
        QCOMPARE(glow.center(), QPointF(24, -12));
        QCOMPARE(glow.currentStrength(), 0.2);
        glow.tick();
        QCOMPARE(glow.center(), QPointF(24 + 76 * 0.24, -12 - 38 * 0.24));
        QCOMPARE(glow.currentStrength(), 0.36);
    }

    void settlesAndGoesOnWhileActive()
    {
        SidebarGlow glow(nullptr);
        glow.setCursorPos({30, 40});
        glow.setActive(true);
        runUntilSettled(glow, 60);
        QCOMPARE(glow.center(), QPointF(30, 40));
        QCOMPARE(glow.currentStrength(), 1.0);
        QVERIFY(timerOf(glow)->isActive());
    }

    // Strength alone settles after 21 steps: 0.8 to the 21st is the first below 0.01.
    void settlesAtTheThreshold()
    {
        SidebarGlow glow(nullptr);
        glow.setActive(true);
        runUntilSettled(glow, 20);
        QVERIFY(glow.currentStrength() < 1.0);
        glow.tick();
        QCOMPARE(glow.currentStrength(), 1.0);
    }

    // Both axes count together: 0.19 px each are settled, 0.21 px each are not.
    void distanceIsTheSumOfBothAxes_data()
    {
        QTest::addColumn<double>("left");
        QTest::addColumn<bool>("settled");
        QTest::newRow("near") << 0.19 << true;
        QTest::newRow("not yet") << 0.21 << false;
    }

    void distanceIsTheSumOfBothAxes()
    {
        QFETCH(double, left);
        QFETCH(bool, settled);
        SidebarGlow glow(nullptr);
        const double target = left / 0.76; // so much is left after one step
        glow.setCursorPos({target, -target});
        glow.tick();
        QCOMPARE(glow.center() == QPointF(target, -target), settled);
        QCOMPARE(timerOf(glow)->isActive(), !settled);
    }

    void fadesOutAndStops()
    {
        SidebarGlow glow(nullptr);
        glow.setActive(true);
        runUntilSettled(glow, 30);
        glow.setActive(false);
        runUntilSettled(glow, 20);
        QVERIFY(timerOf(glow)->isActive());
        glow.tick();
        QCOMPARE(glow.currentStrength(), 0.0);
        QVERIFY(!timerOf(glow)->isActive());
        glow.setActive(true);
        QVERIFY(timerOf(glow)->isActive());
    }

    // By its own clock: an inactive glow moves unseen, and rests when it has arrived.
    void movesUnseenAndRests()
    {
        SidebarGlow glow(nullptr);
        glow.resize(50, 50);
        glow.setCursorPos({10, 10});
        QVERIFY(timerOf(glow)->isActive());
        QTRY_VERIFY(!timerOf(glow)->isActive());
        QCOMPARE(glow.center(), QPointF(10, 10));
        QCOMPARE(glow.currentStrength(), 0.0);
    }

    void paintsNothingAtFirst()
    {
        SidebarGlow glow(nullptr);
        glow.resize(80, 120);
        QImage empty(glow.size(), QImage::Format_ARGB32_Premultiplied);
        empty.fill(Qt::black);
        QCOMPARE(picture(glow), empty);
        glow.setActive(true);
        glow.tick();
        QVERIFY(picture(glow) != empty);
    }

    void paintsTheGradientInsideARoundedPanel()
    {
        SidebarGlow glow(nullptr);
        glow.resize(80, 120);
        glow.setAccentColor(QColor(250, 100, 10));
        glow.setCursorPos({40, 60});
        glow.setActive(true);
        runUntilSettled(glow, 3);
        const double strength = glow.currentStrength();
        QImage expected(glow.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::black);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath panel;
        panel.addRoundedRect(1, 1, 78, 118, 10, 10);
        painter.setClipPath(panel);
        QRadialGradient gradient(glow.center(), 54);
        gradient.setColorAt(0, QColor(250, 100, 10, static_cast<int>(68 * strength)));
        gradient.setColorAt(0.35, QColor(250, 100, 10, static_cast<int>(28 * strength)));
        gradient.setColorAt(1, QColor(250, 100, 10, 0));
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawEllipse(glow.center(), 54, 54);
        painter.end();
        QCOMPARE(picture(glow), expected);
        QCOMPARE(expected.pixelColor(0, 0), QColor(Qt::black));
    }

    void letsTheMouseThrough()
    {
        QWidget panel;
        panel.resize(100, 100);
        auto *button = new QPushButton(&panel);
        button->setGeometry(0, 0, 100, 100);
        auto *glow = new SidebarGlow(&panel);
        glow->setGeometry(0, 0, 100, 100);
        panel.show();
        QCOMPARE(panel.childAt(50, 50), button);
    }

    void destroyedWhileRunning()
    {
        auto *glow = new SidebarGlow(nullptr);
        glow->setActive(true);
        delete glow;
        QCoreApplication::processEvents();
    }
};

QTEST_MAIN(SidebarGlowTest)
#include "SidebarGlowTest.moc"
