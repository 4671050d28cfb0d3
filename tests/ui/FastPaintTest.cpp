// The quick ways of painting against the toolkit's own.
#include "ui/DotRaster.h"
#include "ui/DrawPicture.h"
#include "ui/PictureDifference.h"
#include "ui/TileRegion.h"

#include <QPainter>
#include <QTest>
#include <QWidget>
#include <random>

namespace {

QImage canvas(const QSize &size, qreal ratio)
{
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(20, 60, 110, 200));
    return image;
}

// A widget that draws a picture at a place, by either way.
class PictureWidget : public QWidget
{
public:
    PictureWidget(const QImage &content, const QPoint &at)
        : picture(content)
        , place(at)
    { }
    bool quickly = true;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        if (quickly) {
            drawPicture(painter, place, picture);
        } else {
            painter.drawImage(place, picture);
        }
    }

private:
    QImage picture;
    QPoint place;
};

} // namespace

class FastPaintTest : public QObject
{
    Q_OBJECT

private slots:
    void dotsAreTheToolkitsEllipses_data()
    {
        QTest::addColumn<qreal>("ratio");
        for (const qreal ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            QTest::addRow("@%g", ratio) << ratio;
        }
    }
    void dotsAreTheToolkitsEllipses()
    {
        QFETCH(qreal, ratio);
        std::mt19937 random(7); // NOLINT(cert-msc51-cpp) the same dots every time
        std::uniform_real_distribution<double> unit(0, 1);
        DotRaster raster;
        for (int i = 0; i < 1000; ++i) {
            const double radius = 1.6 + 3 * unit(random);
            const QPointF center(-3 + 30 * unit(random),
                                 -3 + 30 * unit(random)); // some over the edge
            const QColor color =
                QColor::fromHsv(static_cast<int>(359 * unit(random)), 133, 255, 70 + i % 111);
            QImage expected = canvas({24, 24}, ratio);
            QImage actual = expected;
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(center, radius, radius);
            painter.end();
            raster.blend(actual, center, radius, color.rgba64().premultiplied().toArgb32());
            QVERIFY2(largestDifference(actual, expected) <= 1, qPrintable(QString::number(i)));
        }
    }

    void dotsSayWhatTheyTouched()
    {
        DotRaster raster;
        QImage picture = canvas({40, 40}, 1);
        const QImage before = picture;
        raster.blend(picture, {20.3, 21.7}, 4.2, 0x80808080);
        const QRect touched = DotRaster::boundsIn(picture, {20.3, 21.7}, 4.2);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                QVERIFY(touched.contains(x, y) || picture.pixel(x, y) == before.pixel(x, y));
            }
        }
        QVERIFY(touched.width() <= 12);
    }

    void impossibleDotsTouchNothing()
    {
        DotRaster raster;
        QImage picture = canvas({40, 40}, 1);
        const QImage before = picture;
        for (const double radius : {0.0, -1.0, 100.0}) {
            raster.blend(picture, {20, 20}, radius, 0xffffffff);
        }
        raster.blend(picture, {200, 20}, 3, 0xffffffff);
        raster.blend(picture, {20, -200}, 3, 0xffffffff);
        QCOMPARE(picture, before);
    }

    void tilesCoverWhatTheyAreGiven()
    {
        std::mt19937 random(3); // NOLINT(cert-msc51-cpp)
        std::uniform_real_distribution<double> place(-30, 330);
        for (int round = 0; round < 200; ++round) {
            TileRegion tiles({301, 203});
            QList<QRectF> rects;
            for (int i = 0; i < round % 20; ++i) {
                rects.append(QRectF(place(random), place(random), 9.5, 7.25));
                tiles.cover(rects.last());
            }
            const QRegion region = tiles.region();
            QRegion wanted;
            for (const QRectF &rect : std::as_const(rects)) {
                wanted += rect.toAlignedRect() & QRect(0, 0, 301, 203);
            }
            QVERIFY(wanted.subtracted(region).isEmpty());
            QVERIFY(region.isEmpty() || QRect(0, 0, 304, 208).contains(region.boundingRect()));
            int area = 0;
            for (const QRect &rect : region) {
                area += rect.width() * rect.height();
            }
            QVERIFY(area <= rects.size() * 9 * 64); // three by three tiles each at most
        }
    }

    // Repaints of all shapes: one rectangle, a few, and more than are drawn one by one.
    void picturesAreDrawnLikeTheToolkitDoes_data()
    {
        QTest::addColumn<int>("rectangles");
        QTest::addColumn<QPoint>("place");
        for (const int rectangles : {1, 2, 10, 31, 32, 200}) {
            QTest::addRow("%d rectangles", rectangles) << rectangles << QPoint(0, 0);
            QTest::addRow("%d rectangles, moved", rectangles) << rectangles << QPoint(-20, 35);
        }
    }
    void picturesAreDrawnLikeTheToolkitDoes()
    {
        QFETCH(int, rectangles);
        QFETCH(QPoint, place);
        QImage picture(200, 150, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        QLinearGradient colors(0, 0, 200, 150);
        colors.setColorAt(0, QColor(255, 80, 10, 250));
        colors.setColorAt(1, QColor(10, 200, 255, 5));
        painter.fillRect(picture.rect(), colors);
        painter.end();

        std::mt19937 random(5); // NOLINT(cert-msc51-cpp)
        QRegion region;
        while (region.rectCount() < rectangles) {
            region +=
                QRect(static_cast<int>(random() % 190), static_cast<int>(random() % 140), 7, 5);
        }
        PictureWidget widget(picture, place);
        widget.resize(200, 150);
        const auto painted = [&](bool quickly) {
            widget.quickly = quickly;
            QImage image = canvas({200, 150}, 1);
            widget.render(&image, {}, region, QWidget::DrawChildren);
            return image;
        };
        const QImage expected = painted(false);
        QVERIFY(largestDifference(expected, canvas({200, 150}, 1)) > 50);
        QVERIFY(largestDifference(painted(true), expected) <= 1);
    }

    void partsOfAFadingPainterAreLeftToTheToolkit()
    {
        QImage picture(50, 50, QImage::Format_ARGB32_Premultiplied);
        picture.fill(QColor(200, 100, 50, 128));
        QImage expected = canvas({60, 60}, 1);
        QImage actual = expected;
        for (QImage *image : {&expected, &actual}) {
            QPainter painter(image);
            painter.setOpacity(0.5);
            painter.setClipRegion(QRegion(5, 5, 10, 10) + QRegion(30, 30, 9, 9));
            if (image == &actual) {
                drawPicture(painter, {3, 4}, picture);
            } else {
                painter.drawImage(QPoint(3, 4), picture);
            }
        }
        QCOMPARE(actual, expected);
    }
};

QTEST_MAIN(FastPaintTest)
#include "FastPaintTest.moc"
