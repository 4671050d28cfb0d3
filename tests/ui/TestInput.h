// Events that a test sends by hand, and the animations of an object by name.
#pragma once

#include <QCoreApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QPropertyAnimation>
#include <QWidget>

namespace testinput {

inline void enter(QWidget *widget)
{
    QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(widget, &event);
}

inline void leave(QWidget *widget)
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(widget, &event);
}

// A mouse event at `global`, straight to the widget and to nobody else.
inline bool mouse(QWidget *widget,
                  QEvent::Type type,
                  const QPointF &global,
                  Qt::MouseButton button,
                  Qt::MouseButtons held)
{
    QMouseEvent event(type, widget->mapFromGlobal(global), global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

inline QPropertyAnimation *animationOf(const QObject *object, const QByteArray &property)
{
    const auto animations = object->findChildren<QPropertyAnimation *>();
    for (QPropertyAnimation *animation : animations) {
        if (animation->propertyName() == property && animation->targetObject() == object) {
            return animation;
        }
    }
    return nullptr;
}

inline bool isRunning(const QObject *object, const QByteArray &property)
{
    const QPropertyAnimation *animation = animationOf(object, property);
    return animation != nullptr && animation->state() == QAbstractAnimation::Running;
}

} // namespace testinput
