#include "ui/SidebarGlow.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr auto kTick = 16ms;
constexpr double kPositionStep = 0.24; // of the way that is left
constexpr double kStrengthStep = 0.2;
constexpr double kSettledStrength = 0.01;
constexpr double kSettledDistance = 0.4; // px, both axes together
constexpr double kFadedOut = 0.001;

constexpr double kInvisible = 0.01;
constexpr double kCornerRadius = 10;
constexpr double kGlowSize = 0.45; // of the longer side
constexpr int kCenterAlpha = 68;
constexpr int kMiddleAlpha = 28;
constexpr double kMiddle = 0.35;

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

SidebarGlow::SidebarGlow(QWidget *parent)
    : QWidget(parent)
    , timer(new QTimer(this))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_MouseTracking, false);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(kTick);
    connect(timer, &QTimer::timeout, this, &SidebarGlow::tick);
}

void SidebarGlow::setCursorPos(const QPointF &target)
{
    targetPosition = target;
    startTimer();
}

void SidebarGlow::setActive(bool active)
{
    targetStrength = active ? 1.0 : 0.0;
    startTimer();
}

void SidebarGlow::setAccentColor(const QColor &color)
{
    accentColor = color;
    update();
}

void SidebarGlow::startTimer()
{
    if (!timer->isActive()) {
        timer->start();
    }
}

void SidebarGlow::tick()
{
    position += (targetPosition - position) * kPositionStep;
    strength += (targetStrength - strength) * kStrengthStep;
    if (isSettled()) {
        strength = targetStrength;
        position = targetPosition;
        if (targetStrength <= kFadedOut) {
            timer->stop();
        }
    }
    update();
}

bool SidebarGlow::isSettled() const
{
    return std::abs(targetStrength - strength) < kSettledStrength
        && (targetPosition - position).manhattanLength() < kSettledDistance;
}

void SidebarGlow::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (strength <= kInvisible) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath panel;
    panel.addRoundedRect(QRectF(1, 1, width() - 2, height() - 2), kCornerRadius, kCornerRadius);
    painter.setClipPath(panel);

    const double radius = kGlowSize * std::max(width(), height());
    QRadialGradient glow(position, radius);
    glow.setColorAt(0, withAlpha(accentColor, static_cast<int>(kCenterAlpha * strength)));
    glow.setColorAt(kMiddle, withAlpha(accentColor, static_cast<int>(kMiddleAlpha * strength)));
    glow.setColorAt(1, withAlpha(accentColor, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(position, radius, radius);
}
