// What the tilt card looks like: a frame, and a highlight that follows the pointer.
#include "ui/TiltCard.h"

#include <QPainter>

namespace {

constexpr double kFrameInset = 2;
constexpr double kCornerRadius = 10;
constexpr double kHighlightDrift = 0.18; // of the frame's size

// From one value at rest to another at full hover, cut off.
int level(int rest, int more, double hover)
{
    return static_cast<int>(rest + more * hover);
}

} // namespace

void TiltCard::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame(
        kFrameInset, kFrameInset, width() - 2 * kFrameInset, height() - 2 * kFrameInset);
    paintFrame(painter, frame);
    paintHighlight(painter, frame);
}

void TiltCard::paintFrame(QPainter &painter, const QRectF &frame) const
{
    painter.setPen(QPen(QColor(190, 220, 255, level(70, 80, hover)), 1));
    painter.setBrush(QColor(255, 255, 255, level(8, 12, hover)));
    painter.drawRoundedRect(frame, kCornerRadius, kCornerRadius);
}

void TiltCard::paintHighlight(QPainter &painter, const QRectF &frame) const
{
    const QPointF center(
        tiltX * frame.width() * kHighlightDrift + frame.width() * 0.5 + kFrameInset,
        tiltY * frame.height() * kHighlightDrift + frame.height() * 0.5 + kFrameInset);
    QRadialGradient highlight(center, (0.55 + 0.08 * hover) * frame.width());
    highlight.setColorAt(0, QColor(120, 190, 255, level(46, 48, hover)));
    highlight.setColorAt(1, QColor(120, 190, 255, 4));
    painter.setPen(Qt::NoPen);
    painter.setBrush(highlight);
    painter.drawRoundedRect(frame, kCornerRadius, kCornerRadius);
}
