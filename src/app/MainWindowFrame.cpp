// The window's outside: dragging, rounded corners, backdrop, and the glow of what is under the cursor.
#include "app/MainWindow.h"

#include "notify/DesktopToastManager.h"
#include "platform/WindowBackdrop.h"
#include "ui/CachedShadow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ParticleCanvas.h"

#include <QCoreApplication>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainterPath>
#include <QPushButton>
#include <QStackedWidget>
#include <QWindow>

namespace {

constexpr qreal kCornerRadius = 16;

constexpr QPointF kLiftOffset(0, 4);
constexpr qreal kLiftBlur = 26;
constexpr int kLiftAlpha = 85;
constexpr qreal kRestBlur = 16;
constexpr int kRestAlpha = 45;

constexpr const char *kHoverLiftProperty = "hoverLift";

// A client cannot place its own window there; the compositor moves it.
bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// 0 where the window system has no handle that a backdrop could be asked for with.
platform::NativeWindow backdropHandle(const QWidget &window)
{
    const QString system = QGuiApplication::platformName();
    return system == QLatin1String("windows") || system == QLatin1String("xcb") ? window.winId()
                                                                                : 0;
}

} // namespace

bool MainWindow::startDragging(const QPoint &globalPosition)
{
    if (isWayland() && windowHandle() != nullptr) {
        return windowHandle()->startSystemMove();
    }
    dragging = true;
    dragOffset = globalPosition - frameGeometry().topLeft();
    return true;
}

void MainWindow::dragTo(const QPoint &globalPosition)
{
    move(globalPosition - dragOffset);
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->globalPosition().toPoint();
    if (event->button() == Qt::LeftButton && titleBar != nullptr
        && titleBar->rect().contains(titleBar->mapFromGlobal(position))) {
        startDragging(position);
        event->accept();
        return;
    }
    QMainWindow::mousePressEvent(event);
}

void MainWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (dragging && event->buttons().testFlag(Qt::LeftButton)) {
        dragTo(event->globalPosition().toPoint());
        event->accept();
        return;
    }
    QMainWindow::mouseMoveEvent(event);
}

void MainWindow::mouseReleaseEvent(QMouseEvent *event)
{
    dragging = false;
    QMainWindow::mouseReleaseEvent(event);
}

bool MainWindow::filterTitleBarEvent(QEvent *event)
{
    const auto *mouse = dynamic_cast<QMouseEvent *>(event);
    if (mouse == nullptr) {
        return false;
    }
    const QPoint position = mouse->globalPosition().toPoint();
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        startDragging(position);
        return true;
    }
    if (event->type() == QEvent::MouseMove && dragging
        && mouse->buttons().testFlag(Qt::LeftButton)) {
        dragTo(position);
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        dragging = false;
        return true;
    }
    return false;
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    const bool onTitle = titleBar != nullptr && (watched == titleBar || watched == titleLabel);
    if (onTitle && filterTitleBarEvent(event)) {
        return true;
    }
    switch (event->type()) { // the filter sees every event of the program
    case QEvent::Enter:
    case QEvent::Leave:
        liftOnHover(watched, *event);
        break;
    case QEvent::Polish:
    case QEvent::StyleChange:
        adoptTheme(watched);
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::liftOnHover(QObject *watched, const QEvent &event) const
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (widget == nullptr || !widget->property(kHoverLiftProperty).toBool()
        || property("perfMode").toInt() == 0) {
        return;
    }
    auto *glow = qobject_cast<QGraphicsDropShadowEffect *>(widget->graphicsEffect());
    if (event.type() == QEvent::Leave) {
        if (glow != nullptr) {
            setGlow(glow, accentColor, kRestBlur, kRestAlpha);
        }
        return;
    }
    if (glow == nullptr) {
        glow = new CachedShadow(widget);
        glow->setOffset(kLiftOffset);
        widget->setGraphicsEffect(glow);
    }
    setGlow(glow, accentColor, kLiftBlur, kLiftAlpha);
}

void MainWindow::registerHoverLift(QWidget *widget)
{
    if (widget == nullptr) {
        return;
    }
    widget->setProperty(kHoverLiftProperty, true);
    widget->setAttribute(Qt::WA_Hover);
    widget->installEventFilter(this);
}

void MainWindow::setupHoverLift()
{
    for (QWidget *handle : std::initializer_list<QWidget *>{titleBar, titleLabel}) {
        handle->setMouseTracking(true);
        handle->installEventFilter(this);
    }
    QCoreApplication::instance()->installEventFilter(this);
    const auto cards = pageStack->findChildren<GlassCard *>();
    for (GlassCard *card : cards) {
        registerHoverLift(card);
    }
    const auto buttons = pageStack->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        registerHoverLift(button);
    }
}

void MainWindow::updateWindowMask()
{
    QPainterPath outline;
    outline.addRoundedRect(0, 0, width(), height(), kCornerRadius, kCornerRadius);
    setMask(QRegion(outline.toFillPolygon().toPolygon(), Qt::OddEvenFill));
}

void MainWindow::applyNativeAcrylic()
{
    platform::setBackdropBlur(backdropHandle(*this), !property("lowMemoryMode").toBool());
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    updateWindowMask();
    if (particleCanvas != nullptr && rootSurface != nullptr) {
        particleCanvas->setGeometry(0, 0, rootSurface->width(), rootSurface->height());
    }
    if (toastManager != nullptr) {
        toastManager->relayout();
    }
}
