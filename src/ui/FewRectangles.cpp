#include "ui/FewRectangles.h"

#include <QRegion>
#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

namespace {

constexpr qsizetype kFew = 6;
constexpr int kTooMany = 32; // to look for the best pairs
constexpr qint64 kWorthless = 4096; // px that cost less than a rectangle more

qint64 areaOf(const QRect &rect)
{
    return static_cast<qint64>(rect.width()) * rect.height();
}

struct Pair
{
    qsizetype first = 0;
    qsizetype second = 0;
    qint64 waste =
        std::numeric_limits<qint64>::max(); // px of the rectangle around both that are in neither
};

bool isCloser(const Pair &one, const Pair &other)
{
    return one.waste < other.waste;
}

qint64 wasteOf(const QRect &one, const QRect &other)
{
    return areaOf(one | other) - areaOf(one) - areaOf(other);
}

Pair closestPair(const QList<QRect> &rects)
{
    Pair best;
    for (qsizetype i = 1; i < rects.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            best = std::min(best, Pair{j, i, wasteOf(rects[i], rects[j])}, isCloser);
        }
    }
    return best;
}

} // namespace

QList<QRect> fewRectangles(const QRegion &region)
{
    return region.rectCount() > kTooMany
        ? QList<QRect>{region.boundingRect()}
        : fewRectangles(QList<QRect>(region.begin(), region.end()));
}

QList<QRect> fewRectangles(QList<QRect> rects)
{
    if (rects.size() > kTooMany) {
        return {std::accumulate(rects.begin(), rects.end(), QRect(), std::bit_or<QRect>())};
    }
    while (rects.size() > 1) {
        const Pair pair = closestPair(rects);
        if (rects.size() <= kFew && pair.waste > kWorthless) {
            break;
        }
        rects[pair.first] |= rects[pair.second];
        rects.removeAt(pair.second);
    }
    return rects;
}
