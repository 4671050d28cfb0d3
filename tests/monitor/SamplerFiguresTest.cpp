// Readings of this machine, against what the system itself and the processes concerned say.
#include "monitor/ProcessSampler.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <atomic>
#include <cmath>
#include <ctime>
#include <memory>
#include <optional>

namespace {

constexpr int kPatience =
    10; // readings that a figure may take to settle, since the machine has other things to do

// A child that loads the machine as its arguments say.
class Load
{
public:
    explicit Load(const QStringList &arguments,
                  const QString &program = QStringLiteral(VELTRA_LOAD_HELPER))
    {
        process.start(program, arguments);
        process.waitForReadyRead();
    }
    ~Load()
    {
        process.kill();
        process.waitForFinished();
    }
    Load(const Load &) = delete;
    Load &operator=(const Load &) = delete;

    quint32 pid() const { return static_cast<quint32>(process.processId()); }

private:
    QProcess process;
};

class Readings
{
public:
    Readings()
    {
        QObject::connect(&sampler,
                         &ProcessSampler::snapshotReady,
                         [this](const ProcessSnapshot &snapshot) { last = snapshot; });
    }
    const ProcessSnapshot &next()
    {
        sampler.sample();
        return last;
    }
    // A second reading, that long after the first.
    const ProcessSnapshot &after(int milliseconds)
    {
        QTest::qWait(milliseconds);
        return next();
    }
    ProcessRow rowOf(quint32 pid) const
    {
        for (const ProcessRow &row : last.rows) {
            if (row.pid == pid) {
                return row;
            }
        }
        return {};
    }

    ProcessSampler sampler;
    ProcessSnapshot last;
};

#ifdef VELTRA_ON_WINDOWS
// Wine 8 answers every question about processor times with those of the process that asks.
bool knowsOnlyOwnTimes()
{
    return QLibrary::resolve(QStringLiteral("ntdll"), "wine_get_version") != nullptr;
}

// Keeps a thread of this process busy.
class OwnLoad
{
public:
    OwnLoad()
        : thread(QThread::create([this] {
            while (!isOver) { }
        }))
    {
        thread->start();
    }
    ~OwnLoad()
    {
        isOver = true;
        thread->wait();
    }
    OwnLoad(const OwnLoad &) = delete;
    OwnLoad &operator=(const OwnLoad &) = delete;

private:
    std::atomic<bool> isOver = false;
    std::unique_ptr<QThread> thread;
};
#else
// Processor time of another process, in seconds, from the kernel's own clock of it.
double cpuSecondsOf(quint32 pid)
{
    clockid_t clock = 0;
    struct timespec now
    { };
    if (::clock_getcpuclockid(static_cast<pid_t>(pid), &clock) != 0
        || ::clock_gettime(clock, &now) != 0) {
        return 0;
    }
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The number behind "Name:" in a file of lines, in bytes.
quint64 kibibytesIn(const QString &path, const QByteArray &name)
{
    const QByteArray text = contentOf(path);
    const auto start = text.indexOf(name + ':') + name.size() + 1;
    return text.mid(start).trimmed().split(' ').at(0).toULongLong() * 1024;
}

struct Ticks
{
    double busy = 0;
    double all = 0;
};

Ticks systemTicks()
{
    const QList<QByteArray> words =
        contentOf(QStringLiteral("/proc/stat")).split('\n').at(0).simplified().split(' ');
    Ticks ticks;
    for (int i = 1; i <= 8; ++i) {
        const double value = words.at(i).toDouble();
        ticks.all += value;
        ticks.busy += i == 4 || i == 5 ? 0 : value; // idle, and waiting for storage
    }
    return ticks;
}

QSet<quint32> processIds()
{
    QSet<quint32> ids;
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        if (const quint32 id = name.toUInt()) {
            ids.insert(id);
        }
    }
    return ids;
}
#endif

} // namespace

class SamplerFiguresTest : public QObject
{
    Q_OBJECT

private slots:
    void ownProcess()
    {
        Readings readings;
        readings.next();
        const auto own = static_cast<quint32>(QCoreApplication::applicationPid());
        const ProcessRow row = readings.rowOf(own);
        QCOMPARE(row.pid, own);
        QCOMPARE(row.name.left(15),
                 QFileInfo(QCoreApplication::applicationFilePath()).fileName().left(15));
        QCOMPARE(row.status, QStringLiteral("Running"));
        QVERIFY(row.memoryMB > 1);
        QVERIFY(row.created != 0);
        QVERIFY(readings.last.memTotalBytes > readings.last.memUsedBytes);
        QVERIFY(readings.last.memUsedBytes > 0);
        QVERIFY(readings.last.uptimeSeconds > 0);
    }

    void memoryOfAChild()
    {
        const Load load({QStringLiteral("hold"), QStringLiteral("200")});
        Readings readings;
        readings.next();
        const double held = readings.rowOf(load.pid()).memoryMB;
        QVERIFY2(held > 190 && held < 260, qPrintable(QString::number(held)));
    }

#ifdef VELTRA_ON_WINDOWS
    void busyProcess()
    {
        std::optional<Load> child;
        std::optional<OwnLoad> own;
        auto pid = static_cast<quint32>(QCoreApplication::applicationPid());
        if (knowsOnlyOwnTimes()) {
            own.emplace();
        } else {
            pid = child.emplace(QStringList{QStringLiteral("burn"), QStringLiteral("1")}).pid();
        }
        Readings readings;
        readings.next();
        double percent = 0;
        for (int i = 0; i < 3 * kPatience && (percent < 90 || percent > 110); ++i) {
            percent = readings.rowOf((readings.after(1000), pid)).cpuPercent;
        }
        QVERIFY2(percent >= 90 && percent <= 110, qPrintable(QString::number(percent)));
    }
#else
    void busyChild_data()
    {
        QTest::addColumn<int>("threads");
        QTest::newRow("one thread") << 1;
        QTest::newRow("two threads") << 2;
    }

