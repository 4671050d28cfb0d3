// The network commands through the real window, with fake programs on PATH, and the status panel.
#include "app/MainWindow.h"
#include "app/WindowProbes.h"
#include "fakes/ScriptedPlatform.h"
#include "ui/GlassCard.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLayout>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

using probes::Answer;
using probes::Answering;
using probes::ToastTexts;

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

platform::CommandLine helper(std::vector<std::string> arguments)
{
    return {"ipconfig", std::move(arguments)};
}

} // namespace

class NetworkTest : public QObject
{
    Q_OBJECT

private slots:
    // Where it is whatever the current folder will be.
    void initTestCase()
    {
        helperFile = QFileInfo(text(VELTRA_COMMAND_HELPER)).absoluteFilePath();
        startFolder = QDir::currentPath();
    }

    void init()
    {
        fakes::scriptedPlatform() = {};
        folder = std::make_unique<QTemporaryDir>();
        oldPath = qgetenv("PATH");
        qputenv("PATH", QDir::toNativeSeparators(folder->path()).toLocal8Bit());
        window = std::make_unique<MainWindow>(nullptr);
        window->show();
    }

    void cleanup()
    {
        probes::closeToasts();
        window.reset();
        QDir::setCurrent(startFolder);
        qputenv("PATH", oldPath);
    }

    void outcomes_data()
    {
        QTest::addColumn<QString>("exitCode");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("state");
        QTest::newRow("0") << text("0") << text("Done") << text("Done [OK]");
        QTest::newRow("1") << text("1") << text("Failed") << text("Failed [X]");
        QTest::newRow("255") << text("255") << text("Failed") << text("Failed [X]");
    }

    void outcomes()
    {
        QFETCH(QString, exitCode);
        QFETCH(QString, outcome);
        QFETCH(QString, state);
        plant(text("ipconfig"));
        scriptFlush({"exit", exitCode.toStdString()});
        window->network.flushDns->click();
        QCOMPARE(lines(), (QStringList{text("Flush DNS: Running...")}));
        const ToastTexts started{
            text("Flush DNS"), text("Running ipconfig exit ") + exitCode, text("Running...")};
        QCOMPARE(probes::toasts(), QList<ToastTexts>{started});
        QTRY_COMPARE(lines().size(), 2);
        QCOMPARE(lines().at(1), text("Flush DNS: ") + outcome);
        const QList<ToastTexts> both{started, {text("Flush DNS"), outcome, state}};
        QTRY_COMPARE(probes::toasts(), both);
        QTRY_VERIFY(window->findChildren<QProcess *>().isEmpty());
        QCOMPARE(lines().size(), 2); // one outcome
    }

