// The recipe of every animated value: a property, moved from where it is to a target.
#pragma once

#include <QByteArray>
#include <QWidget>
#include <chrono>

class QPropertyAnimation;

namespace animate {

constexpr int milliseconds(std::chrono::milliseconds duration)
{
    return static_cast<int>(duration.count());
}

// An animation of that property of `target`, whose child it becomes; it slows down towards its end (OutCubic).
QPropertyAnimation *
create(QObject *target, const QByteArray &property, std::chrono::milliseconds duration);

// Stops whatever runs and starts anew from `from`.
void restart(QPropertyAnimation *animation, const QVariant &from, const QVariant &to);

// Stores a value that the widget is painted with; repaints only when it is a new one.
void store(QWidget *widget, double &field, double value);

} // namespace animate
