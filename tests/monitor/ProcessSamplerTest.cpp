// Readings of a scripted machine.
#include "monitor/ProcessSampler.h"

#include "fakes/ScriptedPlatform.h"
#include "fakes/ScriptedProcesses.h"
#include "monitor/ProcessName.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <limits>
#include <stdexcept>

namespace {

using fakes::processes;
using fakes::scriptedPlatform;
using fakes::ScriptedProcess;
using platform::ProcessTimes;
using platform::SystemTimes;

constexpr quint64 kSecond = 10'000'000; // of 100 ns

// Readings by hand, on this thread.
class Readings
{
public:
    Readings()
    {
        QObject::connect(
            &sampler, &ProcessSampler::snapshotReady, [this](const ProcessSnapshot &snapshot) {
                last = snapshot;
                ++count;
            });
    }
    const ProcessSnapshot &next()
    {
        sampler.sample();
        return last;
    }

    ProcessSampler sampler;
    ProcessSnapshot last;
    int count = 0;
};

ScriptedProcess processOf(quint32 id, const std::string &name = "one")
{
    ScriptedProcess process;
    process.id = id;
    process.name = name;
    process.times = ProcessTimes{1 * kSecond, 1 * kSecond, 77};
    process.transferredBytes = 1000;
    return process;
}

void setList(std::vector<ScriptedProcess> list)
{
    processes([&](auto &script) { script.list = std::move(list); });
}

} // namespace

class ProcessSamplerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        scriptedPlatform() = {};
        scriptedPlatform().tickCount = 5000;
        processes([](auto &script) { script = {}; });
        setList({processOf(10)});
    }

    void recordsStartAtZero()
    {
        const ProcessRow row{};
        QCOMPARE(row.pid, 0U);
        QCOMPARE(row.cpuPercent + row.memoryMB + row.diskKBps, 0.0);
        QVERIFY(row.name.isEmpty() && row.status.isEmpty());
        const ProcessSnapshot snapshot;
        QVERIFY(snapshot.rows.isEmpty());
        QCOMPARE(snapshot.cpuPercent + snapshot.diskKBps, 0.0);
        QCOMPARE(snapshot.memUsedBytes + snapshot.memTotalBytes + snapshot.uptimeSeconds, 0ULL);
    }

    void joinsFileTimes()
    {
        struct Halves
        {
            quint32 dwLowDateTime;
            quint32 dwHighDateTime;
        };
        const ProcessSampler sampler;
        QCOMPARE(sampler.fileTimeToU64(Halves{1, 0}), 1ULL);
        QCOMPARE(sampler.fileTimeToU64(Halves{0, 1}), 1ULL << 32);
        QCOMPARE(sampler.fileTimeToU64(Halves{0xffffffff, 0xffffffff}),
                 std::numeric_limits<quint64>::max());
    }

    void interval_data()
    {
        QTest::addColumn<int>("wanted");
        QTest::addColumn<int>("interval");
        QTest::newRow("too fast") << 100 << 250;
        QTest::newRow("nothing") << 0 << 250;
        QTest::newRow("negative") << -5 << 250;
        QTest::newRow("just under") << 249 << 250;
        QTest::newRow("floor") << 250 << 250;
        QTest::newRow("just over") << 251 << 251;
        QTest::newRow("two seconds") << 2000 << 2000;
    }
    void interval()
    {
        QFETCH(int, wanted);
        QFETCH(int, interval);
        ProcessSampler sampler;
        auto *timer = sampler.findChild<QTimer *>();
        QVERIFY(!timer->isActive());
        QSignalSpy readings(&sampler, &ProcessSampler::snapshotReady);
        sampler.start(wanted);
        QCOMPARE(readings.count(), 1); // at once
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), interval);
        QVERIFY(!timer->isSingleShot());
        sampler.stop();
        QVERIFY(!timer->isActive());
        QCOMPARE(readings.count(), 1);
    }

    void slotsCanBeCalledByName()
    {
        ProcessSampler sampler;
        QVERIFY(
            QMetaObject::invokeMethod(&sampler, "start", Qt::QueuedConnection, Q_ARG(int, 3000)));
        QTRY_COMPARE(sampler.findChild<QTimer *>()->interval(), 3000);
        QVERIFY(QMetaObject::invokeMethod(&sampler, "stop", Qt::QueuedConnection));
        QTRY_VERIFY(!sampler.findChild<QTimer *>()->isActive());
    }

    void timerKeepsReading()
    {
        ProcessSampler sampler;
        QSignalSpy readings(&sampler, &ProcessSampler::snapshotReady);
        sampler.start(250);
        QTRY_VERIFY_WITH_TIMEOUT(readings.count() >= 3, 5000);
    }

    // What a second reading says of the machine's load, given the differences to the first.
    void load_data()
    {
        QTest::addColumn<quint64>("idle");
        QTest::addColumn<quint64>("kernel"); // idle included
        QTest::addColumn<quint64>("user");
        QTest::addColumn<double>("percent");
        constexpr quint64 kMinus = std::numeric_limits<quint64>::max(); // -1
        QTest::newRow("half") << 50ULL << 70ULL << 30ULL << 50.0;
        QTest::newRow("nothing but idle") << 100ULL << 100ULL << 0ULL << 0.0;
        QTest::newRow("all busy") << 0ULL << 60ULL << 40ULL << 100.0;
        QTest::newRow("a third") << 2ULL << 2ULL << 1ULL << 100.0 / 3.0;
        QTest::newRow("no time has passed") << 0ULL << 0ULL << 0ULL << 0.0;
        QTest::newRow("more idle than time") << 200ULL << 60ULL << 40ULL << 0.0;
        QTest::newRow("idle runs backwards") << kMinus << 60ULL << 40ULL << 0.0;
        // The difference wraps around to nearly everything, and is kept within the scale.
        QTest::newRow("kernel runs backwards") << 0ULL << kMinus - 9 << 0ULL << 100.0;
    }
    void load()
    {
        QFETCH(quint64, idle);
        QFETCH(quint64, kernel);
        QFETCH(quint64, user);
        QFETCH(double, percent);
        Readings readings;
        const SystemTimes before{1000, 3000, 2000};
        processes([&](auto &script) { script.systemTimes = before; });
        QCOMPARE(readings.next().cpuPercent, 0.0);
        processes([&](auto &script) {
            script.systemTimes =
                SystemTimes{before.idle + idle, before.kernel + kernel, before.user + user};
        });
        QCOMPARE(readings.next().cpuPercent, percent);
        QVERIFY(readings.last.cpuPercent <= 100.0);
    }

    void loadIsMeasuredAgainstTheLastSuccess()
    {
        Readings readings;
        processes([](auto &script) { script.systemTimes = SystemTimes{1000, 3000, 2000}; });
        readings.next();
        processes([](auto &script) { script.systemTimes = std::nullopt; });
        QCOMPARE(readings.next().cpuPercent, 0.0);
        processes([](auto &script) { script.systemTimes = SystemTimes{1010, 3020, 2020}; });
        QCOMPARE(readings.next().cpuPercent, 75.0);
    }

    void loadNeedsAllThreeTimes_data()
    {
        QTest::addColumn<quint64>("idle");
        QTest::addColumn<quint64>("kernel");
        QTest::addColumn<quint64>("user");
        QTest::newRow("no idle") << 0ULL << 5ULL << 5ULL;
        QTest::newRow("no kernel") << 5ULL << 0ULL << 5ULL;
        QTest::newRow("no user") << 5ULL << 5ULL << 0ULL;
    }
    void loadNeedsAllThreeTimes()
    {
        QFETCH(quint64, idle);
        QFETCH(quint64, kernel);
        QFETCH(quint64, user);
        Readings readings;
        processes([&](auto &script) { script.systemTimes = SystemTimes{idle, kernel, user}; });
        readings.next();
        processes([](auto &script) { script.systemTimes = SystemTimes{10, 1000, 1000}; });
        QCOMPARE(readings.next().cpuPercent, 0.0);
        processes([](auto &script) { script.systemTimes = SystemTimes{10, 1500, 1500}; });
        QCOMPARE(readings.next().cpuPercent, 100.0); // the middle one was kept
    }

    void memoryAndUptime()
    {
        Readings readings;
        scriptedPlatform().memory = platform::MemoryStatus{1000, 300, 70};
        scriptedPlatform().tickCount = 90'061'999;
        QCOMPARE(readings.next().memUsedBytes, 700ULL);
        QCOMPARE(readings.last.memTotalBytes, 1000ULL);
        QCOMPARE(readings.last.uptimeSeconds, 90'061ULL);
        scriptedPlatform().memory = std::nullopt;
        QCOMPARE(readings.next().memUsedBytes, 0ULL);
        QCOMPARE(readings.last.memTotalBytes, 0ULL);
        QCOMPARE(readings.last.rows.size(), 1);
    }

    void firstReadingHasNoRates()
    {
        Readings readings;
        readings.next();
        const ProcessRow &row = readings.last.rows.at(0);
        QCOMPARE(row.pid, 10U);
        QCOMPARE(row.name, QStringLiteral("one"));
        QCOMPARE(row.status, QStringLiteral("Running"));
        QCOMPARE(row.memoryMB, 1.0);
        QCOMPARE(row.cpuPercent, 0.0);
        QCOMPARE(row.diskKBps, 0.0);
        QCOMPARE(row.created, 77ULL);
        QCOMPARE(readings.last.diskKBps, 0.0);
    }

    // The rates of a second reading, given what passed since the first.
    void rates_data()
    {
        QTest::addColumn<quint64>("elapsedMs");
        QTest::addColumn<quint64>("cpu");
        QTest::addColumn<quint64>("io");
        QTest::addColumn<double>("cpuPercent");
        QTest::addColumn<double>("diskKBps");
        constexpr quint64 kMinus = std::numeric_limits<quint64>::max(); // -1
        QTest::newRow("one core") << 1000ULL << kSecond << 1024ULL << 100.0 << 1.0;
        QTest::newRow("four cores") << 2000ULL << 8 * kSecond << 0ULL << 400.0 << 0.0;
        QTest::newRow("idle") << 1000ULL << 0ULL << 0ULL << 0.0 << 0.0;
        QTest::newRow("short") << 1ULL << 5000ULL << 1ULL << 50.0 << 0.9765625;
        QTest::newRow("the clock stands") << 0ULL << kSecond << 4096ULL << 0.0 << 0.0;
        QTest::newRow("counts run backwards")
            << 1000ULL << kMinus << kMinus - 1023 << 0.0 << 18014398509481983.0;
    }
    void rates()
    {
        QFETCH(quint64, elapsedMs);
        QFETCH(quint64, cpu);
        QFETCH(quint64, io);
        QFETCH(double, cpuPercent);
        QFETCH(double, diskKBps);
        Readings readings;
        readings.next();
        ScriptedProcess process = processOf(10);
        process.times->user += cpu;
        *process.transferredBytes += io;
        setList({process});
        scriptedPlatform().tickCount += elapsedMs;
        readings.next();
        QCOMPARE(readings.last.rows.at(0).cpuPercent, cpuPercent);
        QCOMPARE(readings.last.rows.at(0).diskKBps, diskKBps);
        QCOMPARE(readings.last.diskKBps, diskKBps);
    }

    void ratesAfterAStandingClockCoverOnlyTheLastInterval()
    {
        Readings readings;
        readings.next();
        ScriptedProcess process = processOf(10);
        process.times->user += kSecond;
        setList({process});
        readings.next(); // the clock stands, yet the count is taken
        process.times->user += kSecond / 2;
        setList({process});
        scriptedPlatform().tickCount += 1000;
        QCOMPARE(readings.next().rows.at(0).cpuPercent, 50.0);
    }

    void cpuNeedsAnEarlierCountAboveZero()
    {
        ScriptedProcess process = processOf(10);
        process.times = ProcessTimes{};
        setList({process});
        Readings readings;
        readings.next();
        scriptedPlatform().tickCount += 1000;
        process.times->kernel = kSecond;
        setList({process});
        QCOMPARE(readings.next().rows.at(0).cpuPercent, 0.0);
    }

    void diskCountsFromAnEarlierZero()
    {
        ScriptedProcess process = processOf(10);
        process.transferredBytes = 0;
        setList({process});
        Readings readings;
        readings.next();
        scriptedPlatform().tickCount += 1000;
        process.transferredBytes = 2048;
        setList({process});
        QCOMPARE(readings.next().rows.at(0).diskKBps, 2.0);
    }

    void diskIsSummedOverAllRows()
    {
        setList({processOf(1), processOf(2), processOf(3)});
        Readings readings;
        readings.next();
        auto list = std::vector{processOf(1), processOf(2), processOf(3)};
        *list[0].transferredBytes += 1024;
        *list[2].transferredBytes += 3072;
        setList(list);
        scriptedPlatform().tickCount += 500;
        readings.next();
        QCOMPARE(readings.last.rows.at(0).diskKBps, 2.0);
        QCOMPARE(readings.last.rows.at(1).diskKBps, 0.0);
        QCOMPARE(readings.last.rows.at(2).diskKBps, 6.0);
        QCOMPARE(readings.last.diskKBps, 8.0);
    }

    // The next process under the identifier meets the counts of the one before.
    void historyOutlivesItsProcess()
    {
        Readings readings;
        readings.next();
        setList({});
        scriptedPlatform().tickCount += 1000;
        readings.next();
        ScriptedProcess other = processOf(10, "other");
        other.times->user += kSecond;
        *other.transferredBytes += 1024;
        setList({other});
        scriptedPlatform().tickCount += 1000;
        readings.next();
        // The pass without any process did not take the time.
        QCOMPARE(readings.last.rows.at(0).cpuPercent, 50.0);
        QCOMPARE(readings.last.rows.at(0).diskKBps, 0.5);
    }

    void eachQuestionMayFailAlone_data()
    {
        QTest::addColumn<bool>("memory");
        QTest::addColumn<bool>("times");
        QTest::addColumn<bool>("disk");
        QTest::newRow("memory") << false << true << true;
        QTest::newRow("times") << true << false << true;
        QTest::newRow("disk") << true << true << false;
        QTest::newRow("all") << false << false << false;
    }
    void eachQuestionMayFailAlone()
    {
        QFETCH(bool, memory);
        QFETCH(bool, times);
        QFETCH(bool, disk);
        Readings readings;
        readings.next();
        ScriptedProcess process = processOf(10);
        process.times->user += kSecond;
        *process.transferredBytes += 1024;
        const ScriptedProcess whole = process;
        process.residentBytes = memory ? process.residentBytes : std::nullopt;
        process.times = times ? process.times : std::nullopt;
        process.transferredBytes = disk ? process.transferredBytes : std::nullopt;
        setList({process});
        scriptedPlatform().tickCount += 1000;
        readings.next();
        const ProcessRow row = readings.last.rows.at(0);
        QCOMPARE(row.memoryMB, memory ? 1.0 : 0.0);
        QCOMPARE(row.cpuPercent, times ? 100.0 : 0.0);
        QCOMPARE(row.diskKBps, disk ? 1.0 : 0.0);
        QCOMPARE(row.status, QStringLiteral("Running"));

        // What failed left the history alone.
        setList({whole});
        scriptedPlatform().tickCount += 1000;
        readings.next();
        QCOMPARE(readings.last.rows.at(0).cpuPercent, times ? 0.0 : 100.0);
        QCOMPARE(readings.last.rows.at(0).diskKBps, disk ? 0.0 : 1.0);
    }

    void restrictedProcessIsListedWithZeros()
    {
        ScriptedProcess process = processOf(10);
        process.opens = false;
        setList({process, processOf(11)});
        Readings readings;
        readings.next();
        scriptedPlatform().tickCount += 1000;
        readings.next();
        const ProcessRow &row = readings.last.rows.at(0);
        QCOMPARE(row.status, QStringLiteral("Restricted"));
        QCOMPARE(row.pid, 10U);
        QCOMPARE(row.name, QStringLiteral("one"));
        QCOMPARE(row.cpuPercent + row.memoryMB + row.diskKBps, 0.0);
        QCOMPARE(readings.last.rows.at(1).status, QStringLiteral("Running"));
    }

    void restrictedProcessLeavesNoHistory()
    {
        ScriptedProcess process = processOf(10);
        process.opens = false;
        setList({process});
        Readings readings;
        readings.next();
        scriptedPlatform().tickCount += 1000;
        process.opens = true;
        *process.transferredBytes += 1024;
        setList({process});
        readings.next();
        QCOMPARE(readings.last.rows.at(0).cpuPercent, 0.0);
        QCOMPARE(readings.last.rows.at(0).diskKBps, 0.0);
    }

    // Not even of those that its own first reading does not come across.
    void startForgetsAllHistory()
    {
        setList({processOf(10), processOf(11)});
        Readings readings;
        readings.next();
        setList({processOf(11)});
        scriptedPlatform().tickCount += 1000;
        readings.sampler.start(60'000);
        ScriptedProcess returned = processOf(10);
        returned.times->user += kSecond;
        *returned.transferredBytes += 1024;
        setList({returned});
        scriptedPlatform().tickCount += 1000;
        readings.next();
        QCOMPARE(readings.last.rows.at(0).cpuPercent, 0.0);
        QCOMPARE(readings.last.rows.at(0).diskKBps, 0.0);
        readings.sampler.stop();
    }

    void withoutAListThereIsStillAReading_data()
    {
        QTest::addColumn<bool>("listSucceeds");
        QTest::newRow("no list") << false;
        QTest::newRow("empty list") << true;
    }
    void withoutAListThereIsStillAReading()
    {
        QFETCH(bool, listSucceeds);
        Readings readings;
        readings.next();
        processes([&](auto &script) {
            script.listSucceeds = listSucceeds;
            script.list.clear();
            script.systemTimes = SystemTimes{1000, 2050, 1050};
        });
        scriptedPlatform().tickCount = 7000;
        readings.next();
        QCOMPARE(readings.count, 2);
        QVERIFY(readings.last.rows.isEmpty());
        QCOMPARE(readings.last.cpuPercent, 100.0);
        QCOMPARE(readings.last.uptimeSeconds, 7ULL);
        QVERIFY(readings.last.memTotalBytes > 0);
    }

    void oneSignalEvenWhenTheReadingBreaks()
    {
        Readings readings;
        processes([](auto &script) {
            script.duringReading = [] {
                throw std::runtime_error("broken");
            };
        });
        readings.next();
        QCOMPARE(readings.count, 1);
        QVERIFY(readings.last.memTotalBytes > 0);
        processes([](auto &script) { script.duringReading = nullptr; });
        QCOMPARE(readings.next().rows.size(), 1);
        QCOMPARE(readings.count, 2);
    }

    void startForgetsTheHistory()
    {
        Readings readings;
        readings.next();
        ScriptedProcess process = processOf(10);
        process.times->user += kSecond;
        *process.transferredBytes += 1024;
        setList({process});
        processes([](auto &script) { script.systemTimes = SystemTimes{1000, 2500, 1500}; });
        scriptedPlatform().tickCount += 1000;
        readings.sampler.start(1000);
        QCOMPARE(readings.last.cpuPercent, 0.0);
        QCOMPARE(readings.last.rows.at(0).cpuPercent, 0.0);
        QCOMPARE(readings.last.rows.at(0).diskKBps, 0.0);
        readings.sampler.stop();
        process.times->user += kSecond;
        setList({process});
        scriptedPlatform().tickCount += 1000;
        QCOMPARE(readings.next().rows.at(0).cpuPercent, 100.0); // stop() has kept it
    }

    void rowsComeInTheOrderOfTheList()
    {
        setList(
            {processOf(30, "c"), processOf(10, "a"), processOf(20, "b"), processOf(10, "again")});
        Readings readings;
        readings.next();
        QList<quint32> ids;
        for (const ProcessRow &row : std::as_const(readings.last.rows)) {
            ids.append(row.pid);
        }
        QCOMPARE(ids, (QList<quint32>{30, 10, 20, 10}));
    }

    void hundredThousandProcesses()
    {
        constexpr quint32 kMany = 100'000;
        std::vector<ScriptedProcess> list;
        for (quint32 i = 0; i < kMany; ++i) {
            list.push_back(processOf(i + 1, "process " + std::to_string(i)));
        }
        setList(list);
        Readings readings;
        readings.next();
        for (auto &process : list) {
            process.times->user += kSecond / 10;
        }
        setList(std::move(list));
        scriptedPlatform().tickCount += 1000;
        readings.next();
        QCOMPARE(readings.last.rows.size(), static_cast<qsizetype>(kMany));
        for (const ProcessRow &row : std::as_const(readings.last.rows)) {
            QCOMPARE(row.cpuPercent, 10.0);
        }
    }

    void names_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QByteArray("explorer.exe") << QStringLiteral("explorer.exe");
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("markup") << QByteArray("<b>x</b>") << QStringLiteral("<b>x</b>");
        QTest::newRow("letters") << QByteArray("gr\xc3\xb6\xc3\x9f"
                                               "e")
                                 << QString::fromUtf8("gr\xc3\xb6\xc3\x9f"
                                                      "e");
        QTest::newRow("line breaks")
            << QByteArray("a\nb\r\tc") << QString::fromUtf8("a\uFFFDb\uFFFD\uFFFDc");
        QTest::newRow("right to left") << QByteArray("a\xe2\x80\xae"
                                                     "b")
                                       << QString::fromUtf8("a\uFFFDb");
        QTest::newRow("paragraph") << QByteArray("a\xe2\x80\xa9"
                                                 "b")
                                   << QString::fromUtf8("a\uFFFDb");
        QTest::newRow("invalid") << QByteArray("a\xff") << QString::fromUtf8("a\uFFFD");
        QTest::newRow("only a byte order mark")
            << QByteArray("\xef\xbb\xbf") << QString::fromUtf8("\uFFFD");
        QTest::newRow("zero inside") << QByteArray("a\0b", 3) << QString::fromUtf8("a\uFFFDb");
        QTest::newRow("blanks stay") << QByteArray("two words") << QStringLiteral("two words");
    }
    void names()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        QCOMPARE(processNameFrom({bytes.constData(), static_cast<std::size_t>(bytes.size())}),
                 name);
    }
};

QTEST_GUILESS_MAIN(ProcessSamplerTest)
#include "ProcessSamplerTest.moc"
