// How a NavButton looks, from back to front.
#include "ui/NavButton.h"

#include <QPainter>

namespace {

constexpr double kHoverLift = 1.2; // px upwards at full hover
constexpr int kIconSize = 18;
constexpr int kIconLeft = 14; // from the body's left edge, when there is a label
constexpr int kLabelLeft = 40;
constexpr int kLabelRight = 9;
constexpr int kLabelPoints = 11;
constexpr double kInvisible = 0.01;
constexpr double kBodyRadius = 14;

int alphaOf(double value)
{
    return static_cast<int>(value);
}

QColor bodyTopColor(int alpha)
{
    return {22, 42, 70, alpha};
}
QColor bodyBottomColor(int alpha)
{
    return {12, 24, 46, alpha};
}
QColor labelColor(double opacity)
{
    return {235, 246, 255, alphaOf(240 * opacity)};
}
QColor focusColor()
{
    return {242, 246, 255, 230};
}

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

void NavButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = bodyRect();
    paintGlow(painter, body);
    paintBody(painter, body);
    paintSheen(painter, body);
    if (hasFocus() && focusMarked) {
        paintFocusMark(painter, body);
    }
    paintIcon(painter, body);
    if (textOpacity > kInvisible) {
        paintLabel(painter, body);
    }
}

QRectF NavButton::bodyRect() const
{
    return {6, 4 - kHoverLift * hoverStrength + pressOffset, width() - 12.0, height() - 8.0};
}

void NavButton::paintGlow(QPainter &painter, const QRectF &body) const
{
    const int alpha = active ? 120 : alphaOf(34 + 66 * hoverStrength);
    QRadialGradient glow(body.center(), 0.72 * body.width());
    glow.setColorAt(0, withAlpha(accentColor, alpha));
    glow.setColorAt(1, withAlpha(accentColor, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawRoundedRect(body.adjusted(-2, -2, 2, 2), 15, 15);
}

void NavButton::paintBody(QPainter &painter, const QRectF &body) const
{
    const int alpha = active ? 168 : alphaOf(110 + 45 * hoverStrength);
    QLinearGradient fill(body.topLeft(), body.bottomRight());
    fill.setColorAt(0, bodyTopColor(alpha));
    fill.setColorAt(1, bodyBottomColor(alpha - 14));
    const int rimAlpha = alphaOf(90 * hoverStrength) + (active ? 110 : 75);
    painter.setPen(QPen(withAlpha(accentColor, rimAlpha), 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(body, kBodyRadius, kBodyRadius);
}

void NavButton::paintSheen(QPainter &painter, const QRectF &body) const
{
    QLinearGradient sheen(0, body.top(), 0, body.bottom());
    sheen.setColorAt(0, withAlpha(Qt::white, alphaOf(48 + 50 * hoverStrength)));
    sheen.setColorAt(1, withAlpha(Qt::white, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sheen);
    painter.drawRoundedRect(
        QRectF(body.x() + 1, body.y() + 1, body.width() - 2, 0.55 * body.height() - 1), 13, 13);
}

void NavButton::paintFocusMark(QPainter &painter, const QRectF &body) const
{
    painter.setPen(QPen(focusColor(), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(body.adjusted(2, 2, -2, -2), kBodyRadius - 2, kBodyRadius - 2);
}

void NavButton::paintIcon(QPainter &painter, const QRectF &body) const
{
    const int x = expanded ? static_cast<int>(body.x()) + kIconLeft
                           : static_cast<int>(body.x() + body.width() / 2) - kIconSize / 2;
    const int y = static_cast<int>(body.y() + body.height() / 2) - kIconSize / 2;
    const QSize size(kIconSize, kIconSize);
    const QPixmap pixmap = icon.pixmap(size, devicePixelRatio(), QIcon::Normal, QIcon::Off);
    painter.drawPixmap(QPoint(x, y), pixmap);
}

void NavButton::paintLabel(QPainter &painter, const QRectF &body) const
{
    QFont labelFont = font();
    labelFont.setPointSize(kLabelPoints);
    labelFont.setWeight(active ? QFont::Bold : QFont::Normal);
    painter.setFont(labelFont);
    painter.setPen(labelColor(textOpacity));
    const QRect place(QPoint(static_cast<int>(body.x()) + kLabelLeft, static_cast<int>(body.y())),
                      QPoint(static_cast<int>(body.x() + body.width()) - kLabelRight,
                             static_cast<int>(body.y() + body.height()) - 1));
    // Beside the icon also where the writing direction is from right to left: the body is not mirrored.
    painter.drawText(place, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, text);
}
