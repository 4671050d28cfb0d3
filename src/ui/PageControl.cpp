#include "ui/PageControl.h"

#include <QPainter>

namespace {

constexpr qreal kFrameWidth = 2;
constexpr qreal kFrameRadius = 7;

} // namespace

void paintFocusFrame(QWidget *widget)
{
    if (!widget->hasFocus() || !widget->window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        return;
    }
    QPainter painter(widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget->palette().color(QPalette::WindowText), kFrameWidth));
    constexpr qreal kInset = kFrameWidth / 2;
    painter.drawRoundedRect(QRectF(widget->rect()).adjusted(kInset, kInset, -kInset, -kInset),
                            kFrameRadius,
                            kFrameRadius);
}
