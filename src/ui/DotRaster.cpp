#include "ui/DotRaster.h"

#include "ui/PremultipliedColor.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <span>

namespace {

constexpr std::size_t kMostOutlines = 4096;
constexpr double kSubpixels = 64; // the toolkit's own grid for outlines

// Where the edge crosses the horizontal line, on the finer grid that the toolkit computes with.
double crossing(const QPointF &from, double slope, double y)
{
    constexpr double kFinerSubpixels = 256;
    return std::floor((from.x() + slope * (y - from.y())) * kFinerSubpixels) / kFinerSubpixels;
}

double onGrid(double value)
{
    return std::floor(value * kSubpixels + 0.5) / kSubpixels;
}

using Curve = std::array<QPointF, 4>;

constexpr int kMostHalvings = 9;

// Whether the line from end to end stands for the curve: the same rule as the toolkit's, or the dots would differ.
bool isFlat(const Curve &curve, double tolerance)
{
    const QPointF span = curve[3] - curve[0];
    const QPointF first = curve[0] - curve[1];
    const QPointF second = curve[0] - curve[2];
    const double length = span.manhattanLength();
    if (length <= 1) {
        return first.manhattanLength() + second.manhattanLength() < tolerance;
    }
    const auto cross = [&span](const QPointF &point) {
        return std::abs(span.x() * point.y() - span.y() * point.x());
    };
    return cross(first) + cross(second) < tolerance * length;
}

// Appends the ends of the lines that stand for the curve.
void flatten(const Curve &curve, double tolerance, int halvings, std::vector<QPointF> &points)
{
    if (halvings == 0 || isFlat(curve, tolerance)) {
        points.push_back(curve[3]);
        return;
    }
    const QPointF middle = (curve[1] + curve[2]) / 2;
    const QPointF first = (curve[0] + curve[1]) / 2;
    const QPointF last = (curve[2] + curve[3]) / 2;
    const QPointF beforeHalf = (first + middle) / 2;
    const QPointF afterHalf = (middle + last) / 2;
    const QPointF half = (beforeHalf + afterHalf) / 2;
    flatten({curve[0], first, beforeHalf, half}, tolerance, halvings - 1, points);
    flatten({half, afterHalf, last, curve[3]}, tolerance, halvings - 1, points);
}

} // namespace

QRect DotRaster::boundsOf(const QPointF &center, double radius)
{
    const QPoint first(static_cast<int>(std::floor(center.x() - radius)) - 1,
                       static_cast<int>(std::floor(center.y() - radius)) - 1);
    const QPoint last(static_cast<int>(std::ceil(center.x() + radius)) + 1,
                      static_cast<int>(std::ceil(center.y() + radius)) + 1);
    return {first, last};
}

QRect DotRaster::boundsIn(const QImage &picture, const QPointF &center, double radius)
{
    const qreal scale = picture.devicePixelRatio();
    return boundsOf(center * scale, radius * scale) & picture.rect();
}

void DotRaster::blend(QImage &picture, const QPointF &center, double radius, QRgb color)
{
    if (picture.devicePixelRatio() != ratio) {
        ratio = picture.devicePixelRatio();
        outlines.clear();
    }
    constexpr int kLargest = kSide;
    const QRect bounds = boundsOf(center * ratio, radius * ratio);
    if (radius <= 0 || bounds.width() >= kLargest || bounds.height() >= kLargest
        || !bounds.intersects(picture.rect())) {
        return;
    }
    sumUp(outlineOf(radius), center * ratio, bounds);
    blendMask(picture, bounds, color);
}

const DotRaster::Outline &DotRaster::outlineOf(double radius)
{
    constexpr double kTolerance = 0.25; // px
    if (const auto known = outlines.find(radius); known != outlines.end()) {
        return known->second;
    }
    if (outlines.size() >= kMostOutlines) {
        outlines.clear();
    }
    QPainterPath circle;
    circle.addEllipse(QPointF(0, 0), radius, radius);
    Outline outline;
    for (int i = 1; i + 2 < circle.elementCount(); i += 3) {
        const Curve quarter{circle.elementAt(i - 1),
                            circle.elementAt(i),
                            circle.elementAt(i + 1),
                            circle.elementAt(i + 2)};
        flatten(quarter, kTolerance / ratio, kMostHalvings, outline);
    }
    for (QPointF &point : outline) {
        point *= ratio;
    }
    return outlines.emplace(radius, std::move(outline)).first->second;
}

