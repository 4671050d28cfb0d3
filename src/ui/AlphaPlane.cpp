#include "ui/AlphaPlane.h"

#include "ui/PremultipliedColor.h"

#include <QColor>
#include <QRgba64>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

// The one format of a byte that the toolkit's blur takes as it is; there is no table of colours.
constexpr auto kFormat = QImage::Format_Indexed8;

constexpr int kAlphaShift = 24;
constexpr int kFull = 256; // of a weight

const QRgb *rowOf(const QImage &picture, int y)
{
    return reinterpret_cast<const QRgb *>(picture.constScanLine(y));
}

// The two neighbours between which each pixel lies, and the second one's weight.
struct Neighbors
{
    std::vector<int> first;
    std::vector<int> second;
    std::vector<int> weight; // of 256
};

Neighbors neighborsFor(int count, const Stretch &stretch, int available)
{
    constexpr int kOne = 1 << 16;
    // By which the toolkit shifts what it scales, against rounding to the wrong side.
    const double hair = stretch.scale == 1 ? 0 : 1.0 / kOne;
    Neighbors all;
    for (int i = 0; i < count; ++i) {
        const double inPlane =
            (i + 0.5 + stretch.origin - hair) / stretch.scale - stretch.planeOrigin;
        const int place = static_cast<int>(std::floor(inPlane * kOne)) - kOne / 2;
        const int first = place >> 16;
        all.first.push_back(std::clamp(first, 0, available - 1));
        all.second.push_back(std::clamp(first + 1, 0, available - 1));
        all.weight.push_back((place & (kOne - 1)) >> 8);
    }
    return all;
}

std::array<QRgb, 256> shadesOf(const QColor &color)
{
    std::array<QRgb, 256> shades{};
    const QRgb full = color.rgba64().premultiplied().toArgb32();
    for (unsigned alpha = 0; alpha < shades.size(); ++alpha) {
        shades[alpha] = multiplied(full, alpha);
    }
    return shades;
}

void blendRows(const uchar *above, const uchar *below, int weight, std::vector<uchar> &row)
{
    const int rest = kFull - weight;
    for (std::size_t x = 0; x < row.size(); ++x) {
        row[x] = static_cast<uchar>((above[x] * rest + below[x] * weight) >> 8);
    }
}

} // namespace

QImage alphaPlane(const QImage &picture, const QRect &part)
{
    QImage plane(part.size(), kFormat);
    plane.fill(0);
    const QRect known = part & picture.rect();
    for (int y = known.top(); y <= known.bottom(); ++y) {
        const QRgb *from = rowOf(picture, y) + known.left();
        uchar *to = plane.scanLine(y - part.top()) + known.left() - part.left();
        std::transform(from, from + known.width(), to, [](QRgb pixel) {
            return static_cast<uchar>(pixel >> kAlphaShift);
        });
    }
    return plane;
}

QImage halfAlphaPlane(const QImage &picture, const QRect &part)
{
    const QImage whole = alphaPlane(picture, part);
    QImage half(part.width() / 2, part.height() / 2, kFormat);
    for (int y = 0; y < half.height(); ++y) {
        const uchar *upper = whole.constScanLine(2 * y);
        const uchar *lower = whole.constScanLine(2 * y + 1);
        uchar *to = half.scanLine(y);
        for (const uchar *end = to + half.width(); to != end; ++to, upper += 2, lower += 2) {
            const int above = (upper[0] + upper[1]) >> 1;
            const int below = (lower[0] + lower[1]) >> 1;
            *to = static_cast<uchar>((above + below) >> 1);
        }
    }
    return half;
}

QImage colored(
    const QImage &plane, const QSize &size, const Stretch &x, const Stretch &y, const QColor &color)
{
    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    const Neighbors columns = neighborsFor(size.width(), x, plane.width());
    const Neighbors rows = neighborsFor(size.height(), y, plane.height());
    const std::array<QRgb, 256> shades = shadesOf(color);
    std::vector<uchar> row(static_cast<std::size_t>(plane.width()));
    for (int line = 0; line < size.height(); ++line) {
        const auto at = static_cast<std::size_t>(line);
        blendRows(plane.constScanLine(rows.first[at]),
                  plane.constScanLine(rows.second[at]),
                  rows.weight[at],
                  row);
        auto *to = reinterpret_cast<QRgb *>(result.scanLine(line));
        for (std::size_t i = 0; i < columns.first.size(); ++i) {
            const int left = row[static_cast<std::size_t>(columns.first[i])];
            const int right = row[static_cast<std::size_t>(columns.second[i])];
            const int weight = columns.weight[i];
            to[i] =
                shades[static_cast<std::size_t>((left * (kFull - weight) + right * weight) >> 8)];
        }
    }
    return result;
}
