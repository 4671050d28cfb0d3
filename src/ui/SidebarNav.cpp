#include "ui/SidebarNav.h"

#include "ui/Animate.h"
#include "ui/NavButton.h"

#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPropertyAnimation>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kWidthDuration = 210ms;
constexpr auto kIndicatorDuration = 200ms;
constexpr auto kSpotlightDuration = 170ms;
constexpr auto kCollapseDelay = 160ms;
constexpr int kOuterMargin = 10;
constexpr int kOuterSpacing = 10;
constexpr int kItemsMargin = 4; // above the first and below the last button
constexpr int kItemsSpacing = 8;
constexpr int kBadgeHeight = 58;
constexpr int kIndicatorBelowButtonTop =
    7; // centres the 44 px bar on the 54 px button, more or less

QString badgeStyle()
{
    return QStringLiteral(
        "QLabel { color: #e8f3ff; font-size: 22px; font-weight: 800; border-radius: 12px; "
        "border: 1px solid rgba(188,220,255,90); background: "
        "qlineargradient(x1:0,y1:0,x2:1,y2:1, stop:0 rgba(44,74,112,130), "
        "stop:1 rgba(21,38,63,110));}");
}

} // namespace

SidebarNav::SidebarNav(QWidget *parent)
    : SurfaceFrame(parent)
{
    setObjectName(QStringLiteral("sidebar"));
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_Hover);
    setWidthLimits(collapsedWidth);
    setupLayout();
    setupAnimations();
}

void SidebarNav::setupLayout()
{
    auto *outerLayout = new QVBoxLayout(this);
    outerLayout->setContentsMargins(kOuterMargin, kOuterMargin, kOuterMargin, kOuterMargin);
    outerLayout->setSpacing(kOuterSpacing);

    auto *badge = new QLabel(QStringLiteral("VPO"), this);
    badge->setMinimumHeight(kBadgeHeight);
    badge->setAlignment(Qt::AlignCenter);
    badge->setStyleSheet(badgeStyle());
    outerLayout->addWidget(badge);

    itemsContainer = new QWidget(this);
    itemsContainer->setMouseTracking(true);
    itemsLayout = new QVBoxLayout(itemsContainer);
    itemsLayout->setContentsMargins(0, kItemsMargin, 0, kItemsMargin);
    itemsLayout->setSpacing(kItemsSpacing);
    outerLayout->addWidget(itemsContainer);
    outerLayout->addStretch(1);
}

void SidebarNav::setupAnimations()
{
    widthAnimation = animate::create(this, "minimumWidth", kWidthDuration);
    indicatorAnimation = animate::create(this, "indicatorY", kIndicatorDuration);
    spotlightAnimation = animate::create(this, "spotlightAlpha", kSpotlightDuration);
    connect(widthAnimation, &QPropertyAnimation::valueChanged, this, [this](const QVariant &width) {
        setMaximumWidth(width.toInt());
        update();
    });

    collapseTimer = new QTimer(this);
    collapseTimer->setSingleShot(true);
    collapseTimer->setInterval(kCollapseDelay);
    connect(collapseTimer, &QTimer::timeout, this, [this] { setExpanded(false, true); });
}

void SidebarNav::setWidthLimits(int width)
{
    setMinimumWidth(width);
    setMaximumWidth(width);
}

void SidebarNav::addItem(const QString &text, const QIcon &icon, int index)
{
    auto *button = new NavButton(text, icon, itemsContainer);
    button->setAccentColor(accentColor);
    button->setExpanded(expanded);
    itemsLayout->addWidget(button);
    buttons.append(button);
    indexes.append(index);
    connect(button, &NavButton::clicked, this, [this, index] { emit navSelected(index); });
}

void SidebarNav::setCurrentIndex(int index)
{
    if (currentIndex == index) {
        return;
    }
    currentIndex = index;
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        buttons[i]->setActive(indexes[i] == currentIndex);
    }
    updateIndicatorTarget(true);
}

void SidebarNav::updateIndicatorTarget(bool animate)
{
    const qsizetype position = indexes.indexOf(currentIndex);
    if (position < 0) {
        return;
    }
    layout()->activate(); // the places below must be those of the present size
    itemsLayout->activate();
    const double target = itemsContainer->y() + buttons[position]->y() + kIndicatorBelowButtonTop;
    if (animate) {
        animate::restart(indicatorAnimation, indicatorY, target);
        return;
    }
    indicatorAnimation->stop();
    setIndicatorY(target);
}

void SidebarNav::setExpanded(bool nowExpanded, bool animate)
{
    if (expanded == nowExpanded) {
        return;
    }
    expanded = nowExpanded;
    for (NavButton *button : std::as_const(buttons)) {
        button->setExpanded(expanded);
    }
    const int target = expanded ? expandedWidth : collapsedWidth;
    widthAnimation->stop();
    if (animate) {
        animate::restart(widthAnimation, width(), target);
    } else {
        setWidthLimits(target);
    }
}

void SidebarNav::setAccentColor(const QColor &color)
{
    if (accentColor == color) {
        return;
    }
    accentColor = color;
    for (NavButton *button : std::as_const(buttons)) {
        button->setAccentColor(color);
    }
    update();
}

void SidebarNav::setIndicatorY(double y)
{
    animate::store(this, indicatorY, y);
}

void SidebarNav::setSpotlightAlpha(double alpha)
{
    animate::store(this, spotlightAlpha, std::clamp(alpha, 0.0, 1.0));
}

void SidebarNav::enterEvent(QEnterEvent *event)
{
    SurfaceFrame::enterEvent(event);
    collapseTimer->stop();
    setExpanded(true, true);
    animate::restart(spotlightAnimation, spotlightAlpha, 1.0);
}

void SidebarNav::leaveEvent(QEvent *event)
{
    SurfaceFrame::leaveEvent(event);
    collapseTimer->start();
    animate::restart(spotlightAnimation, spotlightAlpha, 0.0);
}

void SidebarNav::mouseMoveEvent(QMouseEvent *event)
{
    spotlightPosition = QPointF(width() / 2.0, event->position().y());
    update();
    SurfaceFrame::mouseMoveEvent(event);
}

void SidebarNav::resizeEvent(QResizeEvent *event)
{
    SurfaceFrame::resizeEvent(event);
    updateIndicatorTarget(false);
}
