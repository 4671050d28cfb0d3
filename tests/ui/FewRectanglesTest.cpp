#include "ui/FewRectangles.h"

#include <QRegion>
#include <QTest>
#include <algorithm>
#include <random>

namespace {

QRegion united(const QList<QRect> &rects)
{
    QRegion region;
    for (const QRect &rect : rects) {
        region += rect;
    }
    return region;
}

} // namespace

class FewRectanglesTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsCoveredByNothing() { QVERIFY(fewRectangles(QRegion()).isEmpty()); }

    void oneStaysAsItIs()
    {
        const QRect rect(3, 4, 50, 60);
        QCOMPARE(fewRectangles(rect), QList<QRect>{rect});
    }

    void farOnesStayApart()
    {
        const QList<QRect> rects{{0, 0, 30, 30}, {500, 0, 30, 30}, {0, 400, 30, 30}};
        QCOMPARE(fewRectangles(united(rects)), rects);
    }

    void closeOnesAreJoined()
    {
        const QRegion region = united({{0, 0, 30, 30}, {40, 2, 30, 30}, {500, 400, 30, 30}});
        const QList<QRect> expected{{0, 0, 70, 32}, {500, 400, 30, 30}};
        QCOMPARE(fewRectangles(region), expected);
    }

    void manyAreSurroundedByOne()
    {
        QRegion region;
        for (int i = 0; i < 33; ++i) {
            region += QRect(20 * i, 30 * i, 8, 8);
        }
        QCOMPARE(region.rectCount(), 33);
        QCOMPARE(fewRectangles(region), QList<QRect>{region.boundingRect()});
    }

    void overlappingOnesStayWhole()
    {
        const QList<QRect> rects{{0, 0, 300, 300}, {200, 100, 300, 300}, {900, 0, 5, 5}};
        const QList<QRect> few = fewRectangles(rects);
        for (const QRect &rect : rects) {
            QVERIFY(std::any_of(
                few.begin(), few.end(), [&rect](const QRect &one) { return one.contains(rect); }));
        }
    }

    void everythingIsCoveredByAtMostSix()
    {
        std::mt19937 random(7);
        const auto upTo = [&random](unsigned limit) {
            return static_cast<int>(random() % limit);
        };
        for (int round = 0; round < 200; ++round) {
            QRegion region;
            for (int i = upTo(16); i >= 0; --i) {
                region += QRect(upTo(1000), upTo(600), 1 + upTo(200), 1 + upTo(90));
            }
            const QList<QRect> few = fewRectangles(region);
            QVERIFY(few.size() <= 6);
            QVERIFY((region - united(few)).isEmpty());
            QVERIFY((united(few) - region.boundingRect()).isEmpty());
        }
    }
};

QTEST_APPLESS_MAIN(FewRectanglesTest)
#include "FewRectanglesTest.moc"
