#include "ui/BlendPixels.h"

#include "ui/PremultipliedColor.h"

#include <QTest>
#include <algorithm>
#include <random>
#include <vector>

namespace {

using Pixels = std::vector<QRgb>;

Pixels anyPixels(std::mt19937 &random, std::size_t count)
{
    Pixels pixels(count);
    std::generate(pixels.begin(), pixels.end(), [&random] {
        return qPremultiply(static_cast<QRgb>(random()));
    });
    return pixels;
}

void expectAsOneByOne(const Pixels &source, const Pixels &target, int from, int count)
{
    Pixels expected = target;
    std::transform(source.begin() + from,
                   source.begin() + from + count,
                   expected.begin() + from,
                   expected.begin() + from,
                   blended);
    Pixels actual = target;
    blendPixels(source.data() + from, actual.data() + from, count);
    QCOMPARE(actual, expected); // and nothing else was touched
}

} // namespace

class BlendPixelsTest : public QObject
{
    Q_OBJECT

private slots:
    void anyNumberFromAnyPlace()
    {
        std::mt19937 random(3);
        const Pixels source = anyPixels(random, 32);
        const Pixels target = anyPixels(random, 32);
        for (int from = 0; from < 5; ++from) {
            for (int count = 0; count < 20; ++count) {
                expectAsOneByOne(source, target, from, count);
            }
        }
    }

    void everyAlphaOverEveryAlpha()
    {
        for (unsigned alpha = 0; alpha < 256; ++alpha) {
            const Pixels source(256, qPremultiply(qRgba(255, 128, 1, static_cast<int>(alpha))));
            Pixels target(256);
            for (std::size_t i = 0; i < target.size(); ++i) {
                target[i] = qPremultiply(qRgba(3, 255, 77, static_cast<int>(i)));
            }
            expectAsOneByOne(source, target, 0, 256);
        }
    }
};

QTEST_APPLESS_MAIN(BlendPixelsTest)
#include "BlendPixelsTest.moc"
