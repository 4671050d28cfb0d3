// The maintenance actions, and what came of them.
#include "app/LogView.h"
#include "app/MainWindow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ReadableBar.h"
#include "ui/ScrollPage.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

constexpr int kGridSpacing = 10;
constexpr int kColumns = 3;
constexpr int kGlowRadius = 26;
constexpr int kFull = 100; // percent
constexpr int kLogHeight =
    72; // px that the log has at least; more would not fit the page without scrolling

struct Action
{
    const char *text;
    void (MainWindow::*slot)();
};

// Row by row.
constexpr std::array<Action, 12> kActions{{
    {"Clean Temp", &MainWindow::onCleanTemp},
    {"Empty Recycle Bin", &MainWindow::onEmptyRecycle},
    {"Flush DNS", &MainWindow::onFlushDns},
    {"RAM Free (Safe)", &MainWindow::onRamFreeHelper},
    {"Open Storage Sense", &MainWindow::onOpenStorageSense},
    {"Open Temp Folder", &MainWindow::onOpenTempFolder},
    {"Open Prefetch Folder", &MainWindow::onOpenPrefetchFolder},
    {"Browser Cache Helper", &MainWindow::onOpenBrowserCacheHelper},
    {"Renew IP", &MainWindow::onRenewIp},
    {"Reset Winsock", &MainWindow::onResetWinsock},
    {"Startup Apps Settings", &MainWindow::onOpenStartupApps},
    {"Open Windows Security", &MainWindow::onOpenWindowsSecurity},
}};

QColor cardGlowColor()
{
    return {58, 126, 255, 44};
}

} // namespace

void MainWindow::setupCleanerPage()
{
    auto *page = new ScrollPage(pageStack);
    cleaner.page = page;
    setupActionsCard(page);

    GlassCard *card = createGlassCard(page, QStringLiteral("Activity Log"));
    activityLogView = createLogView(card, QStringLiteral("Activity Log"));
    activityLogView->setMinimumHeight(kLogHeight);
    activityLogView->setSizePolicy(QSizePolicy::Expanding,
                                   QSizePolicy::Ignored); // takes what is left
    qobject_cast<QVBoxLayout *>(card->layout())->addWidget(activityLogView, 1);
    page->contentLayout()->addWidget(card, 1);
}

void MainWindow::setupActionsCard(ScrollPage *page)
{
    GlassCard *card = createGlassCard(page, QStringLiteral("Safe System Actions"));
    page->contentLayout()->addWidget(card);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kGridSpacing);
    grid->setVerticalSpacing(kGridSpacing);
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        auto *button = new QPushButton(QString::fromLatin1(kActions.at(i).text), card);
        const int place = static_cast<int>(i);
        grid->addWidget(button, place / kColumns, place % kColumns);
        cleaner.buttons.at(i) = button;
    }
    auto *layout = qobject_cast<QVBoxLayout *>(card->layout());
    layout->addLayout(grid);

    auto *note = new QLabel(
        QStringLiteral("RAM Free is a safe helper. It does not increase physical RAM; it only "
                       "reports memory pressure and suggests closing heavy apps."),
        card);
    note->setWordWrap(true);
    layout->addWidget(note);

    actionProgress = new ReadableBar(card);
    actionProgress->setRange(0, kFull);
    actionProgress->setValue(0);
    actionProgress->setAccessibleName(QStringLiteral("Progress of the action"));
    layout->addWidget(actionProgress);
    applyGlow(card, cardGlowColor(), kGlowRadius);
}

void MainWindow::connectActions()
{
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        connect(cleaner.buttons.at(i), &QPushButton::clicked, this, kActions.at(i).slot);
    }
}
