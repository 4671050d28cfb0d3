// What the user of a soak run does, at random.
#pragma once

#include "soak/BlockWatch.h"
#include "soak/LogCheck.h"

#include <QObject>
#include <QRandomGenerator>
#include <QString>
#include <QTimer>

class MainWindow;
class QPushButton;

// Only what is safe in a sandbox: questions are answered with No, but for the one about the temporary folder, which must
// be the sandbox's. GUI thread.
class Walk : public QObject
{
    Q_OBJECT

public:
    Walk(MainWindow &walked, BlockWatch &watching, LogCheck &checking);

    void step(); // one thing, or one that takes longer and is done when the event loop has gone on

    void calmDown(); // the same state, and as little in memory, whatever has been before

    // A folder on a small volume of its own, which a step fills before it exports to it. Empty: no such step.
    QString smallVolume;

    int steps = 0;
    int cleanings = 0;
    int toasts = 0;
    int fullDisks = 0;

private:
    void press(QPushButton *button, BlockWatch::Kind kind, const QStringList &lines);
    void pressSomeButton();
    void cleanTemp();
    void changeSetting();
    void watchProcesses();
    void moveMouse();
    void showToasts();
    void closeToasts();
    void exportToFullDisk();
    void answer();

    MainWindow &window;
    BlockWatch &watch;
    LogCheck &log;
    QRandomGenerator random{20261121};
    QTimer answering;
};
