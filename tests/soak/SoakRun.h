// A soak run from its start to its table.
#pragma once

#include "soak/ClockCheck.h"
#include "soak/FigureCheck.h"
#include "soak/Resources.h"
#include "soak/Walk.h"

#include <QElapsedTimer>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <chrono>
#include <functional>

class SoakRun : public QObject
{
    Q_OBJECT

public:
    SoakRun(MainWindow &soaked, BlockWatch &watching, std::chrono::seconds wanted);

    void start(); // ends the event loop when it is over
    bool report(); // prints the table; false when something is wrong

    Walk walk;

private:
    void go();
    void settle(const std::function<void()> &then);
    void startStorm();
    void endStorm();
    void judgeGrowth();
    void printWork() const;
    void printBlocks() const;
    void printResources() const;

    MainWindow &window;
    BlockWatch &watch;
    LogCheck log;
    ClockCheck wallClock;
    FigureCheck figures;
    std::chrono::seconds length;
    QElapsedTimer clock; // of this quarter
    QTimer stepping;
    QProcess storm;
    QStringList complaints;
    QStringList stormRates; // processes a second
    QList<Resources> taken; // at the start and after each quarter of the time, in the same state
};
