// Everything that the user can set.
#include "app/MainWindow.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QStackedWidget>
#include <QVBoxLayout>

void MainWindow::setupSettingsPage()
{
    auto *page = new ScrollPage(pageStack);
    settings.page = page;
    page->contentLayout()->addWidget(createGlassCard(page, QStringLiteral("Customization Lab")));
    page->contentLayout()->addStretch(1);
}
