// The program's look: one accent colour, the highlight derived from it, and what both are filled into.
// Pure functions, GUI thread (fonts and palettes need the application object).
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QWidget;

namespace theme {

constexpr int kInitialHue = 205; // degrees
constexpr int kInitialSaturation = 133; // 0 to 255, as all saturations and brightnesses here
constexpr int kInitialBrightness = 255;
constexpr int kSmallestSaturation = 20;
constexpr int kSmallestBrightness = 90;

QColor initialAccent();

// The accent that is really used: opaque, hue 205 when `wanted` has none (hsvHue() below 0), saturation at least 20,
// brightness at least 90.
QColor clampedAccent(const QColor &wanted);

// Same hue, saturation 70 lower (at least 15), brightness 16 higher (at most 255).
QColor highlightFor(const QColor &accent);

// Black or white, whichever contrasts more with an opaque background; always at least 4.5 to 1. From the relative
// luminance of sRGB, with the threshold at which both contrast alike.
QColor readableOn(const QColor &background);

// The colour itself, where text of it reads at 4.5 to 1 on the dark cards; otherwise mixed with as much white as that takes.
QColor textFor(const QColor &color);

// The style sheet with its six placeholders, and filled for an accent.
QString styleSheetTemplate();
QString styleSheet(const QColor &accent);

// What the style sheet leaves to the platform, made to fit: light text on dark translucent bases, whatever the
// platform's own colours are; the accent marks selections. The font is "Segoe UI" at 13 px, or what comes closest.
QPalette palette(const QColor &accent);
QFont font();

// Whether a widget gets its palette and font from that root: everything inside it, and the popups of combo boxes inside
// it. Menus and dialogs keep the platform's look.
bool isDressedBy(const QWidget *root, const QWidget *widget);

// Gives one widget both. Under a style sheet a widget inherits neither from its parent, so each one is given them, after
// every polish; what the style sheet itself sets (colours, sizes) goes before.
void adopt(QWidget *widget, const QPalette &palette);

} // namespace theme
