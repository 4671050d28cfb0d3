// The maintenance actions through the real window, on a scripted machine.
#include "app/Application.h"
#include "app/MainWindow.h"
#include "app/WindowProbes.h"
#include "core/OptimizerCore.h"
#include "fakes/ScriptedPlatform.h"
#include "notify/DesktopToastManager.h"
#include "ui/GlassCard.h"

#include <QGridLayout>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <memory>
#include <thread>

using platform::SystemPage;
using probes::Answer;
using probes::Answering;
using probes::ToastTexts;

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class SafeActionsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        fakes::scriptedPlatform().temporaryFolder = "/sandbox/temp";
        window = std::make_unique<MainWindow>(nullptr);
        window->show();
        application()->setFailureReporter(
            [this](const QString &what) { window->reportFailure(what); });
    }

    void cleanup()
    {
        application()->setFailureReporter({});
        probes::closeToasts();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void theCardIsBuiltAsDesigned()
    {
        const QStringList names{text("Clean Temp"),
                                text("Empty Recycle Bin"),
                                text("Flush DNS"),
                                text("RAM Free (Safe)"),
                                text("Open Storage Sense"),
                                text("Open Temp Folder"),
                                text("Open Prefetch Folder"),
                                text("Browser Cache Helper"),
                                text("Renew IP"),
                                text("Reset Winsock"),
                                text("Startup Apps Settings"),
                                text("Open Windows Security")};
        const auto *card = window->cleaner.page->findChild<GlassCard *>();
        QCOMPARE(card->findChild<QLabel *>(text("cardTitle"))->text(), text("Safe System Actions"));
        const auto *grid = card->findChild<QGridLayout *>();
        QCOMPARE(grid->horizontalSpacing(), 10);
        QCOMPARE(grid->verticalSpacing(), 10);
        for (int i = 0; i < 12; ++i) {
            const auto *placed =
                qobject_cast<QPushButton *>(grid->itemAtPosition(i / 3, i % 3)->widget());
            QCOMPARE(placed, window->cleaner.buttons.at(static_cast<std::size_t>(i)));
            QCOMPARE(placed->text(), names.at(i));
            QVERIFY(placed->property("hoverLift").toBool());
        }
        const QLayout *layout = card->layout();
        QCOMPARE(layout->itemAt(2)->layout(), grid);
        const auto *note = qobject_cast<QLabel *>(layout->itemAt(3)->widget());
        QCOMPARE(note->text(),
                 text("RAM Free is a safe helper. It does not increase physical RAM; it only "
                      "reports memory "
                      "pressure and suggests closing heavy apps."));
        QVERIFY(note->wordWrap());
        QCOMPARE(layout->itemAt(4)->widget(), window->actionProgress);
        QCOMPARE(window->actionProgress->minimum(), 0);
        QCOMPARE(window->actionProgress->maximum(), 100);
        QCOMPARE(window->actionProgress->value(), 0);
    }

    // The core announces to the window that came last, also when the one before it goes later.
    void announcementsOutliveAnEarlierWindow()
    {
        auto later = std::make_unique<MainWindow>(nullptr);
        window = std::move(later);
        OptimizerCore::emptyRecycleBin();
        QTRY_COMPARE(probes::toasts().size(), 2);
        window.reset();
        OptimizerCore::emptyRecycleBin(); // nobody listens
        window = std::make_unique<MainWindow>(nullptr);
        QCoreApplication::processEvents();
        QCOMPARE(probes::toasts().size(), 0);
    }

    void everythingOnThePageFits()
    {
        window->onNavChanged(MainWindow::CleanerPage);
        QCoreApplication::processEvents();
        for (QPushButton *button : window->cleaner.buttons) {
            QVERIFY(button->width() >= button->sizeHint().width());
        }
        QVERIFY(window->activityLogView->height() >= 72);
        const auto *page = qobject_cast<QScrollArea *>(window->cleaner.page);
        QVERIFY(page->verticalScrollBar()->maximum()
                <= 40); // none with usual fonts, little with large ones
    }

    void opening_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("success");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("toast");
        QTest::addColumn<QString>("line");
        const auto rows = [](int button,
                             const char *title,
                             const char *opened,
                             const char *notOpened,
                             const char *logged,
                             const char *loggedNot) {
            QTest::addRow("%s opens", title)
                << button << true << text(title) << text(opened) << text(logged);
            QTest::addRow("%s fails", title)
                << button << false << text(title) << text(notOpened) << text(loggedNot);
        };
        rows(4,
             "Storage Sense",
             "Opened Windows Storage Sense.",
             "Could not open Storage Sense.",
             "Opened Storage Sense.",
             "Failed opening Storage Sense.");
        rows(5,
             "Temp Folder",
             "Opened TEMP folder.",
             "Could not open TEMP folder.",
             "Opened TEMP folder.",
             "Failed opening TEMP folder.");
        rows(6,
             "Prefetch Folder",
             "Opened Prefetch folder.",
             "Could not open Prefetch folder.",
             "Opened Prefetch folder.",
             "Failed opening Prefetch folder.");
        rows(7,
             "Browser Cache Helper",
             "Opened browser clear-data pages.",
             "No supported browser page opened.",
             "Opened browser cache helper pages.",
             "Failed opening browser cache helper.");
        rows(10,
             "Startup Apps",
             "Opened Startup Apps settings.",
             "Could not open Startup Apps settings.",
             "Opened Startup Apps settings.",
             "Failed opening Startup Apps settings.");
        rows(11,
             "Windows Security",
             "Opened Windows Security.",
             "Could not open Windows Security.",
             "Opened Windows Security.",
             "Failed opening Windows Security.");
    }

    void opening()
    {
        QFETCH(int, button);
        QFETCH(bool, success);
        QFETCH(QString, title);
        QFETCH(QString, toast);
        QFETCH(QString, line);
        auto &machine = fakes::scriptedPlatform();
        machine.systemFolder = "/sandbox/system";
        machine.foldersOpen = success;
        if (success) {
            machine.availablePages = {SystemPage::Storage,
                                      SystemPage::StartupApps,
                                      SystemPage::Security,
                                      SystemPage::ChromeClearData};
        }
        const Answering yes(Answer::Yes);
        press(button);
        QCOMPARE(probes::logLines(window->historyLogView), (QStringList{text("Ready."), line}));
        const QList<ToastTexts> expected{
            {title, toast, success ? text("Done [OK]") : text("Failed [X]")}};
        QCOMPARE(probes::toasts(), expected);
        QCOMPARE(yes.asked, button == 6 ? 1 : 0); // only the prefetch folder asks
        QCOMPARE(window->actionProgress->value(), 0);
    }

    void prefetchAsks_data() { refusals(); }

    void prefetchAsks()
    {
        QFETCH(Answer, answer);
        fakes::scriptedPlatform().systemFolder = "/sandbox/system";
        const Answering answering(answer);
        press(6);
        QCOMPARE(answering.title, text("Open Prefetch"));
        QCOMPARE(answering.question, text("Open Prefetch folder only? No files will be deleted."));
        QCOMPARE(answering.buttons, QMessageBox::Yes | QMessageBox::No);
        QVERIFY(fakes::scriptedPlatform().openedFolders.empty());
        nothingHappened();
    }

    void cleanTempReportsInOrder()
    {
        auto &machine = fakes::scriptedPlatform();
        machine.cleaned["/sandbox/temp"] = {7, 1000};
        const Answering yes(Answer::Yes);
        press(0);
        QCOMPARE(yes.title, text("Confirm"));
        QCOMPARE(yes.question, text("Delete temp files?"));
        QCOMPARE(yes.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(window->actionProgress->value(), 100);
        QCOMPARE(probes::logLines(window->activityLogView),
                 (QStringList{text("Ready."),
                              text("Cleaning temp files..."),
                              text("Temp cleaned. Deleted 7 items.")}));
        QVERIFY(probes::toasts().isEmpty()); // only once the handler is through
        QCoreApplication::processEvents();
        const QList<ToastTexts> expected{
            {text("Clean Temp"), text("Running..."), text("Running...")},
            {text("Clean Temp"), text("Done"), text("Done [OK]")}};
        QTRY_COMPARE(probes::toasts(), expected);
        QTRY_COMPARE_WITH_TIMEOUT(probes::toasts(), expected.mid(0, 1), 6000); // "Running..." stays
    }

    void nothingToClean()
    {
        const Answering yes(Answer::Yes);
        press(0);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Temp cleaned. Deleted 0 items."));
        QCoreApplication::processEvents();
        QCOMPARE(probes::toasts().constLast().state, text("Done [OK]"));
    }

    void cleanTempDeclined_data() { refusals(); }

    void cleanTempDeclined()
    {
        QFETCH(Answer, answer);
        const Answering answering(answer);
        press(0);
        QCOMPARE(answering.asked, 1);
        QVERIFY(fakes::scriptedPlatform().cleanedFolders.empty());
        nothingHappened();
    }

    void whatCannotBeExaminedIsOneLine()
    {
        fakes::scriptedPlatform().cleaningThrows = "/sandbox/temp";
        const Answering yes(Answer::Yes);
        // Through the event dispatch, as a click of the user comes.
        QTest::mouseClick(window->cleaner.buttons[0], Qt::LeftButton);
        const QStringList lines = probes::logLines(window->historyLogView);
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(2).startsWith(text("Clean Temp: ")));
        QVERIFY(lines.at(2).contains(text("the folder cannot be examined")));
        QTRY_COMPARE(probes::toasts().size(), 2);
        const auto toasts = probes::toasts();
        QVERIFY(std::any_of(toasts.begin(), toasts.end(), [](const ToastTexts &toast) {
            return toast.title == text("Clean Temp") && toast.state == text("Failed [X]");
        }));
        // The program goes on, and the next failure is not taken for one of this action.
        press(3);
        QVERIFY(probes::logLines(window->historyLogView)
                    .constLast()
                    .startsWith(text("Memory pressure: ")));
        window->reportFailure(text("something else"));
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Unexpected error: something else"));
    }

    void recycleBin_data()
    {
        QTest::addColumn<bool>("success");
        QTest::newRow("emptied") << true;
        QTest::newRow("failed") << false;
    }

    void recycleBin()
    {
        QFETCH(bool, success);
        fakes::scriptedPlatform().binSucceeds = success;
        const Answering yes(Answer::Yes);
        press(1);
        QCOMPARE(yes.title, text("Confirm"));
        QCOMPARE(yes.question, text("Empty Recycle Bin?"));
        QCOMPARE(window->actionProgress->value(), 100);
        QCOMPARE(
            probes::logLines(window->historyLogView),
            (QStringList{text("Ready."),
                         text("Emptying Recycle Bin..."),
                         success ? text("Recycle Bin emptied.") : text("Recycle Bin failed.")}));
        QCoreApplication::processEvents();
        const QList<ToastTexts> expected{
            {text("Recycle Bin"), text("Running..."), text("Running...")},
            {text("Recycle Bin"),
             success ? text("Done") : text("Failed"),
             success ? text("Done [OK]") : text("Failed [X]")}};
        QTRY_COMPARE(probes::toasts(), expected);
    }

    void recycleBinDeclined_data() { refusals(); }

    void recycleBinDeclined()
    {
        QFETCH(Answer, answer);
        const Answering answering(answer);
        press(1);
        QCOMPARE(answering.asked, 1);
        nothingHappened();
    }

    void memoryPressure_data()
    {
        QTest::addColumn<bool>("known");
        QTest::addColumn<quint64>("total");
        QTest::addColumn<quint64>("available");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name,
                            bool known,
                            quint64 total,
                            quint64 available,
                            const char *message) {
            QTest::newRow(name) << known << total << available
                                << text("Memory pressure: ") + text(message)
                    + text(". Suggestion: close heavy background apps via Task Manager.");
        };
        constexpr quint64 kGiB = 1ULL << 30;
        row("usual", true, 16 * kGiB, 6 * kGiB, "63%% | Used 10.0 GB / 16.0 GB");
        row("all free", true, kGiB, kGiB, "63%% | Used 0 B / 1.0 GB");
        row("more free than there is", true, kGiB, 2 * kGiB, "63%% | Used 0 B / 1.0 GB");
        row("unknown", false, 0, 0, "0%% | Used 0 B / 0 B");
    }

    void memoryPressure()
    {
        QFETCH(bool, known);
        QFETCH(quint64, total);
        QFETCH(quint64, available);
        QFETCH(QString, message);
        if (known) {
            fakes::scriptedPlatform().memory = platform::MemoryStatus{total, available, 63};
        } else {
            fakes::scriptedPlatform().memory.reset();
        }
        press(3);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(), message);
        const QList<ToastTexts> expected{{text("RAM Free (Safe)"), message, text("Done [OK]")}};
        QCOMPARE(probes::toasts(), expected);
    }

    void withoutToastManager()
    {
        DesktopToastManager *manager = std::exchange(window->toastManager, nullptr);
        fakes::scriptedPlatform().availablePages = {SystemPage::Storage};
        press(4);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Opened Storage Sense."));
        window->onProcessWatcherToast(text("T"), text("X"), text("S"), true, true);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Opened Storage Sense."));
        window->onNotifPositionChanged(3);
        window->onNotifOffsetXChanged(3);
        window->onNotifOffsetYChanged(3);
        QVERIFY(probes::toasts().isEmpty());
        window->toastManager = manager;
    }

    void processWatcherToasts()
    {
        window->onProcessWatcherToast(text("T"), text("X <b>"), text("state"), false, false);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(), text("T: X <b>"));
        const QList<ToastTexts> expected{{text("T"), text("X <b>"), text("state")}};
        QCOMPARE(probes::toasts(), expected);
    }

    void actionToastStates()
    {
        window->showActionToast(text("a"), text("b"), true, false, false);
        QCOMPARE(probes::toasts().constFirst().state, text("Running..."));
        probes::closeToasts();
        window->showActionToast(text("a"), text("b"), false, true, true);
        QCOMPARE(probes::toasts().constFirst().state, text("Done [OK]"));
        probes::closeToasts();
        window->showActionToast(text("a"), text("b"), false, false, true);
        QCOMPARE(probes::toasts().constFirst().state, text("Failed [X]"));
    }

    void announcementsFromOtherThreadsAreQueued()
    {
        std::thread other([] { OptimizerCore::emptyRecycleBin(); });
        other.join();
        QVERIFY(probes::toasts().isEmpty());
        QTRY_COMPARE(probes::toasts().size(), 2);
    }

    void announcementsAfterTheWindowAreLost()
    {
        OptimizerCore::emptyRecycleBin(); // posted, never delivered
        window.reset();
        OptimizerCore::emptyRecycleBin();
        QCoreApplication::processEvents();
        QVERIFY(probes::toasts().isEmpty());
        window = std::make_unique<MainWindow>(nullptr);
    }

private:
    static Application *application() { return qobject_cast<Application *>(qApp); }

    void press(int button)
    {
        window->cleaner.buttons.at(static_cast<std::size_t>(button))->click();
    }

    static void refusals()
    {
        QTest::addColumn<Answer>("answer");
        QTest::newRow("No") << Answer::No;
        QTest::newRow("Escape") << Answer::Escape;
        QTest::newRow("closed") << Answer::Close;
    }

    void nothingHappened()
    {
        QCoreApplication::processEvents();
        QCOMPARE(probes::logLines(window->historyLogView), QStringList{text("Ready.")});
        QCOMPARE(window->actionProgress->value(), 0);
        QVERIFY(probes::toasts().isEmpty());
    }

    std::unique_ptr<MainWindow> window;
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    SafeActionsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SafeActionsTest.moc"
