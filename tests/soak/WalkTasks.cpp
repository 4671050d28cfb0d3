// Toasts and processes of a soak run's walk.
#include "soak/Walk.h"

#include "app/MainWindow.h"
#include "monitor/ProcessWatcherWidget.h"
#include "notify/DesktopToast.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int kToastsAtOnce = 100;
constexpr int kPidColumn = 1;

QString victimName()
{
    return QStringLiteral("SoakStorm"); // beside the storm itself, which must not be ended
}

} // namespace

void Walk::showToasts()
{
    watch.setAction(QStringLiteral("toasts"));
    for (int i = 0; i < kToastsAtOnce; ++i) {
        QTimer::singleShot(i, &window, [this, i] {
            ++toasts;
            window.showActionToast(QStringLiteral("Soak"),
                                   QStringLiteral("Toast %1").arg(i),
                                   i % 2 == 0,
                                   i % 3 == 0,
                                   false);
        });
    }
}

void Walk::closeToasts()
{
    watch.setAction(QStringLiteral("closing toasts"));
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *toast : windows) {
        if (qobject_cast<DesktopToast *>(toast) != nullptr) {
            QTimer::singleShot(0, toast, [toast] {
                toast->findChild<QPushButton *>(QStringLiteral("toastClose"))->click();
            });
        }
    }
}

QTableWidget *Walk::processTable() const
{
    return window.processWatcher->findChild<QTableWidget *>();
}

void Walk::watchProcesses()
{
    static const QStringList words{QString(), QStringLiteral("so"), QStringLiteral("(")};
    watch.setAction(QStringLiteral("processes"));
    window.onNavChanged(MainWindow::ProcWatchPage);
    window.processWatcher->findChild<QLineEdit *>()->setText(
        words.at(random.bounded(static_cast<int>(words.size()))));
    auto *rates = window.processWatcher->findChild<QComboBox *>();
    rates->setCurrentIndex(random.bounded(rates->count()));
    processTable()->selectRow(random.bounded(processTable()->rowCount() + 1));
    const auto buttons = window.processWatcher->findChildren<QPushButton *>();
    press(buttons.constFirst(), BlockWatch::Kind::Usual, {}); // nothing selected, or a No
}

// Starts a process, or ends it when the table has come to know it.
void Walk::endProcess()
{
    watch.setAction(QStringLiteral("end task"));
    if (victim.state() == QProcess::NotRunning) {
        watch.setKind(BlockWatch::Kind::Ignored); // the start is the run's own
        victim.start(QStringLiteral(VELTRA_SOAK_STORM), {QStringLiteral("1")});
        return;
    }
    window.onNavChanged(MainWindow::ProcWatchPage);
    window.processWatcher->findChild<QLineEdit *>()->setText(victimName());
    if (selectVictim()) {
        const auto buttons = window.processWatcher->findChildren<QPushButton *>();
        press(buttons.constFirst(), BlockWatch::Kind::Usual, {});
    }
}

bool Walk::selectVictim()
{
    const QString pid = QString::number(victim.processId());
    QTableWidget *table = processTable();
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, kPidColumn)->text() == pid) {
            table->setCurrentCell(row, 0);
            return true;
        }
    }
    return false;
}

bool Walk::isToBeDone(const QMessageBox &question)
{
    if (question.text() == QLatin1String("Delete temp files?")) {
        return true;
    }
    const QString pid = QString::number(victim.processId());
    if (victim.state() != QProcess::Running
        || question.text()
            != QStringLiteral("End process \"%1\" (PID %2)?").arg(victimName(), pid)) {
        return false;
    }
    ++endedTasks;
    log.expect(QStringLiteral("End Task: Process terminated."));
    return true;
}