    void startTexts_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("startText");
        QTest::newRow("flush") << 2 << text("Flush DNS") << text("Running ipconfig /flushdns");
        QTest::newRow("renew") << 8 << text("Renew IP") << text("Running ipconfig /renew");
        QTest::newRow("reset") << 9 << text("Reset Winsock") << text("Running netsh winsock reset");
    }

    // None of the programs exists.
    void startTexts()
    {
        QFETCH(int, button);
        QFETCH(QString, title);
        QFETCH(QString, startText);
        const Answering yes(Answer::Yes);
        window->cleaner.buttons.at(static_cast<std::size_t>(button))->click();
        QTRY_COMPARE(
            lines(),
            (QStringList{title + text(": Running..."), title + text(": Failed to start.")}));
        const QList<ToastTexts> expected{{title, startText, text("Running...")},
                                         {title, text("Failed to start."), text("Failed [X]")}};
        QTRY_COMPARE(probes::toasts(), expected);
        QCOMPARE(yes.asked, button == 9 ? 1 : 0);
        QTRY_VERIFY(window->findChildren<QProcess *>().isEmpty());
    }

    void platformsOwnCommandIsShown()
    {
        plant(text("resolvectl"));
        fakes::scriptedPlatform().commands[platform::NetworkTask::FlushDns] = {"resolvectl",
                                                                               {"exit", "0"}};
        window->onFlushDns();
        QCOMPARE(probes::toasts().constFirst().text, text("Running resolvectl exit 0"));
        QTRY_COMPARE(lines().constLast(), text("Flush DNS: Done"));
    }

    void winsockAsksAndRecommendsARestart()
    {
        plant(text("netsh"));
        fakes::scriptedPlatform().commands[platform::NetworkTask::ResetSockets] = {"netsh",
                                                                                   {"exit", "0"}};
        const Answering yes(Answer::Yes);
        window->network.reset->click();
        QCOMPARE(yes.title, text("Reset Winsock"));
        QCOMPARE(yes.question, text("Reset Winsock now?\nThis may require restart."));
        QCOMPARE(yes.buttons, QMessageBox::Yes | QMessageBox::No);
        QTRY_COMPARE(lines().constLast(), text("Reset Winsock: Done (restart recommended)"));
        QTRY_COMPARE(probes::toasts().constLast(),
                     (ToastTexts{text("Reset Winsock"),
                                 text("Done (restart recommended)"),
                                 text("Done [OK]")}));
    }

    void failedWinsockHasNoHint()
    {
        plant(text("netsh"));
        fakes::scriptedPlatform().commands[platform::NetworkTask::ResetSockets] = {"netsh",
                                                                                   {"exit", "1"}};
        const Answering yes(Answer::Yes);
        window->onResetWinsock();
        QTRY_COMPARE(lines().constLast(), text("Reset Winsock: Failed"));
    }

    void winsockDeclined_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::newRow("No") << Answer::No;
        QTest::newRow("Escape") << Answer::Escape;
        QTest::newRow("closed") << Answer::Close;
    }

    void winsockDeclined()
    {
        QFETCH(Answer, answer);
        const Answering answering(answer);
        window->onResetWinsock();
        QCOMPARE(answering.asked, 1);
        QVERIFY(lines().isEmpty());
        QVERIFY(probes::toasts().isEmpty());
    }

    void crashIsReportedOnce()
    {
        plant(text("ipconfig"));
        scriptFlush({"sleep", "60000", "never"});
        window->onFlushDns();
        auto *process = window->findChild<QProcess *>();
        QVERIFY(process != nullptr);
        QTRY_COMPARE(process->state(), QProcess::Running);
        process->kill();
        QTRY_COMPARE(lines().size(), 2);
        QCOMPARE(lines().at(1),
                 text("Flush DNS: Failed to start.")); // kept wording: an error came first
        QTRY_VERIFY(window->findChildren<QProcess *>().isEmpty());
        QCOMPARE(lines().size(), 2);
    }

    void twoAtOnce()
    {
        plant(text("ipconfig"));
        scriptFlush({"exit", "0"});
        window->cleaner.buttons[2]->click();
        window->network.flushDns->click();
        QCOMPARE(window->findChildren<QProcess *>().size(), 2);
        QTRY_COMPARE(lines().size(), 4);
        QCOMPARE(lines().count(text("Flush DNS: Running...")), 2);
        QCOMPARE(lines().count(text("Flush DNS: Done")), 2);
        QTRY_COMPARE(probes::toasts().size(), 4);
    }

    void plantedProgramsAreNotRun()
    {
        const QString trap = folder->filePath(text("trap"));
        QVERIFY(QDir().mkpath(trap));
        plant(text("trap/ipconfig"));
        QVERIFY(QDir::setCurrent(trap));
        const QString beside =
            QCoreApplication::applicationDirPath() + text("/ipconfig") + suffix();
        QVERIFY(QFile::copy(helperFile, beside));
        window->onFlushDns();
        QTRY_COMPARE(lines().constLast(), text("Flush DNS: Failed to start."));
        QVERIFY(QFile::remove(beside));
        QVERIFY(QDir::setCurrent(startFolder));
        QVERIFY(!QFile::exists(trap + text("/ipconfig") + suffix() + text(".ran")));
    }

    // A complete path is no search.
    void completePathIsRun()
    {
        const QString mark = folder->filePath(text("mark"));
        window->runCommandAsync(
            text("Title"), text("Text"), helperFile, {text("sleep"), text("0"), mark}, false);
        QTRY_COMPARE(lines(), QStringList({text("Title: Running..."), text("Title: Done")}));
        QVERIFY(QFile::exists(mark));
        const QString missing = folder->filePath(text("missing"));
        window->runCommandAsync(text("Title"), text("Text"), missing, {}, false);
        QTRY_COMPARE(lines().constLast(), text("Title: Failed to start."));
    }

    // The window does not wait for it, and does not break its work off.
    void closedWhileACommandRuns()
    {
        plant(text("ipconfig"));
        const QString mark = folder->filePath(text("mark"));
        scriptFlush({"sleep", "1200", mark.toStdString()});
        window->onFlushDns();
        QTRY_COMPARE(window->findChild<QProcess *>()->state(), QProcess::Running);
        QElapsedTimer time;
        time.start();
        window.reset();
        QVERIFY(time.elapsed() < 1000);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark), 10000);
        window = std::make_unique<MainWindow>(nullptr);
    }

    void panelIsBuiltAsDesigned()
    {
        const auto &page = window->network;
        QCOMPARE(page.ping->text(), text("Ping: -- ms"));
        QCOMPARE(page.throughput->text(), text("Download/Upload: -- / --"));
        QCOMPARE(page.adapter->text(), text("Adapter: Detecting..."));
        QCOMPARE(page.flushDns->text(), text("Flush DNS"));
        QCOMPARE(page.reset->text(), text("Reset Network"));
        QCOMPARE(window->timers.networkStatus->interval(), 1000);
        QVERIFY(window->timers.networkStatus->isActive());
        const auto *card = page.page->findChild<GlassCard *>();
        QCOMPARE(card->layout()->itemAt(2)->widget(), page.ping);
        QCOMPARE(card->layout()->itemAt(3)->widget(), page.throughput);
        QCOMPARE(card->layout()->itemAt(4)->widget(), page.adapter);
    }

    void readingsComeAfterASecond()
    {
        QElapsedTimer time;
        time.start();
        const auto created = std::make_unique<MainWindow>(nullptr);
        QTRY_VERIFY(created->network.ping->text() != text("Ping: -- ms"));
        QVERIFY(time.elapsed() >= 950); // a timer may be early by 5 %
        QTRY_VERIFY(window->network.ping->text() != text("Ping: -- ms")); // shown or not
        QCOMPARE(window->network.adapter->text(), text("Adapter: Ethernet / IPv4"));
    }

    void readingsStayInRange()
    {
        const QRegularExpression ping(text("^Ping: (\\d+) ms$"));
        const QRegularExpression rates(
            text("^Download/Upload: (\\d+\\.\\d) Mbps / (\\d+\\.\\d) Mbps$"));
        int smallest = 1000;
        int largest = 0;
        for (int i = 0; i < 3000; ++i) {
            window->refreshNetworkStatus();
            const auto one = ping.match(window->network.ping->text());
            const auto two = rates.match(window->network.throughput->text());
            QVERIFY(one.hasMatch() && two.hasMatch());
            smallest = std::min(smallest, one.captured(1).toInt());
            largest = std::max(largest, one.captured(1).toInt());
            QVERIFY(two.captured(1).toDouble() >= 1.5 && two.captured(1).toDouble() <= 49.5);
            QVERIFY(two.captured(2).toDouble() >= 0.4 && two.captured(2).toDouble() <= 14.4);
        }
        QCOMPARE(smallest, 18);
        QCOMPARE(largest, 59);
    }

private:
    static QString suffix()
    {
        return QFileInfo(text(VELTRA_COMMAND_HELPER)).suffix() == text("exe") ? text(".exe")
                                                                              : QString();
    }

    void plant(const QString &name)
    {
        QVERIFY(QFile::copy(helperFile, folder->filePath(name + suffix())));
    }

    static void scriptFlush(std::vector<std::string> arguments)
    {
        fakes::scriptedPlatform().commands[platform::NetworkTask::FlushDns] =
            helper(std::move(arguments));
    }

    QStringList lines() const { return probes::logLines(window->historyLogView).mid(1); }

    std::unique_ptr<MainWindow> window;
    std::unique_ptr<QTemporaryDir> folder;
    QByteArray oldPath;
    QString helperFile;
    QString startFolder;
};

QTEST_MAIN(NetworkTest)
#include "NetworkTest.moc"
