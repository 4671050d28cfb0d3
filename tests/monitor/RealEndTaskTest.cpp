// Ending real processes from the page, as a user does it.
#include "monitor/ProcessWatcherWidget.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kPatience = 15'000; // ms

int rowOf(const QTableWidget &table, qint64 pid)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, 1)->text() == QString::number(pid)) {
            return row;
        }
    }
    return -1;
}

// Says yes to the question, after doing something else first.
void answerYes(const std::function<void()> &before = {})
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, before] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) {
            return;
        }
        timer->deleteLater();
        if (before) {
            before();
        }
        box->button(QMessageBox::Yes)->click();
    });
    timer->start(5);
}

} // namespace

class RealEndTaskTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        child.start(QStringLiteral(VELTRA_LOAD_HELPER), {QStringLiteral("idle")});
        QVERIFY(child.waitForReadyRead());
        bystander.start(QStringLiteral(VELTRA_LOAD_HELPER), {QStringLiteral("idle")});
        QVERIFY(bystander.waitForReadyRead());
    }

    void cleanup()
    {
        for (QProcess *process : {&child, &bystander}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void endsTheSelectedProcessOnly()
    {
        ProcessWatcherWidget page(nullptr);
        auto *table = page.findChild<QTableWidget *>();
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(*table, child.processId()) >= 0, kPatience);
        table->selectRow(rowOf(*table, child.processId()));
        answerYes();
        page.findChild<QPushButton *>()->click();
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0).at(1).toString(), QStringLiteral("Process terminated."));
        QTRY_COMPARE_WITH_TIMEOUT(child.state(), QProcess::NotRunning, kPatience);
        QCOMPARE(bystander.state(), QProcess::Running);
#ifdef VELTRA_ON_WINDOWS
        QCOMPARE(child.exitCode(), 1);
#else
        QCOMPARE(child.exitStatus(), QProcess::CrashExit); // by a signal
#endif
    }

    void processThatEndedMeanwhile()
    {
        ProcessWatcherWidget page(nullptr);
        auto *table = page.findChild<QTableWidget *>();
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(*table, child.processId()) >= 0, kPatience);
        table->selectRow(rowOf(*table, child.processId()));
        answerYes([this] {
            child.kill();
            child.waitForFinished();
        });
        page.findChild<QPushButton *>()->click();
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0).at(1).toString(),
                 QStringLiteral("Permission denied or process unavailable."));
        QCOMPARE(bystander.state(), QProcess::Running);
    }

#ifndef VELTRA_ON_WINDOWS
    void protectedProcess()
    {
        ProcessWatcherWidget page(nullptr);
        auto *table = page.findChild<QTableWidget *>();
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(*table, 1) >= 0, kPatience);
        table->selectRow(rowOf(*table, 1));
        answerYes();
        page.findChild<QPushButton *>()->click();
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0).at(1).toString(),
                 QStringLiteral("Permission denied or process unavailable."));
    }
#endif

    void endedProcessIsGoneFromTheNextReading()
    {
        ProcessWatcherWidget page(nullptr);
        const auto *table = page.findChild<QTableWidget *>();
        const qint64 pid = child.processId();
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(*table, pid) >= 0, kPatience);
        child.kill();
        QVERIFY(child.waitForFinished());
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(*table, pid) < 0, kPatience);
        QVERIFY(rowOf(*table, bystander.processId()) >= 0);
    }

private:
    QProcess child;
    QProcess bystander;
};

QTEST_MAIN(RealEndTaskTest)
#include "RealEndTaskTest.moc"
