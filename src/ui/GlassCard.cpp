#include "ui/GlassCard.h"

#include "ui/CachedShadow.h"
#include "ui/Glow.h"

#include <QPainter>
#include <QVariantAnimation>
#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kHoverDuration = 190ms;
constexpr qreal kRestBlur = 18.0;
constexpr qreal kHoverBlur = 32.0;
constexpr int kRestShadowAlpha = 38;
constexpr int kHoverShadowAlpha = 70; // added to the resting alpha at full hover
constexpr QPointF kShadowOffset(0, 4);
constexpr qreal kCornerRadius = 18.0;

QColor shadowColor()
{
    return {72, 140, 255};
}
int shadowAlpha(double progress)
{
    return static_cast<int>(kRestShadowAlpha + kHoverShadowAlpha * progress);
}
QColor topColor(double progress)
{
    return {14, 27, 52, static_cast<int>(126 + 24 * progress)};
}
QColor bottomColor(double progress)
{
    return {9, 20, 38, static_cast<int>(114 + 22 * progress)};
}
QColor rimColor(double progress)
{
    return {176, 208, 255, static_cast<int>(90 + 58 * progress)};
}

} // namespace

GlassCard::GlassCard(QWidget *parent)
    : SurfaceFrame(parent)
    , shadow(new CachedShadow(this))
    , animation(new QVariantAnimation(this))
{
    setObjectName(QStringLiteral("glassCard"));
    setFrameShape(QFrame::NoFrame);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MouseTracking);

    shadow->setOffset(kShadowOffset);
    setGlow(shadow, shadowColor(), kRestBlur, shadowAlpha(0));
    setGraphicsEffect(shadow);

    animation->setDuration(static_cast<int>(kHoverDuration.count()));
    animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        setHoverProgress(value.toDouble());
    });
}

void GlassCard::setHoverProgress(double progress)
{
    hoverProgress = std::clamp(progress, 0.0, 1.0);
    setGlow(shadow,
            shadowColor(),
            kRestBlur + (kHoverBlur - kRestBlur) * hoverProgress,
            shadowAlpha(hoverProgress));
    update();
}

void GlassCard::animateTo(double target)
{
    animation->stop();
    animation->setStartValue(hoverProgress);
    animation->setEndValue(target);
    animation->start();
}

void GlassCard::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient glass(0, 0, width(), height());
    glass.setColorAt(0.0, topColor(hoverProgress));
    glass.setColorAt(1.0, bottomColor(hoverProgress));
    painter.setPen(QPen(rimColor(hoverProgress), 1.0));
    painter.setBrush(glass);
    painter.drawRoundedRect(QRectF(0, 0, width(), height()), kCornerRadius, kCornerRadius);
}

void GlassCard::enterEvent(QEnterEvent *event)
{
    SurfaceFrame::enterEvent(event);
    animateTo(1.0);
}

void GlassCard::leaveEvent(QEvent *event)
{
    SurfaceFrame::leaveEvent(event);
    animateTo(0.0);
}
