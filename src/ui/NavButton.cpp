#include "ui/NavButton.h"

#include "ui/Animate.h"
#include "ui/NavButtonAccessible.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPropertyAnimation>
#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kHoverDuration = 150ms;
constexpr auto kPressDuration = 80ms; // until the first press sets its own
constexpr auto kDipDuration = 70ms;
constexpr auto kReleaseDuration = 120ms;
constexpr auto kSpringBackDuration = 100ms;
constexpr auto kTextDuration = 160ms;
constexpr double kDeepestPress = 2.0; // px
constexpr int kHeight = 54;
constexpr int kExpandedWidth = 170;
constexpr int kCollapsedWidth = 62;

bool isActivationKey(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return
        || event.key() == Qt::Key_Enter;
}

} // namespace

NavButton::NavButton(const QString &labelText, const QIcon &labelIcon, QWidget *parent)
    : QWidget(parent)
    , text(labelText)
    , icon(labelIcon)
    , hoverAnimation(animate::create(this, "hoverStrength", kHoverDuration))
    , pressAnimation(animate::create(this, "pressOffset", kPressDuration))
    , textAnimation(animate::create(this, "textOpacity", kTextDuration))
{
    NavButtonAccessible::install();
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumHeight(kHeight);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(labelText);
}

void NavButton::setAccentColor(const QColor &color)
{
    if (accentColor == color) {
        return;
    }
    accentColor = color;
    update();
}

void NavButton::setActive(bool nowActive)
{
    if (active == nowActive) {
        return;
    }
    active = nowActive;
    update();
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void NavButton::setExpanded(bool nowExpanded)
{
    if (expanded == nowExpanded) {
        return;
    }
    expanded = nowExpanded;
    animate::restart(textAnimation, textOpacity, expanded ? 1.0 : 0.0);
}

void NavButton::setHoverStrength(double strength)
{
    animate::store(this, hoverStrength, std::clamp(strength, 0.0, 1.0));
}

void NavButton::setPressOffset(double offset)
{
    animate::store(this, pressOffset, std::clamp(offset, 0.0, kDeepestPress));
}

void NavButton::setTextOpacity(double opacity)
{
    animate::store(this, textOpacity, std::clamp(opacity, 0.0, 1.0));
}

void NavButton::animateHover(double target)
{
    animate::restart(hoverAnimation, hoverStrength, target);
}

void NavButton::animatePress(double target, int durationMs)
{
    pressAnimation->stop();
    pressAnimation->setDuration(durationMs);
    animate::restart(pressAnimation, pressOffset, target);
}

QSize NavButton::sizeHint() const
{
    return {expanded ? kExpandedWidth : kCollapsedWidth, kHeight};
}

void NavButton::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    animateHover(1.0);
}

void NavButton::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    animateHover(0.0);
    animatePress(0.0, animate::milliseconds(kSpringBackDuration));
}

void NavButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    animatePress(kDeepestPress, animate::milliseconds(kDipDuration));
    event->accept();
}

void NavButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    animatePress(0.0, animate::milliseconds(kReleaseDuration));
    event->accept();
    if (rect().contains(event->position().toPoint())) {
        emit clicked(); // last: the receiver may do anything, even delete this button
    }
}

void NavButton::keyPressEvent(QKeyEvent *event)
{
    if (!isActivationKey(*event)) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat()) {
        keyHeld = true;
        focusMarked = true;
        animatePress(kDeepestPress, animate::milliseconds(kDipDuration));
        emit clicked();
    }
}

void NavButton::keyReleaseEvent(QKeyEvent *event)
{
    if (!isActivationKey(*event)) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat()) {
        keyHeld = false;
        animatePress(0.0, animate::milliseconds(kReleaseDuration));
    }
}

void NavButton::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    // Coming to the front is no use of the keyboard: the mark stays as it was.
    const Qt::FocusReason reason = event->reason();
    focusMarked = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::ShortcutFocusReason
        || (focusMarked && reason == Qt::ActiveWindowFocusReason);
    update();
}

void NavButton::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    focusMarked = focusMarked && event->reason() == Qt::ActiveWindowFocusReason;
    if (keyHeld) { // its release goes elsewhere
        keyHeld = false;
        animatePress(0.0, animate::milliseconds(kSpringBackDuration));
    }
    update();
}
