// Sets the wall clock back and forth, and watches whether the window goes along.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QRandomGenerator>
#include <QString>
#include <QTimer>

class BlockWatch;
class MainWindow;

// GUI thread.
class ClockCheck : public QObject
{
    Q_OBJECT

public:
    ClockCheck(MainWindow &checked, const BlockWatch &watching);

    void start(); // jumps from here on
    QStringList complaints() const;

    int jumps = 0;
    // How long the dashboard had another time or date than the clock, less the GUI thread's wait for a processor.
    double longestWrong = 0; // ms

private:
    void jump();
    void look();
    bool isShownRight() const;

    double ownTime() const; // ms

    MainWindow &window;
    const BlockWatch &watch;
    QRandomGenerator random{19700101};
    QTimer jumping;
    QTimer looking;
    QElapsedTimer clock;
    double lastRight = 0; // by ownTime()
    bool isClockOurs = false;
};
