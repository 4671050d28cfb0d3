#include "ui/Animate.h"

#include <QPropertyAnimation>

namespace animate {

QPropertyAnimation *
create(QObject *target, const QByteArray &property, std::chrono::milliseconds duration)
{
    auto *animation = new QPropertyAnimation(target, property, target);
    animation->setDuration(milliseconds(duration));
    animation->setEasingCurve(QEasingCurve::OutCubic);
    return animation;
}

void restart(QPropertyAnimation *animation, const QVariant &from, const QVariant &to)
{
    animation->stop();
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->start();
}

void store(QWidget *widget, double &field, double value)
{
    if (field == value) {
        return;
    }
    field = value;
    widget->update();
}

} // namespace animate
