// Takes readings of the whole machine at a steady rate.
#pragma once

#include "monitor/ProcessSnapshot.h"
#include "platform/FileTime.h"
#include "platform/ProcessReader.h"
#include "platform/SystemTimes.h"

#include <QMap>
#include <QObject>

class QTimer;

// Lives on a worker thread: start() and stop() are called there, as queued calls, and snapshotReady() leaves from there.
// Processes that have ended stay in the history until the next start(): a new process under an old identifier is measured
// against the old one's counts.
class ProcessSampler : public QObject
{
    Q_OBJECT

public:
    explicit ProcessSampler(QObject *parent = nullptr);

    // Takes one reading and emits snapshotReady() exactly once, whatever failed.
    void sample();

    // Joins the halves of a FILETIME (low part first in memory) into one count.
    template<typename FileTime>
    quint64 fileTimeToU64(const FileTime &time) const
    {
        return platform::joinFileTime(time);
    }

public slots:
    // Forgets the history, takes a reading at once, and then one every `intervalMs` ms, but not faster than every 250 ms. The
    // loads of the first reading are 0.
    void start(int intervalMs);

    // Keeps the history.
    void stop();

signals:
    void snapshotReady(const ProcessSnapshot &snapshot);

private:
    void fill(ProcessSnapshot &snapshot);
    double systemLoad();
    void readProcesses(ProcessSnapshot &snapshot);
    quint64 takeElapsed(); // ms since the previous call; 0 the first time
    ProcessRow readRow(quint64 elapsedMs, ProcessSnapshot &snapshot);
    void readCpu(ProcessRow &row, quint64 elapsedMs);
    void readDisk(ProcessRow &row, quint64 elapsedMs, ProcessSnapshot &snapshot);

    QTimer *timer; // child, drives sample()
    platform::SystemTimes previousTimes; // 0: none yet
    quint64 previousTick = 0; // ms since start-up at the last pass over the processes; 0: none yet
    QMap<quint32, quint64> previousCpuTimes; // per process: kernel + user time, in units of 100 ns
    QMap<quint32, quint64> previousIoBytes; // per process: read + written
    qsizetype previousRowCount = 0;
    platform::ProcessReader reader;
};
