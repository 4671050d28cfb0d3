// What escapes a handler ends in one line of the log, and the program goes on.
#include "app/Application.h"

#include "app/MainWindow.h"
#include "fakes/ScriptedPlatform.h"

#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QTextEdit>
#include <QThread>
#include <QTimer>
#include <stdexcept>

class ApplicationTest : public QObject
{
    Q_OBJECT

private slots:
    void throwingSlotIsReportedOnce()
    {
        QStringList lines;
        application()->setFailureReporter([&lines](const QString &line) { lines.append(line); });
        QPushButton button;
        int clicks = 0;
        connect(&button, &QPushButton::clicked, this, [&clicks] {
            ++clicks;
            throw std::runtime_error("the folder cannot be examined");
        });
        button.show();
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(lines, QStringList{QStringLiteral("the folder cannot be examined")});
        QTest::mouseClick(&button, Qt::LeftButton); // and it still works
        QCOMPARE(clicks, 2);
        QCOMPARE(lines.size(), 2);
        application()->setFailureReporter({});
    }

    void anythingElseThatIsThrown()
    {
        QStringList lines;
        application()->setFailureReporter([&lines](const QString &line) { lines.append(line); });
        QTimer::singleShot(0, this, [] { throw 42; });
        QTRY_COMPARE(lines, QStringList{QStringLiteral("unknown failure")});
        application()->setFailureReporter({});
        QTimer::singleShot(0, this, [] { throw 43; }); // without a reporter: only survived
        QCoreApplication::processEvents();
    }

    void otherThreadsAreReportedOnThisOne()
    {
        QStringList lines;
        QThread *reportedOn = nullptr;
        application()->setFailureReporter([&](const QString &line) {
            lines.append(line);
            reportedOn = QThread::currentThread();
        });
        QThread thread;
        QObject worker;
        worker.moveToThread(&thread);
        thread.start();
        QSemaphore secondHandled;
        QTimer::singleShot(0, &worker, [] { throw std::runtime_error("the reading broke off"); });
        QTimer::singleShot(0, &worker, [&secondHandled] { secondHandled.release(); });
        QVERIFY(secondHandled.tryAcquire(1, kLongest)); // that thread's loop goes on
        QTRY_COMPARE(lines, QStringList{QStringLiteral("the reading broke off")});
        QCOMPARE(reportedOn, QThread::currentThread());
        thread.quit();
        QVERIFY(thread.wait(kLongest));
        application()->setFailureReporter({});
    }

    void theWindowSurvivesAThrowingTick()
    {
        fakes::scriptedPlatform() = {};
        MainWindow window;
        application()->setFailureReporter(
            [&window](const QString &what) { window.reportFailure(what); });
        fakes::scriptedPlatform().memoryThrows = "sensor on fire";
        window.show();
        QTRY_VERIFY(window.historyLogView->toPlainText().contains(
            QLatin1String("] Unexpected error: sensor on fire")));
        QCOMPARE(window.historyLogView->document()->blockCount(), 2);
        const int queries = fakes::scriptedPlatform().memoryQueries;
        QTRY_VERIFY(fakes::scriptedPlatform().memoryQueries > queries); // the next tick comes
        QCOMPARE(window.historyLogView->document()->blockCount(), 2);
        application()->setFailureReporter({});
    }

private:
    static constexpr int kLongest = 10'000; // ms

    static Application *application() { return qobject_cast<Application *>(qApp); }
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    ApplicationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ApplicationTest.moc"
