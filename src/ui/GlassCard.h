// The translucent rounded panel that every page is made of.
#pragma once

#include "ui/SurfaceFrame.h"

class QGraphicsDropShadowEffect;
class QVariantAnimation;

// Brightens, with its shadow, while the cursor is over it. GUI thread.
class GlassCard : public SurfaceFrame
{
    Q_OBJECT
    Q_PROPERTY(double hoverProgress MEMBER hoverProgress WRITE setHoverProgress)

public:
    explicit GlassCard(QWidget *parent = nullptr);

    // 0 at rest to 1 fully hovered; stored clamped. Also moves blur (18 to 32) and alpha (38 to 108) of the shadow.
    void setHoverProgress(double progress);

    // Runs from the present progress to `target` in 190 ms.
    void animateTo(double target);

    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    double hoverProgress = 0.0;
    QGraphicsDropShadowEffect *shadow; // child, installed as this card's graphics effect
    QVariantAnimation *animation; // child, kept for reuse
};
