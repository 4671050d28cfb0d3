// The full history of the activity log, and its export.
#include "app/LogView.h"
#include "app/MainWindow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTextStream>
#include <QVBoxLayout>

void MainWindow::setupLogsPage()
{
    auto *page = new QWidget(pageStack);
    QVBoxLayout *cards = createCardLayout(page);
    logsPage = page;
    GlassCard *card = createGlassCard(page, QStringLiteral("Logs / History"));
    auto *layout = qobject_cast<QVBoxLayout *>(card->layout());
    historyLogView = createLogView(card, QStringLiteral("Logs / History"));
    layout->addWidget(historyLogView, 1);
    exportLogsButton = new QPushButton(QStringLiteral("Export Logs"), card);
    layout->addWidget(exportLogsButton, 0);
    cards->addWidget(card, 1);
    applyGlow(exportLogsButton, standardGlowColor(), kStandardGlowRadius);
    connect(exportLogsButton, &QPushButton::clicked, this, &MainWindow::onExportLogs);
}

void MainWindow::onExportLogs()
{
    const QString path = QFileDialog::getSaveFileName(this,
                                                      QStringLiteral("Export Logs"),
                                                      QStringLiteral("VeltraOptimizerLogs.txt"),
                                                      QStringLiteral("Text Files (*.txt)"));
    if (!path.isEmpty()) {
        exportLogsTo(path);
    }
}

// Written before it is logged, so that the file never holds its own export.
void MainWindow::exportLogsTo(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        log(QStringLiteral("Failed to export logs."));
        return;
    }
    QTextStream stream(&file);
    stream << historyLogView->toPlainText();
    stream.flush();
    file.close();
    log(QStringLiteral("Logs exported: ") + path);
}
