// How the sidebar looks, from back to front.
#include "ui/DrawPicture.h"
#include "ui/SidebarNav.h"

#include <QPainter>
#include <algorithm>

namespace {

constexpr double kInvisible = 0.01;
constexpr double kSmallestSpotlight = 90;
constexpr double kSpotlightPerWidth = 0.85;
constexpr int kSpotlightAlpha = 48;
constexpr double kIndicatorX = 6;
constexpr double kIndicatorWidth = 4;
constexpr double kIndicatorHeight = 44;

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
    const qreal ratio = painter.deviceTransform().m11();
    drawPicture(painter, QPoint(), backdrop.picture(size(), ratio > 0 ? ratio : 1));

    SidebarBackdrop::clipToInside(painter, size());
    if (spotlightAlpha > kInvisible) {
        paintSpotlight(painter);
    }
    if (currentIndex >= 0 && !buttons.isEmpty()) {
        paintIndicator(painter);
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
