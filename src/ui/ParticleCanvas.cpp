#include "ui/ParticleCanvas.h"

#include <QPainter>
#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kSmallestSide = 20; // px that dots are spread over, however small the canvas is
constexpr double kFastest = 1.2; // px per tick
constexpr double kSmallestRadius = 1.6;
constexpr double kRadiusRange = 3.0;
constexpr double kPhaseRange = 6.28;
constexpr double kPhaseStep = 0.02;
constexpr double kWrapMargin = 20;
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

double wrapped(double value, double size)
{
    if (value < -kWrapMargin) {
        return size + kWrapMargin;
    }
    return value > size + kWrapMargin ? -kWrapMargin : value;
}

} // namespace

ParticleCanvas::ParticleCanvas(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("particleCanvas"));
}

void ParticleCanvas::initParticles()
{
    auto &random = *QRandomGenerator64::global();
    const int spreadX = std::max(width(), kSmallestSide);
    const int spreadY = std::max(height(), kSmallestSide);
    const auto velocity = [&random] {
        return random.generateDouble() * 2 * kFastest - kFastest;
    };
    particles.clear();
    particles.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        Particle dot;
        dot.x = random.bounded(spreadX);
        dot.y = random.bounded(spreadY);
        dot.vx = velocity();
        dot.vy = velocity();
        dot.radius = kSmallestRadius + random.generateDouble() * kRadiusRange;
        dot.phase = random.generateDouble() * kPhaseRange;
        particles.push_back(dot);
    }
}

void ParticleCanvas::advance()
{
    if (!enabled || width() <= 0 || height() <= 0) {
        return;
    }
    if (autoColorShift) {
        hueOffset = (hueOffset + 1) % kFullCircle;
    }
    for (Particle &dot : particles) {
        dot.x = wrapped(dot.x + dot.vx * speed, width());
        dot.y = wrapped(dot.y + dot.vy * speed, height());
        dot.phase += kPhaseStep;
    }
}

void ParticleCanvas::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    initParticles();
}

void ParticleCanvas::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintBackdrop(painter);
    if (frameOutline) {
        paintOutline(painter);
    }
    if (enabled) {
        paintParticles(painter);
    }
}

void ParticleCanvas::paintBackdrop(QPainter &painter)
{
    const qreal ratio = devicePixelRatio();
    if (backdrop.devicePixelRatio() != ratio || backdrop.size() != size() * ratio) {
        renderBackdrop(ratio);
    }
    painter.drawPixmap(0, 0, backdrop);
}

void ParticleCanvas::renderBackdrop(qreal ratio)
{
    backdrop = QPixmap(size() * ratio);
    backdrop.setDevicePixelRatio(ratio);
    backdrop.fill(Qt::transparent);
    QPainter painter(&backdrop);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = width();
    const double h = height();
    paintSoftGlow(painter, {0.18 * w, 0.68 * h}, 0.38 * w, leftGlowColor());
    paintSoftGlow(painter, {0.83 * w, 0.28 * h}, 0.3 * w, rightGlowColor());
    paintGrid(painter, width(), height());
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

void ParticleCanvas::paintParticles(QPainter &painter) const
{
    QColor color = particleColor();
    painter.setPen(Qt::NoPen);
    for (const Particle &dot : particles) {
        const int alpha = static_cast<int>((std::sin(dot.phase) + 1.0) * 55.0) + 70;
        color.setAlpha(std::clamp(alpha, 20, 180));
        painter.setBrush(color);
        painter.drawEllipse(QPointF(dot.x, dot.y), dot.radius, dot.radius);
    }
}
