// One handler per maintenance action: ask where something is lost, run the operation, report what came of it.
#include "app/MainWindow.h"
#include "core/OptimizerCore.h"
#include "monitor/ByteFormat.h"

#include <QMessageBox>
#include <QProgressBar>

namespace {

constexpr int kStarted = 10; // percent
constexpr int kFinished = 100;

} // namespace

// How an action that opens something is reported.
struct MainWindow::OpeningTexts
{
    QString title;
    QString opened;
    QString notOpened;
    QString loggedOpened;
    QString loggedNotOpened;
};

bool MainWindow::isConfirmed(const QString &title, const QString &question)
{
    return QMessageBox::question(this, title, question, QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

void MainWindow::reportOpening(bool success, const OpeningTexts &texts)
{
    showActionToast(texts.title, success ? texts.opened : texts.notOpened, false, success, false);
    log(success ? texts.loggedOpened : texts.loggedNotOpened);
}

void MainWindow::onCleanTemp()
{
    if (!isConfirmed(QStringLiteral("Confirm"), QStringLiteral("Delete temp files?"))) {
        return;
    }
    actionProgress->setValue(kStarted);
    log(QStringLiteral("Cleaning temp files..."));
    runningAction =
        QStringLiteral("Clean Temp"); // stays when the operation throws: see reportFailure()
    const TempCleanResult result = OptimizerCore::cleanTemp();
    runningAction.clear();
    actionProgress->setValue(kFinished);
    log(QStringLiteral("Temp cleaned. Deleted %1 items.").arg(result.removedCount));
}

void MainWindow::onEmptyRecycle()
{
    if (!isConfirmed(QStringLiteral("Confirm"), QStringLiteral("Empty Recycle Bin?"))) {
        return;
    }
    actionProgress->setValue(kStarted);
    log(QStringLiteral("Emptying Recycle Bin..."));
    runningAction = QStringLiteral("Recycle Bin");
    const bool success = OptimizerCore::emptyRecycleBin();
    runningAction.clear();
    actionProgress->setValue(kFinished);
    log(success ? QStringLiteral("Recycle Bin emptied.") : QStringLiteral("Recycle Bin failed."));
}

// The doubled percent sign is the text that is shown, not an escape.
void MainWindow::onRamFreeHelper()
{
    const MemoryPressureInfo info = OptimizerCore::getMemoryPressureInfo();
    const auto used = info.totalPhys > info.availPhys ? info.totalPhys - info.availPhys : 0;
    const QString message =
        QStringLiteral("Memory pressure: %1%% | Used %2 / %3. Suggestion: close heavy background "
                       "apps via Task Manager.")
            .arg(info.memoryLoad)
            .arg(formatBytesULongLong(used))
            .arg(formatBytesULongLong(info.totalPhys));
    showActionToast(QStringLiteral("RAM Free (Safe)"), message, false, true, false);
    log(message);
}

void MainWindow::onOpenStorageSense()
{
    reportOpening(OptimizerCore::openStorageSense(),
                  {QStringLiteral("Storage Sense"),
                   QStringLiteral("Opened Windows Storage Sense."),
                   QStringLiteral("Could not open Storage Sense."),
                   QStringLiteral("Opened Storage Sense."),
                   QStringLiteral("Failed opening Storage Sense.")});
}

void MainWindow::onOpenTempFolder()
{
    reportOpening(OptimizerCore::openTempFolder(),
                  {QStringLiteral("Temp Folder"),
                   QStringLiteral("Opened TEMP folder."),
                   QStringLiteral("Could not open TEMP folder."),
                   QStringLiteral("Opened TEMP folder."),
                   QStringLiteral("Failed opening TEMP folder.")});
}

void MainWindow::onOpenPrefetchFolder()
{
    if (!isConfirmed(QStringLiteral("Open Prefetch"),
                     QStringLiteral("Open Prefetch folder only? No files will be deleted."))) {
        return;
    }
    reportOpening(OptimizerCore::openPrefetchFolder(),
                  {QStringLiteral("Prefetch Folder"),
                   QStringLiteral("Opened Prefetch folder."),
                   QStringLiteral("Could not open Prefetch folder."),
                   QStringLiteral("Opened Prefetch folder."),
                   QStringLiteral("Failed opening Prefetch folder.")});
}

void MainWindow::onOpenBrowserCacheHelper()
{
    reportOpening(OptimizerCore::openBrowserClearCachePages(),
                  {QStringLiteral("Browser Cache Helper"),
                   QStringLiteral("Opened browser clear-data pages."),
                   QStringLiteral("No supported browser page opened."),
                   QStringLiteral("Opened browser cache helper pages."),
                   QStringLiteral("Failed opening browser cache helper.")});
}

void MainWindow::onOpenStartupApps()
{
    reportOpening(OptimizerCore::openStartupAppsSettings(),
                  {QStringLiteral("Startup Apps"),
                   QStringLiteral("Opened Startup Apps settings."),
                   QStringLiteral("Could not open Startup Apps settings."),
                   QStringLiteral("Opened Startup Apps settings."),
                   QStringLiteral("Failed opening Startup Apps settings.")});
}

void MainWindow::onOpenWindowsSecurity()
{
    reportOpening(OptimizerCore::openWindowsSecurity(),
                  {QStringLiteral("Windows Security"),
                   QStringLiteral("Opened Windows Security."),
                   QStringLiteral("Could not open Windows Security."),
                   QStringLiteral("Opened Windows Security."),
                   QStringLiteral("Failed opening Windows Security.")});
}
