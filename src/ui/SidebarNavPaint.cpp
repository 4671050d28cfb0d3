// How the sidebar looks, from back to front.
#include "ui/SidebarNav.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace {

constexpr double kPanelRadius = 12;
constexpr double kClipRadius = 11;
constexpr int kGridStep = 20;
constexpr int kGridStart = 6;
constexpr int kGridInset = 4;
constexpr double kInvisible = 0.01;
constexpr double kSmallestSpotlight = 90;
constexpr double kSpotlightPerWidth = 0.85;
constexpr int kSpotlightAlpha = 48;
constexpr double kIndicatorX = 6;
constexpr double kIndicatorWidth = 4;
constexpr double kIndicatorHeight = 44;

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

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

void SidebarNav::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    paintBackground(painter, area);

    painter.save();
    QPainterPath inside;
    inside.addRoundedRect(area.adjusted(2, 2, -2, -2), kClipRadius, kClipRadius);
    painter.setClipPath(inside);
    paintGrid(painter);
    if (spotlightAlpha > kInvisible) {
        paintSpotlight(painter);
    }
    if (currentIndex >= 0 && !buttons.isEmpty()) {
        paintIndicator(painter);
    }
    painter.restore();
}

void SidebarNav::paintBackground(QPainter &painter, const QRectF &area) const
{
    QLinearGradient glass(area.topLeft(), area.bottomRight());
    glass.setColorAt(0, panelTopColor());
    glass.setColorAt(0.6, panelMiddleColor());
    glass.setColorAt(1, panelBottomColor());
    painter.setPen(QPen(panelRimColor(), 1));
    painter.setBrush(glass);
    painter.drawRoundedRect(area, kPanelRadius, kPanelRadius);
}

void SidebarNav::paintGrid(QPainter &painter) const
{
    painter.setPen(QPen(gridColor(), 1));
    for (int y = kGridStart; y < height(); y += kGridStep) {
        painter.drawLine(kGridInset, y, width() - kGridInset, y);
    }
    for (int x = kGridStart; x < width(); x += kGridStep) {
        painter.drawLine(x, kGridInset, x, height() - kGridInset);
    }
}

void SidebarNav::paintSpotlight(QPainter &painter) const
{
    const double radius = std::max(kSpotlightPerWidth * width(), kSmallestSpotlight);
    QRadialGradient light(spotlightPosition, radius);
    light.setColorAt(0, withAlpha(accentColor, static_cast<int>(spotlightAlpha * kSpotlightAlpha)));
    light.setColorAt(1, withAlpha(accentColor, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawEllipse(spotlightPosition, radius, radius);
}

void SidebarNav::paintIndicator(QPainter &painter) const
{
    const QRectF bar(kIndicatorX, indicatorY, kIndicatorWidth, kIndicatorHeight);
    QLinearGradient fill(bar.topLeft(), bar.bottomLeft());
    fill.setColorAt(0, withAlpha(accentColor, 240));
    fill.setColorAt(1, withAlpha(accentColor, 130));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(bar, 2, 2);
}
