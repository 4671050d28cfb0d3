#include "ui/TiltCard.h"

#include "ui/Animate.h"

#include <QMouseEvent>
#include <QVariantAnimation>
#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kHoverDuration = 150ms;
constexpr auto kOffsetDuration = 140ms;
constexpr int kMargin = 5;
constexpr QSize kEmptySize(96, 96);
constexpr double kGrowth = 0.02; // at full hover
constexpr QPointF kFurthest(5.0, 3.5); // drift, with the pointer at an edge

constexpr int kRestAlpha = 40; // of the shadow
constexpr int kHoverAlpha = 85; // added at full hover
constexpr qreal kRestBlur = 18;
constexpr qreal kHoverBlur = 14; // added at full hover
constexpr QPointF kRestOffset(0, 2);
constexpr QPointF kShadowDrift(0.35, 0.5); // of the content's

} // namespace

TiltCard::TiltCard(QWidget *parent)
    : QWidget(parent)
    , hoverAnimation(new QVariantAnimation(this))
    , offsetAnimation(new QVariantAnimation(this))
{
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MouseTracking);
    ensureShadow();
    setupAnimations();
}

void TiltCard::setupAnimations()
{
    hoverAnimation->setDuration(animate::milliseconds(kHoverDuration));
    hoverAnimation->setEasingCurve(QEasingCurve::OutCubic);
    connect(hoverAnimation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        hover = value.toReal();
        applyState();
    });
    offsetAnimation->setDuration(animate::milliseconds(kOffsetDuration));
    offsetAnimation->setEasingCurve(QEasingCurve::OutCubic);
    connect(offsetAnimation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        offset = value.toPointF();
        applyState();
    });
}

// An effect belongs to the widget that it is installed on, and dies with it, or when another one takes its place there.
void TiltCard::ensureShadow()
{
    if (shadow == nullptr) {
        shadow = new QGraphicsDropShadowEffect(this);
        shadow->setBlurRadius(kRestBlur);
        shadow->setOffset(kRestOffset);
        shadow->setColor(QColor(40, 120, 255, kRestAlpha));
    }
    if (wrapped != nullptr && wrapped->graphicsEffect() == nullptr) {
        wrapped->setGraphicsEffect(shadow);
    }
}

void TiltCard::setContent(QWidget *widget)
{
    if (widget == nullptr || widget == wrapped) {
        return;
    }
    QWidget *former = wrapped;
    ensureShadow();
    wrapped = widget;
    wrapped->setParent(this);
    wrapped->setMouseTracking(true);
    wrapped->installEventFilter(this);
    // Moves it: taken off the former widget first, it would be deleted.
    wrapped->setGraphicsEffect(shadow);
    if (former != nullptr) {
        former->removeEventFilter(this);
        former->setGraphicsEffect(nullptr);
        if (former->parentWidget() == this) {
            former->hide();
        }
    }
    wrapped->show();
    updateShadow();
    updateContentGeometry();
    updateGeometry();
}

void TiltCard::setHoverTarget(double target)
{
    hoverAnimation->stop();
    hoverAnimation->setStartValue(hover);
    hoverAnimation->setEndValue(std::clamp(target, 0.0, 1.0));
    hoverAnimation->start();
}

void TiltCard::setOffsetTarget(const QPointF &target)
{
    offsetAnimation->stop();
    offsetAnimation->setStartValue(offset);
    offsetAnimation->setEndValue(target);
    offsetAnimation->start();
}

QSize TiltCard::sizeHint() const
{
    return wrapped != nullptr ? wrapped->sizeHint() + QSize(2 * kMargin, 2 * kMargin) : kEmptySize;
}

bool TiltCard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == wrapped) {
        if (event->type() == QEvent::Enter) {
            comeUnderMouse();
        } else if (event->type() == QEvent::Leave) {
            leaveToRest();
        } else if (event->type() == QEvent::MouseMove) {
            const auto *move = static_cast<QMouseEvent *>(event);
            const QPoint global = wrapped->mapToGlobal(move->position()).toPoint();
            followPointer(mapFromGlobal(global));
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TiltCard::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    comeUnderMouse();
}

void TiltCard::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    leaveToRest();
}

void TiltCard::mouseMoveEvent(QMouseEvent *event)
{
    QWidget::mouseMoveEvent(event);
    followPointer(event->position());
}

void TiltCard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateContentGeometry();
}

void TiltCard::followPointer(const QPointF &pointer)
{
    const double halfWidth = width() * 0.5;
    const double halfHeight = height() * 0.5;
    if (halfWidth <= 0 || halfHeight <= 0) {
        return;
    }
    tiltX = std::clamp((pointer.x() - halfWidth) / halfWidth, -1.0, 1.0);
    tiltY = std::clamp((pointer.y() - halfHeight) / halfHeight, -1.0, 1.0);
    setOffsetTarget({kFurthest.x() * tiltX, kFurthest.y() * tiltY});
    update();
}

void TiltCard::comeUnderMouse()
{
    setHoverTarget(1.0);
}

void TiltCard::leaveToRest()
{
    tiltX = 0;
    tiltY = 0;
    setHoverTarget(0.0);
    setOffsetTarget({0, 0});
}

void TiltCard::applyState()
{
    updateShadow();
    updateContentGeometry();
    update();
}

void TiltCard::updateShadow()
{
    ensureShadow();
    shadow->setBlurRadius(kRestBlur + kHoverBlur * hover);
    shadow->setOffset(kRestOffset
                      + QPointF(kShadowDrift.x() * offset.x(), kShadowDrift.y() * offset.y()));
    shadow->setColor(QColor(56, 142, 255, static_cast<int>(kRestAlpha + kHoverAlpha * hover)));
}

// The content grows about its centre, and is then moved.
void TiltCard::updateContentGeometry()
{
    if (wrapped == nullptr) {
        return;
    }
    const double scale = 1 + kGrowth * hover;
    const double roomWidth = width() - 2 * kMargin;
    const double roomHeight = height() - 2 * kMargin;
    const double left = kMargin + roomWidth * 0.5 - scale * roomWidth * 0.5 + offset.x();
    const double top = kMargin + roomHeight * 0.5 - scale * roomHeight * 0.5 + offset.y();
    wrapped->setGeometry(QRectF(left, top, scale * roomWidth, scale * roomHeight).toRect());
}
