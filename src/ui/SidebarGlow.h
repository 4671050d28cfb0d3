// A soft light that follows a point.
#pragma once

#include <QColor>
#include <QPointF>
#include <QWidget>

class QTimer;

// Lies over a panel and is told by its owner where to shine; it never takes the mouse. The light fades in when it is
// activated, out when it is not, and its centre eases towards the target, in steps of 16 ms. The timer runs as long as
// the glow is active, and stops when it has faded out. GUI thread; positions in its own coordinates.
class SidebarGlow : public QWidget
{
    Q_OBJECT

public:
    explicit SidebarGlow(QWidget *parent = nullptr);

    QPointF center() const { return position; }
    double currentStrength() const { return strength; } // 0 to 1

    void setCursorPos(const QPointF &target);
    void setActive(bool active);
    void setAccentColor(const QColor &color); // light blue until it is set

    void paintEvent(QPaintEvent *event) override;

public slots:
    void tick(); // one step

private:
    void startTimer();
    bool isSettled() const;

    QPointF position;
    QPointF targetPosition;
    double strength = 0;
    double targetStrength = 0;
    QColor accentColor{92, 170, 255};
    QTimer *timer;
};
