// How long the GUI thread was not there for the user.
#pragma once

#include "app/Application.h"

#include <QString>

// Measures each event's handling, less the time in which the machine had the thread wait for a processor. A handler
// that runs an event loop of its own (a question) counts up to that loop and after it. GUI thread.
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
    // Usual ones whose own work took over kMostWork, or that slept for over kLongestSleep. To show a window, or its picture,
    // is to wait for the display server, which a busy machine makes wait in turn.
    int overLimit = 0;
    static constexpr double kMostWork = 100; // ms of processor time
    static constexpr double kLongestSleep = 500; // ms

private:
    struct Moment
    {
        double wall = 0;
        double cpu = 0;
        double waited = 0;
    };
    Moment now() const;
    void finish(int type);

    Kind kind = Kind::Ignored;
    QString action;
    Moment begin;
    int measuredLoop = 0; // the level of the event loop whose handler is being measured; 0: none
    bool isInner = false; // the loops within a handler have begun
    int schedule = -1; // file descriptor
};
