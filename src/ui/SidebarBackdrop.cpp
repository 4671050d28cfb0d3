#include "ui/SidebarBackdrop.h"

#include "ui/BlendPixels.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kPanelRadius = 12;
constexpr double kClipRadius = 11;
constexpr int kGridStep = 20;
constexpr int kGridStart = 6;
constexpr double kGridInset =
    3.5; // 4 px, of which a pen of 1 px with a square cap covers half a pixel
constexpr double kCorner = 14; // above the straight part of the inside's edge, and below it

QColor panelTopColor()
{
    return {10, 22, 42, 188};
}
QColor panelMiddleColor()
{
    return {10, 20, 38, 165};
}
QColor panelBottomColor()
{
    return {8, 16, 30, 152};
}
QColor panelRimColor()
{
    return {188, 220, 255, 84};
}
QColor gridColor()
{
    return {150, 190, 245, 16};
}

QPen gridPen()
{
    return {gridColor(), 1, Qt::SolidLine, Qt::FlatCap};
}

QRectF panelOf(const QSize &size)
{
    return QRectF(QPointF(), size).adjusted(1, 1, -1, -1);
}

void paintPanel(QPainter &painter, const QRectF &panel)
{
    QLinearGradient glass(panel.topLeft(), panel.bottomRight());
    glass.setColorAt(0, panelTopColor());
    glass.setColorAt(0.6, panelMiddleColor());
    glass.setColorAt(1, panelBottomColor());
    painter.setPen(QPen(panelRimColor(), 1));
    painter.setBrush(glass);
    painter.drawRoundedRect(panel, kPanelRadius, kPanelRadius);
}

void paintLevels(QPainter &painter, const QSize &size)
{
    for (int y = kGridStart; y < size.height(); y += kGridStep) {
        painter.drawLine(QPointF(kGridInset, y), QPointF(size.width() - kGridInset, y));
    }
}

void paintUprights(QPainter &painter, const QSize &size, double from, double to)
{
    for (int x = kGridStart; x < size.width(); x += kGridStep) {
        painter.drawLine(QPointF(x, from), QPointF(x, to));
    }
}

// All uprights in one line of the screen. Of hundreds of lines each would be hundreds of runs of pixels, of which the toolkit
// takes care with several threads.
QImage uprightsLine(const QSize &size, qreal ratio)
{
    QImage line(static_cast<int>(size.width() * ratio), 1, QImage::Format_ARGB32_Premultiplied);
    line.fill(Qt::transparent);
    QPainter painter(&line);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio, ratio);
    painter.setPen(gridPen());
    paintUprights(painter, size, 0, 1 / ratio);
    return line;
}

void blendRows(QImage &image, const QImage &line, int from, int to)
{
    const auto *source = reinterpret_cast<const QRgb *>(line.constScanLine(0));
    const int count = std::min(line.width(), image.width());
    for (int y = from; y < to; ++y) {
        blendPixels(source, reinterpret_cast<QRgb *>(image.scanLine(y)), count);
    }
}

} // namespace

const QImage &SidebarBackdrop::picture(const QSize &size, qreal ratio)
{
    if (size != keptSize || ratio != kept.devicePixelRatio()) {
        render(size, ratio);
    }
    return kept;
}

void SidebarBackdrop::clipToInside(QPainter &painter, const QSize &size)
{
    QPainterPath inside;
    inside.addRoundedRect(panelOf(size).adjusted(2, 2, -2, -2), kClipRadius, kClipRadius);
    painter.setClipPath(inside);
}

void SidebarBackdrop::render(const QSize &size, qreal ratio)
{
    keptSize = size;
    kept = QImage(size * ratio, QImage::Format_ARGB32_Premultiplied);
    kept.setDevicePixelRatio(ratio);
    kept.fill(Qt::transparent);
    // The lines of the screen between which every upright is as at any other.
    const int from = static_cast<int>(std::ceil(kCorner * ratio));
    const int to = std::max(static_cast<int>((size.height() - kCorner) * ratio), from);
    QPainter painter(&kept);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPanel(painter, panelOf(size));
    clipToInside(painter, size);
    painter.setPen(gridPen());
    paintLevels(painter, size);
    paintUprights(painter, size, kGridInset, from / ratio);
    paintUprights(painter, size, to / ratio, size.height() - kGridInset);
    painter.end();
    blendRows(kept, uprightsLine(size, ratio), from, to);
}
