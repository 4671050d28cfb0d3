#include "monitor/ProcessSampler.h"

#include "monitor/ProcessName.h"
#include "platform/SystemMemory.h"
#include "platform/TickCount.h"

#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kShortestInterval = 250ms;
constexpr double kMillisecondsPerSecond = 1000.0;
constexpr double kFileTimePerSecond = 10000000.0;
constexpr double kMiBPerByte = 9.5367431640625e-07;
constexpr double kKiBPerByte = 0.0009765625;
constexpr qsizetype kRoomForNewProcesses = 16;

} // namespace

ProcessSampler::ProcessSampler(QObject *parent)
    : QObject(parent)
    , timer(new QTimer(this))
{
    connect(timer, &QTimer::timeout, this, &ProcessSampler::sample);
}

void ProcessSampler::start(int intervalMs)
{
    previousTimes = {};
    previousTick = 0;
    previousCpuTimes.clear();
    previousIoBytes.clear();
    timer->start(std::max(std::chrono::milliseconds(intervalMs), kShortestInterval));
    sample();
}

void ProcessSampler::stop()
{
    timer->stop();
}

void ProcessSampler::sample()
{
    ProcessSnapshot snapshot;
    try {
        fill(snapshot);
    } catch (const std::exception &) { // what was read so far goes out all the same
    }
    emit snapshotReady(snapshot);
}

void ProcessSampler::fill(ProcessSnapshot &snapshot)
{
    snapshot.cpuPercent = systemLoad();
    if (const auto memory = platform::queryMemory()) {
        snapshot.memUsedBytes = memory->totalBytes - memory->availableBytes;
        snapshot.memTotalBytes = memory->totalBytes;
    }
    snapshot.uptimeSeconds = platform::tickCountMilliseconds() / 1000;
    readProcesses(snapshot);
}

// All differences are those of unsigned numbers, and wrap around.
double ProcessSampler::systemLoad()
{
    const auto times = platform::querySystemTimes();
    if (!times) {
        return 0;
    }
    const auto previous = std::exchange(previousTimes, *times);
    if (previous.idle == 0 || previous.kernel == 0 || previous.user == 0) {
        return 0;
    }
    const quint64 total = times->kernel + times->user - previous.kernel - previous.user;
    const quint64 idle = times->idle - previous.idle;
    if (idle >= total) {
        return 0;
    }
    const double load = static_cast<double>(total - idle) * 100.0 / static_cast<double>(total);
    return std::min(load, 100.0);
}

void ProcessSampler::readProcesses(ProcessSnapshot &snapshot)
{
    if (!reader.begin() || !reader.next()) {
        return;
    }
    const quint64 elapsedMs = takeElapsed();
    snapshot.rows.reserve(previousRowCount + kRoomForNewProcesses);
    const QThread *thread = QThread::currentThread();
    do {
        snapshot.rows.append(readRow(elapsedMs, snapshot));
    } while (!thread->isInterruptionRequested() && reader.next());
    previousRowCount = snapshot.rows.size();
}

quint64 ProcessSampler::takeElapsed()
{
    const quint64 now = platform::tickCountMilliseconds();
    const quint64 previous = std::exchange(previousTick, now);
    return previous == 0 ? 0 : now - previous;
}

ProcessRow ProcessSampler::readRow(quint64 elapsedMs, ProcessSnapshot &snapshot)
{
    ProcessRow row;
    row.pid = reader.id();
    row.name = processNameFrom(reader.name());
    row.status = QStringLiteral("Running");
    if (!reader.open()) {
        row.status = QStringLiteral("Restricted");
        return row;
    }
    if (const auto bytes = reader.residentBytes()) {
        row.memoryMB = static_cast<double>(*bytes) * kMiBPerByte;
    }
    readCpu(row, elapsedMs);
    readDisk(row, elapsedMs, snapshot);
    return row;
}

void ProcessSampler::readCpu(ProcessRow &row, quint64 elapsedMs)
{
    const auto times = reader.times();
    if (!times) {
        return;
    }
    row.created = times->created;
    const quint64 now = times->kernel + times->user;
    const quint64 previous = std::exchange(previousCpuTimes[row.pid], now);
    if (previous == 0 || elapsedMs == 0) {
        return;
    }
    // Seen as a signed number, the difference to a larger count of an earlier process is negative, and so no load.
    const auto used = static_cast<qint64>(now - previous);
    const double seconds = static_cast<double>(elapsedMs) / kMillisecondsPerSecond;
    const double percent = static_cast<double>(used) / kFileTimePerSecond / seconds * 100.0;
    row.cpuPercent = std::max(percent, 0.0);
}

void ProcessSampler::readDisk(ProcessRow &row, quint64 elapsedMs, ProcessSnapshot &snapshot)
{
    const auto now = reader.transferredBytes();
    if (!now) {
        return;
    }
    const auto previous = previousIoBytes.find(row.pid);
    const bool isKnown = previous != previousIoBytes.end();
    if (isKnown && elapsedMs != 0) {
        const double seconds = static_cast<double>(elapsedMs) / kMillisecondsPerSecond;
        row.diskKBps = static_cast<double>(*now - *previous) * kKiBPerByte / seconds;
        snapshot.diskKBps += row.diskKBps;
    }
    if (isKnown) {
        *previous = *now;
    } else {
        previousIoBytes.insert(row.pid, *now);
    }
}
