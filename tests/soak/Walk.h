// What the user of a soak run does, at random.
#pragma once

#include "soak/BlockWatch.h"
#include "soak/LogCheck.h"

#include <QObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QString>
#include <QTimer>

class MainWindow;
class QMessageBox;
class QPushButton;
class QTableWidget;

// Only what is safe in a sandbox: questions are answered with No, but for those about the temporary folder, which must be
// the sandbox's, and about ending the process that this started for it. GUI thread.
class Walk : public QObject
{
    Q_OBJECT

public:
    Walk(MainWindow &walked, BlockWatch &watching, LogCheck &checking);
    ~Walk() override;

    void step(); // one thing, or one that takes longer and is done when the event loop has gone on

    bool isPressing() const { return pressing; } // a button will be pressed, or is

    void calmDown(); // the same state, and as little in memory, whatever has been before

    // A folder on a small volume of its own, which a step fills before it exports to it. Empty: no such step, and none that
    // fills the temporary folder, which is on another small volume then.
    QString smallVolume;

    int steps = 0;
    int cleanings = 0;
    int toasts = 0;
    int fullDisks = 0; // exports
    int fullTemps = 0; // cleanings
    int endedTasks = 0;

private:
    using Step = void (Walk::*)();
    static const QList<Step> &allSteps();

    // One thing each.
    void changePage();
    void pressSidebar();
    void moveMouse();
    void dragWindow();
    void minimize();
    void searchStartup();
    void changeSetting();
    void pressSomeButton();
    void refreshInventory();
    void cleanTemp();
    void cleanFullTemp();
    void exportToFullDisk();
    void showToasts();
    void closeToasts();
    void watchProcesses();
    void endProcess();

    void press(QPushButton *button, BlockWatch::Kind kind, const QStringList &lines);
    void pressCleaning(int items);
    bool selectVictim();
    void answer();
    bool isToBeDone(const QMessageBox &question);
    QTableWidget *processTable() const;

    MainWindow &window;
    BlockWatch &watch;
    LogCheck &log;
    QProcess victim;
    QRandomGenerator random{20261121};
    QTimer answering;
    bool pressing = false;
};
