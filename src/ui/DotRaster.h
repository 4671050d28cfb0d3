// Small filled circles, many of them and often.
#pragma once

#include <QImage>
#include <QPointF>
#include <array>
#include <span>
#include <unordered_map>
#include <vector>

// Paints what QPainter paints as an antialiased ellipse without a pen, at most 1 of 255 off in any channel, and in half the
// time: the outline is flattened like the toolkit does it, but only once per radius, and its area per pixel is summed up
// here.
// Not for circles of more than 60 device pixels. GUI thread.
class DotRaster
{
public:
    // The pixels of the picture that such a circle may touch.
    static QRect boundsIn(const QImage &picture, const QPointF &center, double radius);

    // Blends the circle over the picture, whose format is Format_ARGB32_Premultiplied; center and radius are in its logical
    // units. `color` is premultiplied. What lies outside of the picture is left out.
    void blend(QImage &picture, const QPointF &center, double radius, QRgb color);

private:
    static constexpr std::size_t kSide = 64; // of the mask

    using Outline = std::vector<QPointF>; // around 0, 0; closed; device pixels
    static QRect boundsOf(const QPointF &center, double radius); // of the pixels that it may touch
    const Outline &outlineOf(double radius);
    void sumUp(const Outline &outline, const QPointF &center, const QRect &bounds);
    void addEdge(QPointF from, QPointF to);
    void addRow(int row, double from, double to, double height);
    void blendMask(QImage &picture, const QRect &bounds, QRgb color);
    static void blendRow(std::span<const float> cells, std::span<QRgb> line, int left, QRgb color);

    qreal ratio = 0; // of the outlines: device pixels per logical one
    std::unordered_map<double, Outline> outlines; // by radius
    std::array<float, kSide * kSide>
        mask{}; // of each pixel the change of coverage to its left neighbour; 0 between calls
};
