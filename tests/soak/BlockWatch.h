// How long the GUI thread was not there for the user.
#pragma once

#include "app/Application.h"

#include <QString>
#include <QStringList>
#include <QTimer>

// Measures each event's handling, less the time in which the machine had the thread wait for a processor. A handler
// that runs an event loop of its own (a question) counts up to that loop and after it. GUI thread. The environment's
// VELTRA_SOAK_DISPLAY has the identifiers of the processes that show windows: the display server and the compositor.
class BlockWatch : public Application
{
public:
    BlockWatch(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    // What runs until the next call counts as blocking by design, or does not count at all before the first call.
    enum class Kind { Ignored, Usual, ByDesign };
    void setKind(Kind newKind) { kind = newKind; }
    void setAction(const QString &name) { action = name; }

    struct Worst
    {
        double milliseconds = 0; // without that wait
        double wall = 0;
        double cpu = 0;
        QString what;
    };
    Worst usual;
    Worst byDesign;
    double longestWall = 0; // ms, with that wait
    // Usual ones that took over kLimit, by their own work or by sleep. To show a window, or its picture, is to sleep until
    // the display server has done so, which the compositor may keep to itself for a while, and the toolkit's thread has read
    // its answer; to paint is to wait for the toolkit's other threads that paint along. The time in which these worked, or
    // waited for a processor in turn, is no such sleep.
    QStringList overLimit;
    static constexpr double kLimit = 100; // ms

    double waitedForProcessor() const; // ms, this thread, since it began

private:
    struct Moment
    {
        double wall = 0;
        double cpu = 0;
        double waited = 0;
        double helpers = 0; // at work, or waiting for a processor
        long sleeps =
            0; // how often it gave the processor back by itself; without, whatever stops it is the machine
    };
    Moment now() const;
    void finish(int type);

    Kind kind = Kind::Ignored;
    QString action;
    Moment begin;
    const char *measured = ""; // the class of who gets the event
    int measuredLoop = 0; // the level of the event loop whose handler is being measured; 0: none
    bool isInner = false; // the loops within a handler have begun
    void findHelpers();

    int schedule = -1; // file descriptors
    QList<int> displaySchedules;
    QList<int> threadSchedules; // of the toolkit; its threads come and go
    QTimer finding;
};
