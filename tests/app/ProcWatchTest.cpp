// The "Proc Watch" page as part of the window.
#include "app/MainWindow.h"
#include "app/WindowProbes.h"
#include "fakes/ScriptedPlatform.h"
#include "fakes/ScriptedProcesses.h"
#include "monitor/ProcessWatcherWidget.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>
#include <QThread>
#include <memory>

using fakes::processes;

class ProcWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        processes([](auto &script) {
            script = {};
            fakes::ScriptedProcess process;
            process.id = 42;
            process.name = "<b>victim</b>";
            process.times->created = 5;
            script.list = {process};
        });
        window = std::make_unique<MainWindow>();
        window->show();
    }

    void cleanup()
    {
        probes::closeToasts();
        window.reset();
    }

    void endingATaskIsShownAndLogged()
    {
        auto *table = window->processWatcher->findChild<QTableWidget *>();
        window->onNavChanged(MainWindow::ProcWatchPage);
        QTRY_COMPARE_WITH_TIMEOUT(table->rowCount(), 1, 5000);
        QCOMPARE(table->item(0, 0)->text(), QStringLiteral("<b>victim</b>"));
        table->selectRow(0);
        probes::Answering answering(probes::Answer::Yes);
        window->processWatcher->findChild<QPushButton *>()->click();
        QCOMPARE(answering.question, QStringLiteral("End process \"<b>victim</b>\" (PID 42)?"));
        QVERIFY(processes([](auto &script) { return script.endRequests.at(0).reachedKill; }));
        const probes::ToastTexts expected{QStringLiteral("End Task"),
                                          QStringLiteral("Process terminated."),
                                          QStringLiteral("Done")};
        QVERIFY(probes::toasts().contains(expected));
        QCOMPARE(probes::logLines(window->activityLogView).last(),
                 QStringLiteral("End Task: Process terminated."));
    }

    void everyControlIsReachedInOrder()
    {
        window->onNavChanged(MainWindow::ProcWatchPage);
        window->activateWindow();
        const ProcessWatcherWidget *page = window->processWatcher;
        QList<QWidget *> order;
        for (QWidget *next = page->nextInFocusChain(); page->isAncestorOf(next);
             next = next->nextInFocusChain()) {
            if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisible()) {
                order.append(next);
                QVERIFY(!next->accessibleName().isEmpty()
                        || qobject_cast<QPushButton *>(next) != nullptr);
            }
        }
        QCOMPARE(order.size(), 4); // search, rate, button, table
        QCOMPARE(order.at(2), page->findChild<QPushButton *>());
        QCOMPARE(order.at(3), page->findChild<QTableWidget *>());
    }

    void closesDuringAReading()
    {
        processes([](auto &script) {
            script.duringReading = [] {
                QThread::msleep(400);
            };
        });
        QTRY_VERIFY_WITH_TIMEOUT(processes([](auto &script) { return script.passes > 1; }), 5000);
        QElapsedTimer timer;
        timer.start();
        window->close();
        window.reset();
        QVERIFY(timer.elapsed() < 1500);
    }

private:
    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(ProcWatchTest)
#include "ProcWatchTest.moc"
