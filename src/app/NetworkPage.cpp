// The network commands, and a status panel whose readings are simulated: nothing is measured here.
#include "app/MainWindow.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int kGlowRadius = 26;
constexpr int kSmallestPing = 18; // ms
constexpr int kPings = 42;
constexpr double kDownloadRange = 48.0; // Mbps
constexpr double kSmallestDownload = 1.5;
constexpr double kUploadRange = 14.0;
constexpr double kSmallestUpload = 0.4;

QString oneDecimal(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

void MainWindow::setupNetworkPage()
{
    auto *page = new QWidget(pageStack);
    QVBoxLayout *cards = createCardLayout(page);
    network.page = page;
    GlassCard *card = createGlassCard(page, QStringLiteral("Network Center"));
    network.ping = new QLabel(QStringLiteral("Ping: -- ms"), card);
    network.throughput = new QLabel(QStringLiteral("Download/Upload: -- / --"), card);
    network.adapter = new QLabel(QStringLiteral("Adapter: Detecting..."), card);
    auto *layout = qobject_cast<QVBoxLayout *>(card->layout());
    for (QLabel *label : {network.ping, network.throughput, network.adapter}) {
        layout->addWidget(label);
    }
    auto *buttons = new QHBoxLayout;
    network.flushDns = new QPushButton(QStringLiteral("Flush DNS"), card);
    network.reset = new QPushButton(QStringLiteral("Reset Network"), card);
    buttons->addWidget(network.flushDns);
    buttons->addWidget(network.reset);
    layout->addLayout(buttons);
    cards->addWidget(card);
    cards->addStretch(1);
    applyGlow(card, standardGlowColor(), kGlowRadius);

    connect(network.flushDns, &QPushButton::clicked, this, &MainWindow::onFlushDns);
    connect(network.reset, &QPushButton::clicked, this, &MainWindow::onResetWinsock);
}

void MainWindow::refreshNetworkStatus()
{
    auto &random = *QRandomGenerator64::global();
    const int ping = kSmallestPing + static_cast<int>(random.bounded(kPings));
    const double download = random.generateDouble() * kDownloadRange + kSmallestDownload;
    const double upload = random.generateDouble() * kUploadRange + kSmallestUpload;
    network.ping->setText(QStringLiteral("Ping: %1 ms").arg(ping));
    network.throughput->setText(QStringLiteral("Download/Upload: %1 Mbps / %2 Mbps")
                                    .arg(oneDecimal(download), oneDecimal(upload)));
    network.adapter->setText(QStringLiteral("Adapter: Ethernet / IPv4"));
}
