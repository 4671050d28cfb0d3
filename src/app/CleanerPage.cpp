// The maintenance actions, and what came of them.
#include "app/LogView.h"
#include "app/MainWindow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QStackedWidget>
#include <QTextEdit>
#include <QVBoxLayout>

void MainWindow::setupCleanerPage()
{
    auto *page = new ScrollPage(pageStack);
    cleanerPage = page;
    page->contentLayout()->addWidget(createGlassCard(page, QStringLiteral("Safe System Actions")));

    GlassCard *card = createGlassCard(page, QStringLiteral("Activity Log"));
    activityLogView = createLogView(card, QStringLiteral("Activity Log"));
    qobject_cast<QVBoxLayout *>(card->layout())->addWidget(activityLogView, 1);
    page->contentLayout()->addWidget(card, 1);
}