    // Of one processor. Where the machine has less to give, the kernel's own clock of the child tells how much it got.
    void busyChild()
    {
        QFETCH(int, threads);
        const Load load({QStringLiteral("burn"), QString::number(threads)});
        Readings readings;
        readings.next();
        // A process is measured from the first reading on that finds it with some processor time.
        bool isMeasured = false;
        QTRY_VERIFY_WITH_TIMEOUT(
            isMeasured = isMeasured || readings.rowOf((readings.next(), load.pid())).cpuPercent > 0,
            10'000);
        double percent = 0;
        for (int i = 0; i < kPatience; ++i) {
            QElapsedTimer wall;
            wall.start();
            readings.next();
            const double before = cpuSecondsOf(load.pid());
            percent = readings.rowOf((readings.after(1000), load.pid())).cpuPercent;
            const double got = (cpuSecondsOf(load.pid()) - before) * 1e11
                / static_cast<double>(wall.nsecsElapsed());
            QVERIFY2(std::abs(percent - got) < 5 * threads,
                     qPrintable(QStringLiteral("%1 instead of %2").arg(percent).arg(got)));
            if (percent >= 90 * threads && percent <= 110 * threads) {
                return;
            }
        }
        qWarning("the machine never had %d processors to give; measured as the kernel did: %.1f",
                 threads,
                 percent);
    }

    void totalLoadIsTheKernels()
    {
        const Load load({QStringLiteral("burn"), QStringLiteral("1")});
        Readings readings;
        QTest::qWait(100);
        readings.next();
        const Ticks before = systemTicks();
        readings.after(2000);
        const Ticks after = systemTicks();
        const double expected = (after.busy - before.busy) * 100 / (after.all - before.all);
        QVERIFY(expected > 0);
        QVERIFY2(
            std::abs(readings.last.cpuPercent - expected) <= 3,
            qPrintable(
                QStringLiteral("%1 instead of %2").arg(readings.last.cpuPercent).arg(expected)));
    }

    void residentSizeIsTheKernels()
    {
        const Load load({QStringLiteral("hold"), QStringLiteral("100")});
        Readings readings;
        readings.next();
        const double expected = static_cast<double>(kibibytesIn(
                                    QStringLiteral("/proc/%1/status").arg(load.pid()), "VmRSS"))
            / 1048576;
        QVERIFY(expected > 90);
        QVERIFY(std::abs(readings.rowOf(load.pid()).memoryMB - expected) <= expected * 0.05);
    }

    void writingChild()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("written"));
        const Load load({QStringLiteral("write"), file, QStringLiteral("10")});
        Readings readings;
        readings.next();
        double rate = 0;
        double expected = 0;
        for (int i = 0; i < kPatience; ++i) {
            QElapsedTimer wall;
            readings.next();
            wall.start();
            const auto before = QFileInfo(file).size();
            rate = readings.rowOf((readings.after(1000), load.pid())).diskKBps;
            expected = static_cast<double>(QFileInfo(file).size() - before) / 1024 * 1000
                / static_cast<double>(wall.elapsed());
            if (expected > 8000 && std::abs(rate - expected) <= expected * 0.15) {
                QVERIFY(readings.last.diskKBps >= rate);
                return;
            }
        }
        if (rate == 0
            && contentOf(QStringLiteral("/proc/%1/io").arg(load.pid()))
                   .contains("write_bytes: 0\n")) {
            QSKIP("the temporary folder is not on storage");
        }
        QFAIL(qPrintable(QStringLiteral("%1 instead of %2 KiB/s").arg(rate).arg(expected)));
    }

    void everyProcessThatLivesThroughTheReadingIsListedOnce()
    {
        Readings readings;
        for (int i = 0; i < 5; ++i) {
            const QSet<quint32> before = processIds();
            readings.next();
            const QSet<quint32> survivors = QSet<quint32>(before).intersect(processIds());
            QHash<quint32, int> listed;
            for (const ProcessRow &row : std::as_const(readings.last.rows)) {
                ++listed[row.pid];
            }
            for (const quint32 pid : survivors) {
                QVERIFY2(listed.value(pid) == 1, qPrintable(QString::number(pid)));
            }
        }
    }

    void memoryAndUptimeAreTheKernels()
    {
        Readings readings;
        readings.next();
        const QString meminfo = QStringLiteral("/proc/meminfo");
        QCOMPARE(readings.last.memTotalBytes, kibibytesIn(meminfo, "MemTotal"));
        const double used = static_cast<double>(kibibytesIn(meminfo, "MemTotal")
                                                - kibibytesIn(meminfo, "MemAvailable"));
        QVERIFY(std::abs(static_cast<double>(readings.last.memUsedBytes) - used) < 256e6);
        const double uptime = contentOf(QStringLiteral("/proc/uptime")).split(' ').at(0).toDouble();
        QVERIFY(std::abs(static_cast<double>(readings.last.uptimeSeconds) - uptime) <= 1.5);
    }

    void kernelThreadsAreListed()
    {
        if (!contentOf(QStringLiteral("/proc/2/comm")).startsWith("kthreadd")) {
            QSKIP("the kernel's threads cannot be seen from here");
        }
        Readings readings;
        readings.next();
        QCOMPARE(readings.rowOf(2).name, QStringLiteral("kthreadd"));
        QCOMPARE(readings.rowOf(2).memoryMB, 0.0);
    }
#endif
};

QTEST_GUILESS_MAIN(SamplerFiguresTest)
#include "SamplerFiguresTest.moc"
