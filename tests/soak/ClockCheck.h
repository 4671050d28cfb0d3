// Sets the wall clock back and forth, and watches whether the window goes along.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QRandomGenerator>
#include <QString>
#include <QTimer>

class MainWindow;

// GUI thread.
class ClockCheck : public QObject
{
    Q_OBJECT

public:
    explicit ClockCheck(MainWindow &checked);

    void start(); // jumps from here on
    QStringList complaints() const;

    int jumps = 0;
    qint64 longestWrong = 0; // ms in which the dashboard had another time or date than the clock

private:
    void jump();
    void look();
    bool isShownRight() const;

    MainWindow &window;
    QRandomGenerator random{19700101};
    QTimer jumping;
    QTimer looking;
    QElapsedTimer sinceRight;
    bool isClockOurs = false;
};
