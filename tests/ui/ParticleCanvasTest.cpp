#include "ui/ParticleCanvas.h"
#include "ui/DirectCanvas.h"
#include "ui/PictureDifference.h"

#include <QPainter>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <cmath>

namespace {

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

// A still canvas with one large dot in the middle of it, away from the grid's lines.
void placeOneDot(ParticleCanvas &canvas)
{
    canvas.resize(200, 100);
    picture(canvas); // delivers the resize, which sows anew
    canvas.particles = {{106, 60, 0, 0, 8, 1.5708}}; // brightest
}

QImage paintedDirectly(const ParticleCanvas &canvas, qreal ratio)
{
    QImage image(canvas.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    QPainter painter(&image);
    direct::paintCanvas(painter, canvas);
    return image;
}

} // namespace

class ParticleCanvasTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAsDesigned()
    {
        const ParticleCanvas canvas(nullptr);
        QCOMPARE(canvas.objectName(), QStringLiteral("particleCanvas"));
        QVERIFY(canvas.particles.empty());
        QCOMPARE(canvas.count, 70);
        QCOMPARE(canvas.speed, 1.0);
        QVERIFY(canvas.enabled && canvas.autoColorShift && !canvas.frameOutline);
        QCOMPARE(canvas.hueOffset, 0);
        QVERIFY(!canvas.accentColor.isValid());
    }