void DotRaster::sumUp(const Outline &outline, const QPointF &center, const QRect &bounds)
{
    const QPointF offset = center - bounds.topLeft();
    const auto placed = [&offset](const QPointF &point) {
        return QPointF(onGrid(point.x() + offset.x()), onGrid(point.y() + offset.y()));
    };
    QPointF previous = placed(outline.back());
    for (const QPointF &point : outline) {
        const QPointF next = placed(point);
        addEdge(previous, next);
        previous = next;
    }
}

// Row by row: how much of each pixel lies to the right of the edge, counted down for edges that run upwards.
void DotRaster::addEdge(QPointF from, QPointF to)
{
    if (from.y() == to.y()) {
        return;
    }
    const double direction = from.y() < to.y() ? 1 : -1;
    if (direction < 0) {
        std::swap(from, to);
    }
    const double slope = (to.x() - from.x()) / (to.y() - from.y());
    double x = from.x();
    double y = from.y();
    for (int row = static_cast<int>(y); y < to.y(); ++row) {
        const double end = std::min<double>(row + 1, to.y());
        const double nextX = end < to.y() ? crossing(from, slope, end) : to.x();
        addRow(row, std::min(x, nextX), std::max(x, nextX), direction * (end - y));
        x = nextX;
        y = end;
    }
}

// Spreads the height over the pixels that the piece of edge crosses in the row, from x = `from` to x = `to`.
void DotRaster::addRow(int row, double from, double to, double height)
{
    float *cells = &mask.at(static_cast<std::size_t>(row) * kSide);
    const int first = static_cast<int>(from);
    const int last = static_cast<int>(to);
    if (first == last) {
        const auto inner = static_cast<float>(height * ((from + to) / 2 - first));
        cells[first] += static_cast<float>(height) - inner;
        cells[first + 1] += inner;
        return;
    }
    const double perPixel = height / (to - from);
    double start = from;
    for (int pixel = first; pixel <= last; ++pixel) {
        const double end = std::min<double>(pixel + 1, to);
        const double share = perPixel * (end - start);
        const auto inner = static_cast<float>(share * ((start + end) / 2 - pixel));
        cells[pixel] += static_cast<float>(share) - inner;
        cells[pixel + 1] += inner;
        start = end;
    }
}

void DotRaster::blendMask(QImage &picture, const QRect &bounds, QRgb color)
{
    const auto width = static_cast<std::size_t>(bounds.width()) + 1;
    for (int row = 0; row < bounds.height(); ++row) {
        const auto cells = std::span(mask).subspan(static_cast<std::size_t>(row) * kSide, width);
        const int y = bounds.top() + row;
        if (y >= 0 && y < picture.height()) {
            auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
            blendRow(cells,
                     std::span(line, static_cast<std::size_t>(picture.width())),
                     bounds.left(),
                     color);
        }
        std::fill(cells.begin(), cells.end(), 0.0F);
    }
}

// `left`: the pixel of the line that the first cell stands for; may lie outside.
void DotRaster::blendRow(std::span<const float> cells, std::span<QRgb> line, int left, QRgb color)
{
    constexpr float kFull = 256;
    constexpr float kRoundUp =
        0.9F; // the toolkit rounds up; not quite 1, since sums of floats are not quite 0
    float sum = 0;
    for (int i = 0; i < static_cast<int>(cells.size()); ++i) {
        sum += cells[static_cast<std::size_t>(i)];
        const auto coverage =
            std::min(static_cast<unsigned>(std::abs(sum) * kFull + kRoundUp), 255U);
        const int x = left + i;
        if (coverage != 0 && x >= 0 && x < static_cast<int>(line.size())) {
            QRgb &pixel = line[static_cast<std::size_t>(x)];
            pixel = blended(multiplied(color, coverage), pixel);
        }
    }
}
