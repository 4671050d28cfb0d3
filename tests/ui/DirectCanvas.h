// The particle canvas's whole picture, painted directly and without anything kept.
#pragma once

#include "ui/ParticleCanvas.h"

#include <QPainter>
#include <cmath>

namespace direct {

inline void paintGlow(QPainter &painter, const QPointF &center, double radius, const QColor &color)
{
    QRadialGradient glow(center, radius);
    glow.setColorAt(0, color);
    glow.setColorAt(1, QColor(color.red(), color.green(), color.blue(), 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(center, radius, radius);
}

inline void paintDots(QPainter &painter, const ParticleCanvas &canvas)
{
    QColor color = canvas.accentColor.isValid() ? canvas.accentColor : QColor(120, 195, 255);
    if (canvas.autoColorShift) {
        color = QColor::fromHsv(
            (color.hue() + canvas.hueOffset) % 360, color.saturation(), color.value());
    }
    painter.setPen(Qt::NoPen);
    for (const auto &dot : canvas.particles) {
        color.setAlpha(static_cast<int>((std::sin(dot.phase) + 1.0) * 55.0) + 70);
        painter.setBrush(color);
        painter.drawEllipse(QPointF(dot.x, dot.y), dot.radius, dot.radius);
    }
}

inline void paintCanvas(QPainter &painter, const ParticleCanvas &canvas)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const double w = canvas.width();
    const double h = canvas.height();
    paintGlow(painter, {0.18 * w, 0.68 * h}, 0.38 * w, QColor(55, 132, 255, 72));
    paintGlow(painter, {0.83 * w, 0.28 * h}, 0.3 * w, QColor(95, 170, 255, 64));
    painter.setPen(
        QPen(QColor(150, 190, 255, 20), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    for (int x = 0; x < canvas.width(); x += 24) {
        painter.drawLine(x, 0, x, canvas.height());
    }
    for (int y = 0; y < canvas.height(); y += 24) {
        painter.drawLine(0, y, canvas.width(), y);
    }
    if (canvas.frameOutline) {
        painter.setPen(QPen(QColor(255, 255, 255, 38), 1.0));
        painter.setBrush(QColor(255, 255, 255, 10));
        painter.drawRoundedRect(QRectF(1, 1, w - 2, h - 2), 8, 8);
    }
    if (canvas.enabled) {
        paintDots(painter, canvas);
    }
}

} // namespace direct
