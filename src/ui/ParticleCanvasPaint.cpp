// Painting of the moving background.
#include "ui/DrawPicture.h"
#include "ui/ParticleCanvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr int kFullCircle = 360; // degrees
constexpr int kGridStep = 24;

QColor leftGlowColor()
{
    return {55, 132, 255, 72};
}
QColor rightGlowColor()
{
    return {95, 170, 255, 64};
}
QColor gridColor()
{
    return {150, 190, 255, 20};
}
QColor fallbackParticleColor()
{
    return {120, 195, 255};
}

void paintSoftGlow(QPainter &painter, const QPointF &center, double radius, const QColor &color)
{
    QColor rim = color;
    rim.setAlpha(0);
    QRadialGradient glow(center, radius);
    glow.setColorAt(0, color);
    glow.setColorAt(1, rim);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(center, radius, radius);
}

void paintGrid(QPainter &painter, int width, int height)
{
    painter.setPen(QPen(gridColor(), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    for (int x = 0; x < width; x += kGridStep) {
        painter.drawLine(x, 0, x, height);
    }
    for (int y = 0; y < height; y += kGridStep) {
        painter.drawLine(0, y, width, y);
    }
}

void copyPixels(const QImage &from, QImage &to, const QRect &area)
{
    const QRect rect = area & from.rect();
    const auto offset = static_cast<std::size_t>(rect.left()) * sizeof(QRgb);
    const auto length = static_cast<std::size_t>(std::max(rect.width(), 0)) * sizeof(QRgb);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        std::memcpy(to.scanLine(y) + offset, from.constScanLine(y) + offset, length);
    }
}

} // namespace

void ParticleCanvas::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    // Where the picture goes: usually, but not always, a screen.
    const qreal scale = painter.deviceTransform().m11();
    updatePicture(scale > 0 ? scale : devicePixelRatio());
    drawPicture(painter, QPoint(0, 0), picture);
}

// The dots of the last time are wiped away, and today's put in: a fraction of painting everything anew.
void ParticleCanvas::updatePicture(qreal ratio)
{
    const Recipe wanted{size(), ratio, frameOutline};
    if (wanted != recipe || backdrop.isNull()) {
        recipe = wanted;
        renderBackdrop();
        picture = backdrop.copy();
        dotsInPicture.clear();
    }
    for (const QRect &dot : dotsInPicture) {
        copyPixels(backdrop, picture, dot);
    }
    dotsInPicture.clear();
    if (enabled) {
        paintParticles();
    }
}

void ParticleCanvas::renderBackdrop()
{
    backdrop = QImage(size() * recipe.ratio, QImage::Format_ARGB32_Premultiplied);
    backdrop.setDevicePixelRatio(recipe.ratio);
    backdrop.fill(Qt::transparent);
    QPainter painter(&backdrop);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const double w = width();
    const double h = height();
    paintSoftGlow(painter, {0.18 * w, 0.68 * h}, 0.38 * w, leftGlowColor());
    paintSoftGlow(painter, {0.83 * w, 0.28 * h}, 0.3 * w, rightGlowColor());
    paintGrid(painter, width(), height());
    if (frameOutline) {
        paintOutline(painter);
    }
}

void ParticleCanvas::paintOutline(QPainter &painter) const
{
    painter.setPen(QPen(QColor(255, 255, 255, 38), 1.0));
    painter.setBrush(QColor(255, 255, 255, 10));
    painter.drawRoundedRect(QRectF(1, 1, width() - 2, height() - 2), 8, 8);
}

QColor ParticleCanvas::particleColor() const
{
    const QColor color = accentColor.isValid() ? accentColor : fallbackParticleColor();
    if (!autoColorShift) {
        return color;
    }
    // A grey without a hue starts its walk round the colour circle at 0.
    const int hue = std::max(color.hsvHue(), 0);
    return QColor::fromHsv((hue + hueOffset) % kFullCircle, color.hsvSaturation(), color.value());
}

void ParticleCanvas::paintParticles()
{
    QColor color = particleColor();
    for (const Particle &dot : particles) {
        const int alpha = static_cast<int>((std::sin(dot.phase) + 1.0) * 55.0) + 70;
        color.setAlpha(std::clamp(alpha, 20, 180));
        paintDot({dot.x, dot.y}, dot.radius, color);
    }
}

// Where dots overlap, small differences to the toolkit's would add up; it paints those itself.
void ParticleCanvas::paintDot(const QPointF &center, double radius, const QColor &color)
{
    const QRect bounds = DotRaster::boundsIn(picture, center, radius);
    const bool overlaps =
        std::any_of(dotsInPicture.begin(), dotsInPicture.end(), [&bounds](const QRect &other) {
            return other.intersects(bounds);
        });
    dotsInPicture.push_back(bounds);
    if (!overlaps) {
        raster.blend(picture, center, radius, color.rgba64().premultiplied().toArgb32());
        return;
    }
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(center, radius, radius);
}
