// How widgets come by palette and font.
#include "ui/Theme.h"

#include <QApplication>
#include <QComboBox>
#include <QScrollBar>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>

namespace theme {

namespace {

// The style sheet leaves these alone, so they can follow the accent without looking.
bool isAccentRole(QPalette::ColorRole role)
{
    return role == QPalette::Highlight || role == QPalette::HighlightedText
        || role == QPalette::Link || role == QPalette::LinkVisited;
}

void fillGroup(QPalette &own, QPalette::ColorGroup group, const QPalette &palette)
{
    for (int i = 0; i < QPalette::NColorRoles; ++i) {
        const auto role = static_cast<QPalette::ColorRole>(i);
        const bool isGap = palette.isBrushSet(group, role) && !own.isBrushSet(group, role);
        if (isGap || isAccentRole(role)) {
            own.setBrush(group, role, palette.brush(group, role));
        }
    }
}

QPalette filled(QPalette own, const QPalette &palette)
{
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        fillGroup(own, group, palette);
    }
    return own;
}

const QWidget *comboBoxOfPopup(const QWidget *widget)
{
    const QWidget *window = widget->window();
    return window->windowType() == Qt::Popup ? qobject_cast<QComboBox *>(window->parentWidget())
                                             : nullptr;
}

// A popup has nothing of ours behind it, so its bases are opaque. Some styles fill its current row with the combo box's
// own dark background instead of the highlight, and write on it in the highlight's text colour: both must be dark.
QPalette forPopup(QPalette palette)
{
    constexpr int kBrightestRow = 100; // light text is readable on every hue up to here
    for (const auto role : {QPalette::Base, QPalette::AlternateBase}) {
        palette.setBrush(role, palette.brush(QPalette::Window));
    }
    const QColor accent = palette.color(QPalette::Highlight);
    const int brightness = std::min(accent.value(), kBrightestRow);
    palette.setColor(QPalette::Highlight,
                     QColor::fromHsv(accent.hsvHue(), accent.hsvSaturation(), brightness));
    palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
    return palette;
}

// Native scroll bars have the platform's colours, whatever their palette says.
void makeFollowPalette(QScrollBar *bar)
{
    const QString drawnByPalette = QStringLiteral("fusion");
    if (bar->testAttribute(Qt::WA_SetStyle) || QApplication::style()->name() == drawnByPalette) {
        return;
    }
    QStyle *style = QStyleFactory::create(drawnByPalette);
    style->setParent(bar);
    bar->setStyle(style);
}

} // namespace

bool isDressedBy(const QWidget *root, const QWidget *widget)
{
    const QWidget *comboBox = comboBoxOfPopup(widget);
    return root->isAncestorOf(comboBox != nullptr ? comboBox : widget);
}

void adopt(QWidget *widget, const QPalette &palette)
{
    // What a combo box has given to its popup is not meant for a window of its own.
    const bool inPopup = comboBoxOfPopup(widget) != nullptr;
    widget->setPalette(inPopup ? forPopup(palette) : filled(widget->palette(), palette));
    if (!widget->testAttribute(Qt::WA_SetFont)) {
        widget->setFont(font());
    }
    if (auto *bar = qobject_cast<QScrollBar *>(widget)) {
        makeFollowPalette(bar);
    }
}

} // namespace theme
