// Console commands that run beside the window, and are reported once.
#include "app/ChildProgram.h"
#include "app/MainWindow.h"

#include <QMessageBox>
#include <QProcess>
#include <memory>

void MainWindow::runNetworkTask(const QString &title, platform::NetworkTask task, bool restartHint)
{
    const platform::CommandLine command = platform::networkCommand(task);
    const QString program = QString::fromStdString(command.program);
    const QStringList arguments = childprogram::argumentsOf(command);
    const QString text =
        QStringLiteral("Running ") + (QStringList{program} + arguments).join(QLatin1Char(' '));
    runCommandAsync(title, text, program, arguments, restartHint);
}

void MainWindow::runCommandAsync(const QString &title,
                                 const QString &text,
                                 const QString &program,
                                 const QStringList &arguments,
                                 bool restartHint)
{
    showActionToast(title, text, true, true, false);
    log(title + QStringLiteral(": Running..."));

    auto *process = new QProcess(this);
    const auto reported = std::make_shared<bool>(false); // both signals may come for one command
    const auto report = [this, process, title, reported](const QString &outcome, bool success) {
        if (*reported) {
            return;
        }
        *reported = true;
        showActionToast(title, outcome, false, success, false);
        log(title + QStringLiteral(": ") + outcome);
        process->deleteLater();
    };
    connect(process,
            &QProcess::finished,
            this,
            [report, restartHint](int exitCode, QProcess::ExitStatus status) {
                const bool success = exitCode == 0 && status == QProcess::NormalExit;
                const QString done = restartHint ? QStringLiteral("Done (restart recommended)")
                                                 : QStringLiteral("Done");
                report(success ? done : QStringLiteral("Failed"), success);
            });
    connect(process, &QProcess::errorOccurred, this, [report](QProcess::ProcessError /*error*/) {
        report(QStringLiteral("Failed to start."), false);
    });
    process->start(childprogram::fileOf(program), arguments, QIODevice::ReadWrite);
}

void MainWindow::releaseRunningCommands()
{
    const auto processes = findChildren<QProcess *>(QString(), Qt::FindDirectChildrenOnly);
    for (QProcess *process : processes) {
        if (process->state() != QProcess::NotRunning) {
            process->disconnect(this);
            childprogram::abandon(process);
        }
    }
}

void MainWindow::onFlushDns()
{
    runNetworkTask(QStringLiteral("Flush DNS"), platform::NetworkTask::FlushDns, false);
}

void MainWindow::onRenewIp()
{
    runNetworkTask(QStringLiteral("Renew IP"), platform::NetworkTask::RenewLease, false);
}

void MainWindow::onResetWinsock()
{
    if (isConfirmed(QStringLiteral("Reset Winsock"),
                    QStringLiteral("Reset Winsock now?\nThis may require restart."))) {
        runNetworkTask(QStringLiteral("Reset Winsock"), platform::NetworkTask::ResetSockets, true);
    }
}
