#include "ui/ParticleCanvas.h"

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
