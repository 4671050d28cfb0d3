// The start-up entries.
#include "app/MainWindow.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QStackedWidget>
#include <QVBoxLayout>

void MainWindow::setupStartupPage()
{
    auto *page = new ScrollPage(pageStack);
    startupPage = page;
    page->contentLayout()->addWidget(createGlassCard(page, QStringLiteral("Startup Manager")));
    page->contentLayout()->addStretch(1);
}
