#include "ui/SwitchBox.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace {

constexpr int kHeight = 28; // px, leaves room for the focus frame
constexpr qreal kGap = 4; // px between the knob and the rail's edge

} // namespace

SwitchBox::SwitchBox(const QString &text, QWidget *parent)
    : PageControl(parent)
{
    setText(text);
    setMinimumHeight(kHeight);
}

QRectF SwitchBox::knobRect() const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRectF rail = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    const qreal side = rail.height() - 2 * kGap;
    const bool atRight = isChecked() != isRightToLeft();
    const qreal left = atRight ? rail.right() - kGap - side : rail.left() + kGap;
    return {left, rail.top() + kGap, side, side};
}

void SwitchBox::paintEvent(QPaintEvent *event)
{
    PageControl::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // With a dark rim, the knob is seen on bright accents as well.
    painter.setPen(QPen(palette().color(QPalette::Shadow), 1));
    painter.setBrush(palette().color(QPalette::WindowText));
    painter.drawEllipse(knobRect());
}