    void seedsInRange_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("right");
        QTest::newRow("usual") << QSize(300, 200) << 300;
        QTest::newRow("tiny") << QSize(3, 3) << 20;
    }

    void seedsInRange()
    {
        QFETCH(QSize, size);
        QFETCH(int, right);
        ParticleCanvas canvas(nullptr);
        canvas.resize(size);
        canvas.count = 500;
        canvas.initParticles();
        QCOMPARE(canvas.particles.size(), 500U);
        for (const auto &dot : canvas.particles) {
            QVERIFY(dot.x >= 0 && dot.x < right && dot.x == std::floor(dot.x));
            QVERIFY(dot.y >= 0 && dot.y < std::max(size.height(), 20));
            QVERIFY(dot.vx >= -1.2 && dot.vx < 1.2 && dot.vy >= -1.2 && dot.vy < 1.2);
            QVERIFY(dot.radius >= 1.6 && dot.radius < 4.6);
            QVERIFY(dot.phase >= 0 && dot.phase < 6.28);
        }
        // All of the range is used: 500 dots miss its right or lower half less than once in 10^150 runs.
        const auto half = [&](double ParticleCanvas::Particle::*place, int end) {
            return std::any_of(canvas.particles.begin(),
                               canvas.particles.end(),
                               [&](const auto &dot) { return dot.*place >= end / 2.0; });
        };
        QVERIFY(half(&ParticleCanvas::Particle::x, right));
        QVERIFY(half(&ParticleCanvas::Particle::y, std::max(size.height(), 20)));
    }

    void wraps_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("vx");
        QTest::addColumn<double>("after");
        QTest::newRow("inside") << 10.0 << 1.0 << 11.0;
        QTest::newRow("right margin") << 219.0 << 1.0 << 220.0;
        QTest::newRow("right") << 220.0 << 1.0 << -20.0;
        QTest::newRow("left margin") << -19.0 << -1.0 << -20.0;
        QTest::newRow("left") << -20.0 << -1.0 << 220.0;
    }

    void wraps()
    {
        QFETCH(double, x);
        QFETCH(double, vx);
        ParticleCanvas canvas(nullptr);
        canvas.resize(200, 200);
        canvas.particles = {{x, x, vx, vx, 2, 0}};
        canvas.advance();
        QTEST(canvas.particles[0].x, "after");
        QTEST(canvas.particles[0].y, "after");
    }

    void dotsHaveTheAccentsHue_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::addColumn<bool>("shift");
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("hue");
        QTest::newRow("plain") << QColor::fromHsv(100, 255, 255) << false << 77 << 100;
        QTest::newRow("shifted") << QColor::fromHsv(100, 255, 255) << true << 77 << 177;
        QTest::newRow("round the circle") << QColor::fromHsv(359, 255, 255) << true << 5 << 4;
        QTest::newRow("no accent") << QColor() << false << 0 << QColor(120, 195, 255).hsvHue();
    }

    void dotsHaveTheAccentsHue()
    {
        QFETCH(QColor, accent);
        QFETCH(bool, shift);
        QFETCH(int, offset);
        QFETCH(int, hue);
        ParticleCanvas canvas(nullptr);
        placeOneDot(canvas);
        canvas.accentColor = accent;
        canvas.autoColorShift = shift;
        canvas.hueOffset = offset;
        const QColor with = picture(canvas).pixelColor(106, 60);
        canvas.enabled = false;
        const QColor without = picture(canvas).pixelColor(106, 60);
        // What the dot added: its colour at 180 of 255 over what was there.
        const auto added = [](int over, int under) {
            return std::clamp((over * 255 - under * 75) / 180, 0, 255);
        };
        const QColor dot(added(with.red(), without.red()),
                         added(with.green(), without.green()),
                         added(with.blue(), without.blue()));
        const int distance = std::abs(dot.hsvHue() - hue);
        QVERIFY2(std::min(distance, 360 - distance) <= 2, qPrintable(dot.name()));
    }

    void pictureIsTheDesignedOne_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("outline");
        QTest::addColumn<bool>("shift");
        QTest::addColumn<qreal>("ratio");
        for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("as in the window @%g", ratio)
                << QSize(400, 240) << true << false << true << ratio;
        }
        QTest::newRow("without dots") << QSize(301, 203) << false << false << true << 1.0;
        QTest::newRow("outlined") << QSize(301, 203) << true << true << false << 1.0;
        QTest::newRow("tiny") << QSize(5, 5) << true << false << false << 1.0;
    }

    void pictureIsTheDesignedOne()
    {
        QFETCH(QSize, size);
        QFETCH(bool, enabled);
        QFETCH(bool, outline);
        QFETCH(bool, shift);
        QFETCH(qreal, ratio);
        ParticleCanvas canvas(nullptr);
        canvas.resize(size);
        picture(canvas);
        canvas.accentColor = QColor::fromHsv(205, 133, 255);
        canvas.enabled = enabled;
        canvas.frameOutline = outline;
        canvas.autoColorShift = shift;
        canvas.hueOffset = 200;
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::black);
        canvas.render(&image, {}, {}, QWidget::DrawChildren);
        QVERIFY(largestDifference(image, paintedDirectly(canvas, ratio)) <= 1);
    }

    // As when the window is moved to a screen of another scale, and back.
    void otherScalesAreNotStretched()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(200, 150);
        picture(canvas);
        canvas.autoColorShift = false;
        for (const qreal ratio : {1.0, 2.0, 1.25, 1.0}) {
            QImage image(canvas.size() * ratio, QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(ratio);
            image.fill(Qt::black);
            canvas.render(&image, {}, {}, QWidget::DrawChildren);
            QVERIFY(largestDifference(image, paintedDirectly(canvas, ratio)) <= 1);
        }
    }

    // Whoever writes the fields may leave the repaint to the next tick.
    void ticksShowWhatWasWritten()
    {
        ParticleCanvas canvas;
        canvas.resize(200, 150);
        canvas.show();
        QVERIFY(QTest::qWaitForWindowExposed(&canvas));
        const auto onScreen = [&canvas] {
            return canvas.screen()->grabWindow(canvas.winId()).toImage();
        };
        const auto comesToShow = [&](const auto &write) {
            write();
            canvas.updateDots();
            const QImage expected = canvas.grab().toImage();
            return QTest::qWaitFor([&] { return largestDifference(onScreen(), expected) <= 1; });
        };
        QVERIFY(comesToShow([] {}));
        QVERIFY(comesToShow([&canvas] { canvas.enabled = false; }));
        QVERIFY(comesToShow([&canvas] { canvas.frameOutline = true; }));
        QVERIFY(comesToShow([&canvas] {
            canvas.enabled = true;
            canvas.frameOutline = false;
        }));
    }

    // What stands on the screen after many small repaints is what one large repaint paints.
    void smallRepaintsLeaveNoTrails()
    {
        QWidget window;
        window.resize(400, 240);
        auto *canvas = new ParticleCanvas(&window);
        canvas->setGeometry(window.rect());
        canvas->count = 40;
        canvas->speed = 3;
        canvas->initParticles();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto onScreen = [&window] {
            return window.screen()->grabWindow(window.winId()).toImage();
        };
        const QImage before = onScreen();
        for (int tick = 0; tick < 60; ++tick) {
            canvas->advance();
            canvas->updateDots();
            QCoreApplication::processEvents();
        }
        const QImage expected = window.grab().toImage();
        QVERIFY(largestDifference(expected, before) > 20); // they have moved
        QTRY_VERIFY(largestDifference(onScreen(), expected)
                    <= 1); // once the last repaint is through
    }

    // The opacity of a dot over black is its own: 70 to 180 of 255.
    void dotsTwinkle_data()
    {
        QTest::addColumn<double>("phase");
        QTest::addColumn<int>("alpha");
        QTest::newRow("darkest") << 4.712388980384690 << 70;
        QTest::newRow("middle") << 0.0 << 125;
        QTest::newRow("rising") << 0.5235987755982989 << 152; // sin 0.5
        QTest::newRow("brightest") << 1.5707963267948966 << 180;
    }

    void dotsTwinkle()
    {
        QFETCH(double, phase);
        QFETCH(int, alpha);
        ParticleCanvas canvas(nullptr);
        placeOneDot(canvas);
        canvas.accentColor = QColor(255, 255, 255);
        canvas.autoColorShift = false;
        canvas.particles[0].phase = phase;
        const QColor with = picture(canvas).pixelColor(106, 60);
        canvas.enabled = false;
        const QColor without = picture(canvas).pixelColor(106, 60);
        const auto over = [alpha](int under) {
            return (255 * alpha + under * (255 - alpha)) / 255;
        };
        QVERIFY(std::abs(with.red() - over(without.red())) <= 1);
        QVERIFY(std::abs(with.green() - over(without.green())) <= 1);
        QVERIFY(std::abs(with.blue() - over(without.blue())) <= 1);
    }

    void dotsHaveTheirRadius()
    {
        ParticleCanvas canvas(nullptr);
        placeOneDot(canvas);
        canvas.particles[0].radius = 4;
        const QImage with = picture(canvas);
        canvas.enabled = false;
        const QImage without = picture(canvas);
        for (const int x : {101, 111}) {
            QCOMPARE(with.pixelColor(x, 60), without.pixelColor(x, 60));
        }
        for (const int x : {103, 106, 109}) {
            QVERIFY(with.pixelColor(x, 60) != without.pixelColor(x, 60));
        }
    }

    // Nobody's dots are moved to another size: there are new ones.
    void resizeSowsAnew()
    {
        ParticleCanvas canvas(nullptr);
        canvas.count = 30;
        canvas.resize(500, 400);
        canvas.show();
        QCOMPARE(canvas.particles.size(), 30U);
        canvas.particles = {{1, 2, 3, 4, 5, 6}};
        canvas.resize(90, 60);
        QCOMPARE(canvas.particles.size(), 30U);
        for (const auto &dot : canvas.particles) {
            QVERIFY(dot.x < 90 && dot.y < 60);
        }
    }

    void speedScalesTheMotionOnly()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(200, 200);
        canvas.speed = 0.5;
        canvas.particles = {{10, 20, 1, -2, 2, 6.27}};
        canvas.advance();
        QCOMPARE(canvas.particles[0].x, 10.5);
        QCOMPARE(canvas.particles[0].y, 19.0);
        QCOMPARE(canvas.particles[0].phase, 6.29);
    }

    void eachAxisWrapsBySize()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(200, 100);
        canvas.particles = {{221, 50, 0, 0, 2, 0}, {50, 121, 0, 0, 2, 0}, {50, -21, 0, 0, 2, 0}};
        canvas.advance();
        QCOMPARE(canvas.particles[0].x, -20.0);
        QCOMPARE(canvas.particles[0].y, 50.0);
        QCOMPARE(canvas.particles[1].y, -20.0);
        QCOMPARE(canvas.particles[2].y, 120.0);
    }

    void hueGoesRound()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(100, 100);
        canvas.hueOffset = 358;
        canvas.advance();
        QCOMPARE(canvas.hueOffset, 359);
        canvas.advance();
        QCOMPARE(canvas.hueOffset, 0);
        canvas.autoColorShift = false;
        canvas.advance();
        QCOMPARE(canvas.hueOffset, 0);
    }

    void withoutASizeItStandsStill()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(0, 100);
        canvas.particles = {{1, 1, 1, 1, 2, 0}};
        canvas.advance();
        QCOMPARE(canvas.particles[0].x, 1.0);
    }

    void outlineIsOptional()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(100, 100);
        canvas.enabled = false;
        const QImage without = picture(canvas);
        canvas.frameOutline = true;
        QVERIFY(picture(canvas) != without);
    }

    void disabledCanvasStandsStill()
    {
        ParticleCanvas canvas(nullptr);
        canvas.resize(100, 100);
        canvas.particles = {{1, 1, 1, 1, 2, 0}};
        canvas.enabled = false;
        canvas.advance();
        QCOMPARE(canvas.particles[0].x, 1.0);
        QCOMPARE(canvas.hueOffset, 0);
    }
};

QTEST_MAIN(ParticleCanvasTest)
#include "ParticleCanvasTest.moc"
