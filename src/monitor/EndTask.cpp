// Ending a process from the "Proc Watch" page.
#include "monitor/ProcessName.h"
#include "monitor/ProcessWatcherWidget.h"
#include "platform/EndProcess.h"

#include <QMessageBox>
#include <QTableWidget>
#include <algorithm>

namespace {

constexpr int kNameColumn = 0;
constexpr int kPidColumn = 1;
constexpr int kDecimal = 10;

QString title()
{
    return QStringLiteral("End Task");
}

} // namespace

void ProcessWatcherWidget::onEndTask()
{
    const int row = table->currentRow();
    if (row < 0) {
        return;
    }
    const QTableWidgetItem *pidCell = table->item(row, kPidColumn);
    const QTableWidgetItem *nameCell = table->item(row, kNameColumn);
    const quint32 pid = pidCell != nullptr ? pidCell->text().toUInt(nullptr, kDecimal) : 0;
    const QString name = nameCell != nullptr ? nameCell->text() : QString();
    // While the question stands, the next readings replace the table and the rows.
    const quint64 created = creationOf(name, pid);
    if (confirmsEnding(name, pid)) {
        endTask(name, pid, created);
    }
}

// As the reading on display has it; 0 when it does not say.
quint64 ProcessWatcherWidget::creationOf(const QString &name, quint32 pid) const
{
    const auto row =
        std::find_if(lastRows.begin(), lastRows.end(), [&](const ProcessRow &candidate) {
            return candidate.pid == pid && candidate.name == name;
        });
    return row != lastRows.end() ? row->created : 0;
}

bool ProcessWatcherWidget::confirmsEnding(const QString &name, quint32 pid)
{
    QMessageBox box(QMessageBox::Question,
                    title(),
                    QStringLiteral("End process \"%1\" (PID %2)?").arg(name, QString::number(pid)),
                    QMessageBox::Yes | QMessageBox::No,
                    this);
    box.setTextFormat(Qt::PlainText); // a process may be named like markup
    return box.exec() == QMessageBox::Yes;
}

void ProcessWatcherWidget::endTask(const QString &name, quint32 pid, quint64 created)
{
    const auto isMeant = [&](const platform::ProcessIdentity &found) {
        const bool isSameAge = created == 0 || found.created == 0 || created == found.created;
        return isSameAge && processNameFrom(found.name).compare(name, Qt::CaseInsensitive) == 0;
    };
    switch (platform::endProcess(pid, isMeant)) {
    case platform::EndOutcome::Ended:
        emit requestToast(
            title(), QStringLiteral("Process terminated."), QStringLiteral("Done"), true, true);
        break;
    case platform::EndOutcome::Unavailable:
        emit requestToast(title(),
                          QStringLiteral("Permission denied or process unavailable."),
                          QStringLiteral("Failed"),
                          false,
                          true);
        break;
    case platform::EndOutcome::Failed:
        emit requestToast(title(),
                          QStringLiteral("Could not terminate process."),
                          QStringLiteral("Failed"),
                          false,
                          true);
        break;
    }
}
