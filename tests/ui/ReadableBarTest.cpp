#include "ui/ReadableBar.h"

#include "ui/Theme.h"

#include <QTest>

namespace {

QImage picture(QProgressBar &bar)
{
    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(12, 22, 42));
    bar.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

// The darkest and the lightest pixel of a column range.
std::pair<int, int> extremes(const QImage &image, int from, int to)
{
    int darkest = 255;
    int lightest = 0;
    for (int y = 4; y < image.height() - 4; ++y) {
        for (int x = from; x < to; ++x) {
            const int grey = qGray(image.pixel(x, y));
            darkest = std::min(darkest, grey);
            lightest = std::max(lightest, grey);
        }
    }
    return {darkest, lightest};
}

} // namespace

class ReadableBarTest : public QObject
{
    Q_OBJECT

private slots:
    void textIsDarkOnTheChunkAndLightOnTheGroove()
    {
        ReadableBar bar(nullptr);
        bar.setStyleSheet(theme::styleSheet(theme::initialAccent()));
        bar.setPalette(theme::palette(theme::initialAccent()));
        bar.resize(200, 26);
        bar.setFormat(QStringLiteral("MMMMMMMMMMMMMMM"));
        bar.setValue(50);
        const QImage image = picture(bar);
        QVERIFY(extremes(image, 50, 90).first < 60); // black strokes on the bright half
        QVERIFY(extremes(image, 110, 150).second > 220); // white strokes on the dark half

        bar.setTextVisible(false);
        const QImage plain = picture(bar);
        QVERIFY(extremes(plain, 50, 90).first > 80);
        QVERIFY(extremes(plain, 110, 150).second < 100);
    }

    void emptySizeIsHarmless()
    {
        ReadableBar bar(nullptr);
        bar.resize(0, 0);
        bar.grab();
    }
};

QTEST_MAIN(ReadableBarTest)
#include "ReadableBarTest.moc"
