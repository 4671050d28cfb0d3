// One reading of the machine, as it travels from the sampler to the page. Plain values: any thread, one at a time.
#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

// One process in one reading.
struct ProcessRow
{
    QString name; // executable file name as the process list gives it
    quint32 pid = 0;
    double cpuPercent =
        0; // of one processor since the previous reading: 400 on four busy ones; 0 when unknown
    double memoryMB = 0; // working set in MiB, not rounded
    double diskKBps = 0; // KiB read and written a second since the previous reading; 0 when unknown
    QString
        status; // "Running", or "Restricted" when it may not be examined; the figures are 0 then
    quint64 created =
        0; // tells it from an earlier one of the same pid: see platform::ProcessTimes; 0 when unknown
};

// All fields start at zero; what cannot be found out stays so.
struct ProcessSnapshot
{
    QList<ProcessRow> rows; // in the order of the system's list
    double cpuPercent = 0; // of the whole machine since the previous reading, 0 to 100
    quint64 memUsedBytes = 0;
    quint64 memTotalBytes = 0;
    double diskKBps = 0; // sum over all rows
    quint64 uptimeSeconds = 0;
};

Q_DECLARE_METATYPE(ProcessSnapshot)
