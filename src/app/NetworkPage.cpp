// The network commands.
#include "app/MainWindow.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QStackedWidget>
#include <QVBoxLayout>

void MainWindow::setupNetworkPage()
{
    auto *page = new ScrollPage(pageStack);
    networkPage = page;
    page->contentLayout()->addWidget(createGlassCard(page, QStringLiteral("Network Center")));
    page->contentLayout()->addStretch(1);
}
