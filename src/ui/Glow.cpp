#include "ui/Glow.h"

#include "ui/CachedShadow.h"
#include "ui/GlassCard.h"
#include "ui/SteadyLayout.h"

#include <QLabel>
#include <QSlider>
#include <QVariantAnimation>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr int kCardMarginX = 18;
constexpr int kCardMarginY = 16;
constexpr int kCardSpacing = 10;
constexpr int kAccentLineHeight = 2;

constexpr auto kPulseDuration = 820ms;
constexpr qreal kIdleBlur = 10;
constexpr int kIdleAlpha = 70;
constexpr qreal kPressBlur = 22;
constexpr int kPressAlpha = 145;
constexpr double kTurn = 6.28318; // radians

// An effect whose reach changes asks its widget's whole parent for a repaint: a page, for a button. While this exists the
// parent does not listen; afterwards it repaints what the effect reached before or reaches now.
class ReachChange
{
public:
    explicit ReachChange(const QGraphicsEffect &ownEffect)
        : effect(ownEffect)
        , widget(qobject_cast<QWidget *>(effect.parent()))
        , parent(widget != nullptr ? widget->parentWidget() : nullptr)
        , isListening(parent != nullptr && parent->updatesEnabled())
    {
        if (isListening) {
            before = reach();
            parent->setAttribute(Qt::WA_UpdatesDisabled, true);
        }
    }

    ~ReachChange()
    {
        if (isListening) {
            parent->setAttribute(Qt::WA_UpdatesDisabled, false);
            parent->update(before | reach());
        }
    }

    ReachChange(const ReachChange &) = delete;
    ReachChange &operator=(const ReachChange &) = delete;
    ReachChange(ReachChange &&) = delete;
    ReachChange &operator=(ReachChange &&) = delete;

private:
    QRect reach() const // in the parent
    {
        return effect.boundingRectFor(QRectF(widget->geometry())).toAlignedRect();
    }

    const QGraphicsEffect &effect;
    QWidget *widget;
    QWidget *parent;
    bool isListening;
    QRect before;
};

void setPulse(QGraphicsDropShadowEffect *glow, const QColor &color, double value)
{
    const int alpha = static_cast<int>(120 + 70 * std::sin(value * kTurn));
    setGlow(glow, color, 18 + 8 * value, std::clamp(alpha, 90, 220));
}

} // namespace

QColor standardGlowColor()
{
    return {58, 126, 255, 40};
}

GlassCard *createGlassCard(QWidget *parent, const QString &title)
{
    auto *card = new GlassCard(parent);
    auto *layout = new SteadyLayout(card);
    layout->setContentsMargins(kCardMarginX, kCardMarginY, kCardMarginX, kCardMarginY);
    layout->setSpacing(kCardSpacing);

    auto *titleLabel = new QLabel(title, card);
    titleLabel->setObjectName(QStringLiteral("cardTitle"));
    layout->addWidget(titleLabel);

    auto *accentLine = new QFrame(card);
    accentLine->setObjectName(QStringLiteral("cardAccentLine"));
    accentLine->setFixedHeight(kAccentLineHeight);
    layout->addWidget(accentLine);
    return card;
}

void applyGlow(QWidget *widget, const QColor &color, int radius)
{
    if (widget == nullptr || qobject_cast<GlassCard *>(widget) != nullptr) {
        return;
    }
    auto *glow = new CachedShadow(widget);
    glow->setBlurRadius(radius);
    glow->setColor(color);
    glow->setOffset(0, 0);
    widget->setGraphicsEffect(glow);
}

void setGlow(QGraphicsDropShadowEffect *glow, QColor color, qreal blur, int alpha)
{
    color.setAlpha(alpha);
    const ReachChange change(*glow);
    glow->setBlurRadius(blur);
    glow->setColor(color);
}

void applySliderInteractionGlow(QSlider *slider, const QColor &color)
{
    auto *glow = new CachedShadow(slider);
    glow->setOffset(0, 0);
    setGlow(glow, color, kIdleBlur, kIdleAlpha);
    slider->setGraphicsEffect(glow);

    auto *pulse = new QVariantAnimation(slider);
    pulse->setStartValue(0.0);
    pulse->setEndValue(1.0);
    pulse->setDuration(static_cast<int>(kPulseDuration.count()));
    pulse->setEasingCurve(QEasingCurve::InOutSine);
    pulse->setLoopCount(-1);

    // The glow is the context of each connection: an effect that was replaced is no longer animated.
    QObject::connect(
        pulse, &QVariantAnimation::valueChanged, glow, [glow, color](const QVariant &value) {
            setPulse(glow, color, value.toDouble());
        });
    QObject::connect(slider, &QSlider::sliderPressed, glow, [glow, color] {
        setGlow(glow, color, kPressBlur, kPressAlpha);
    });
    QObject::connect(slider, &QSlider::sliderPressed, pulse, [pulse] { pulse->start(); });
    QObject::connect(slider, &QSlider::sliderReleased, glow, [glow, pulse, color] {
        pulse->stop();
        setGlow(glow, color, kIdleBlur, kIdleAlpha);
    });
}
