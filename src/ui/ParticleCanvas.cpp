#include "ui/ParticleCanvas.h"

#include "ui/TileRegion.h"

#include <QRandomGenerator>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kSmallestSide = 20; // px that dots are spread over, however small the canvas is
constexpr double kFastest = 1.2; // px per tick
constexpr double kSmallestRadius = 1.6;
constexpr double kRadiusRange = 3.0;
constexpr double kPhaseRange = 6.28;
constexpr double kPhaseStep = 0.02;
constexpr double kWrapMargin = 20;
constexpr int kFullCircle = 360; // degrees

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
    coveredByDots = rect(); // wherever the new ones will have been painted before they move
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

void ParticleCanvas::updateDots()
{
    if (std::exchange(lastEnabled, enabled) != enabled
        || std::exchange(lastOutline, frameOutline) != frameOutline) {
        coveredByDots = rect(); // whoever wrote these left the repaint to this tick
        update();
        return;
    }
    if (!enabled) {
        update(QRect(0, 0, 1, 1)); // nothing moves
        return;
    }
    if (!isVisible()) {
        coveredByDots = rect(); // wherever they are when it is shown again
        return;
    }
    constexpr double kSoftRim = 1; // px
    TileRegion covered(size());
    for (const Particle &dot : particles) {
        const double reach = dot.radius + kSoftRim;
        covered.cover({dot.x - reach, dot.y - reach, 2 * reach, 2 * reach});
    }
    const QRegion now = covered.region();
    update(now + coveredByDots);
    coveredByDots = now;
}

void ParticleCanvas::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    initParticles();
}
