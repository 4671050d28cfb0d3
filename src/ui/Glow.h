// The recipes that pages are put together with: cards and coloured glows. GUI thread; nothing here owns anything, all
// objects become children of the widgets that they are made for.
#pragma once

#include <QColor>
#include <QString>

class GlassCard;
class QGraphicsDropShadowEffect;
class QSlider;
class QWidget;

// The colour and strength of the glow that surfaces and push buttons carry.
QColor standardGlowColor(); // red 58, green 126, blue 255, alpha 40
constexpr int kStandardGlowRadius = 24; // px of blur

// A card with a title ("cardTitle") and the accent line below it ("cardAccentLine"), in a vertical layout to which the
// caller adds the content.
GlassCard *createGlassCard(QWidget *parent, const QString &title);

// A fixed shadow without offset; replaces the widget's earlier effect. A GlassCard keeps its own shadow.
void applyGlow(QWidget *widget, const QColor &color, int radius);

// Gives a glow that strength: the colour's own alpha is replaced (0 to 255).
void setGlow(QGraphicsDropShadowEffect *glow, QColor color, qreal blur, int alpha);

// A faint glow that pulses while the slider is held.
void applySliderInteractionGlow(QSlider *slider, const QColor &color);
