// The dashboard: memory, system disk, clock, place and weather.
#include "app/MainWindow.h"

#include "monitor/ByteFormat.h"
#include "platform/SystemDisk.h"
#include "platform/SystemMemory.h"
#include "ui/ElidedLabel.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ReadableBar.h"
#include "ui/ScrollPage.h"

#include <QDateTime>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int kGridSpacing = 16;
constexpr int kStatGlowRadius = 26;
constexpr int kFull = 100; // percent

QString unknownText()
{
    return QStringLiteral("--");
}

QLabel *addLabel(GlassCard *card, const QString &text, const QString &objectName = {})
{
    auto *label = new QLabel(text, card);
    label->setTextFormat(Qt::PlainText);
    label->setIndent(0); // in line with the title also where the style sheet gives the label a box
    label->setWordWrap(true); // where the fonts are wide
    label->setObjectName(objectName);
    card->layout()->addWidget(label);
    return label;
}

// For text that others send.
QLabel *addElidedLabel(GlassCard *card, const QString &text)
{
    auto *label = new ElidedLabel(text, card);
    card->layout()->addWidget(label);
    return label;
}

QProgressBar *addBar(GlassCard *card, const QString &accessibleName)
{
    auto *bar = new ReadableBar(card);
    bar->setRange(0, kFull);
    bar->setValue(0);
    bar->setTextVisible(true);
    bar->setAccessibleName(accessibleName);
    card->layout()->addWidget(bar);
    return bar;
}

void showPercent(QProgressBar *bar, int percent)
{
    if (bar != nullptr) {
        bar->setValue(percent);
        bar->setFormat(QStringLiteral("%1% used").arg(percent));
    }
}

// Free space may exceed a total that a quota makes smaller.
std::uint64_t usedOf(std::uint64_t total, std::uint64_t free)
{
    return free < total ? total - free : 0;
}

void showUnavailable(QProgressBar *bar)
{
    if (bar != nullptr) {
        bar->setValue(0);
        bar->setFormat(QStringLiteral("Unavailable"));
    }
}

} // namespace

void MainWindow::setupDashboardPage()
{
    auto *page = new ScrollPage(pageStack);
    dashboard.page = page;

    GlassCard *head = createGlassCard(page, QStringLiteral("Dashboard"));
    addLabel(
        head,
        QStringLiteral(
            "Premium safe optimizer: live system stats and trusted maintenance actions only."));
    applyGlow(head, standardGlowColor(), kStandardGlowRadius);
    page->contentLayout()->addWidget(head);

    auto *grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGridSpacing);
    grid->setVerticalSpacing(kGridSpacing);
    GlassCard *ramCard = createGlassCard(page, QStringLiteral("RAM"));
    dashboard.ramValue = addLabel(ramCard, unknownText(), QStringLiteral("statValue"));
    dashboard.ramBar = addBar(ramCard, QStringLiteral("RAM in use"));
    const QString disk = QString::fromStdString(platform::systemDiskName());
    GlassCard *diskCard = createGlassCard(page, QStringLiteral("System Disk (%1)").arg(disk));
    dashboard.diskValue = addLabel(diskCard, unknownText(), QStringLiteral("statValue"));
    dashboard.diskBar = addBar(diskCard, QStringLiteral("System disk in use"));
    int column = 0;
    for (GlassCard *card : {ramCard, diskCard}) {
        applyGlow(card, standardGlowColor(), kStatGlowRadius);
        qobject_cast<QVBoxLayout *>(card->layout())->addStretch(1);
        grid->addWidget(card, 0, column);
        grid->setColumnStretch(column, 1);
        ++column;
    }
    page->contentLayout()->addLayout(grid);

    GlassCard *live = createGlassCard(page, QStringLiteral("Live Info"));
    dashboard.time = addLabel(live, unknownText(), QStringLiteral("statValue"));
    dashboard.date = addLabel(live, unknownText(), QStringLiteral("cardTitle"));
    dashboard.location = addElidedLabel(live, QStringLiteral("Location: Resolving..."));
    dashboard.weather = addElidedLabel(live, QStringLiteral("Weather: Resolving..."));
    page->contentLayout()->addWidget(live);
    page->contentLayout()->addStretch(1);
}

void MainWindow::updateSystemStats()
{
    updateRamCard();
    updateDiskCard();
    updateLiveDateTime();
}

// The doubled percent sign of both labels is the text that is shown, not an escape.
void MainWindow::updateRamCard()
{
    const auto memory = platform::queryMemory();
    if (!memory) {
        dashboard.ramValue->setText(QStringLiteral("RAM stats unavailable"));
        showUnavailable(dashboard.ramBar);
        return;
    }
    const auto used = usedOf(memory->totalBytes, memory->availableBytes);
    dashboard.ramValue->setText(
        QStringLiteral("%1 / %2 (%3%%)")
            .arg(formatBytesULongLong(used), formatBytesULongLong(memory->totalBytes))
            .arg(memory->loadPercent));
    showPercent(dashboard.ramBar, static_cast<int>(memory->loadPercent));
}

void MainWindow::updateDiskCard()
{
    const auto disk = platform::querySystemDisk();
    if (!disk) {
        dashboard.diskValue->setText(QStringLiteral("Disk stats unavailable"));
        showUnavailable(dashboard.diskBar);
        return;
    }
    const auto used = usedOf(disk->totalBytes, disk->freeBytes);
    const auto percent = disk->totalBytes == 0 ? 0 : used * kFull / disk->totalBytes;
    dashboard.diskValue->setText(
        QStringLiteral("%1 / %2 (%3%% used)")
            .arg(formatBytesULongLong(used), formatBytesULongLong(disk->totalBytes))
            .arg(percent));
    showPercent(dashboard.diskBar, static_cast<int>(percent));
}

void MainWindow::updateLiveDateTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    if (dashboard.time != nullptr) {
        dashboard.time->setText(now.toString(QStringLiteral("hh:mm:ss AP")));
    }
    if (dashboard.date != nullptr) {
        dashboard.date->setText(now.toString(QStringLiteral("dddd, MMMM d, yyyy")));
    }
}
