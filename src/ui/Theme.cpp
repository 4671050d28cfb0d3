#include "ui/Theme.h"

#include <algorithm>
#include <cmath>

namespace theme {

namespace {

constexpr int kOpaque = 255;
constexpr int kFontPixels = 13;

QColor textColor()
{
    return {0xf2, 0xf6, 0xff};
}
QColor quietTextColor()
{
    return {0xa9, 0xb8, 0xd3};
}
QColor disabledTextColor()
{
    return {0x8d, 0x9c, 0xb8};
}
QColor windowColor()
{
    return {12, 22, 42};
}
QColor baseColor()
{
    return {9, 18, 34, 150};
}
QColor alternateBaseColor()
{
    return {20, 34, 58, 150};
}
QColor buttonColor()
{
    return {20, 34, 58};
}
QColor tipColor()
{
    return {14, 27, 52};
}
QColor shadeColor()
{
    return {6, 11, 22};
}

void setTextRoles(QPalette &palette)
{
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, textColor());
        palette.setColor(QPalette::Disabled, role, disabledTextColor());
    }
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, quietTextColor());
}

void setSurfaceRoles(QPalette &palette)
{
    palette.setColor(QPalette::Window, windowColor());
    palette.setColor(QPalette::Base, baseColor());
    palette.setColor(QPalette::AlternateBase, alternateBaseColor());
    palette.setColor(QPalette::ToolTipBase, tipColor());
    palette.setColor(QPalette::Button, buttonColor());
    palette.setColor(QPalette::Light, buttonColor().lighter(170));
    palette.setColor(QPalette::Midlight, buttonColor().lighter(135));
    palette.setColor(QPalette::Mid, buttonColor().darker(120));
    palette.setColor(QPalette::Dark, buttonColor().darker(160));
    palette.setColor(QPalette::Shadow, shadeColor());
}

// Relative, of sRGB: 0 to 1.
double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

} // namespace

QColor readableOn(const QColor &background)
{
    constexpr double kEqualContrast = 0.179;
    return luminance(background) > kEqualContrast ? Qt::black : Qt::white;
}

QColor textFor(const QColor &color)
{
    constexpr double kReadableOnCards = 0.32;
    constexpr float kStep = 0.04F; // of the way to white
    QColor text = color;
    for (float white = kStep; luminance(text) < kReadableOnCards && white < 1; white += kStep) {
        const auto mixed = [white](float part) {
            return part + (1 - part) * white;
        };
        text = QColor::fromRgbF(mixed(color.redF()), mixed(color.greenF()), mixed(color.blueF()));
    }
    return text;
}

QColor initialAccent()
{
    return QColor::fromHsv(kInitialHue, kInitialSaturation, kInitialBrightness, kOpaque);
}

QColor clampedAccent(const QColor &wanted)
{
    const int hue = wanted.hsvHue() < 0 ? kInitialHue : wanted.hsvHue();
    return QColor::fromHsv(hue,
                           std::clamp(wanted.hsvSaturation(), kSmallestSaturation, 255),
                           std::clamp(wanted.value(), kSmallestBrightness, 255),
                           kOpaque);
}

QColor highlightFor(const QColor &accent)
{
    constexpr int kLessSaturation = 70;
    constexpr int kSmallestHighlightSaturation = 15;
    constexpr int kMoreBrightness = 16;
    return QColor::fromHsv(
        accent.hsvHue(),
        std::max(accent.hsvSaturation() - kLessSaturation, kSmallestHighlightSaturation),
        std::min(accent.value() + kMoreBrightness, 255),
        kOpaque);
}

QString styleSheet(const QColor &accent)
{
    const QColor highlight = highlightFor(accent);
    return styleSheetTemplate()
        .arg(accent.red())
        .arg(accent.green())
        .arg(accent.blue())
        .arg(highlight.red())
        .arg(highlight.green())
        .arg(highlight.blue());
}

QPalette palette(const QColor &accent)
{
    QPalette palette;
    setTextRoles(palette);
    setSurfaceRoles(palette);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, readableOn(accent));
    palette.setColor(QPalette::Link, highlightFor(accent));
    palette.setColor(QPalette::LinkVisited, highlightFor(accent));
    return palette;
}

QFont font()
{
    // Elsewhere than on Windows: faces of about the same width, so that figures keep their room.
    QFont font(QStringList{QStringLiteral("Segoe UI"),
                           QStringLiteral("Noto Sans"),
                           QStringLiteral("Open Sans"),
                           QStringLiteral("Cantarell"),
                           QStringLiteral("Ubuntu"),
                           QStringLiteral("Liberation Sans")});
    font.setPixelSize(kFontPixels);
    return font;
}

} // namespace theme
