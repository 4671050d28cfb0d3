// The full history of the activity log.
#include "app/LogView.h"
#include "app/MainWindow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QStackedWidget>
#include <QTextEdit>
#include <QVBoxLayout>

void MainWindow::setupLogsPage()
{
    auto *page = new ScrollPage(pageStack);
    logsPage = page;
    GlassCard *card = createGlassCard(page, QStringLiteral("Logs / History"));
    historyLogView = createLogView(card, QStringLiteral("Logs / History"));
    qobject_cast<QVBoxLayout *>(card->layout())->addWidget(historyLogView, 1);
    page->contentLayout()->addWidget(card, 1);
}
