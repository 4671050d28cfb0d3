#include "monitor/ProcessWatcherWidget.h"

#include "monitor/ByteFormat.h"
#include "monitor/ProcessSampler.h"
#include "ui/ChoiceBox.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr int kSpacing = 12;
constexpr std::array<std::chrono::milliseconds, 3> kRates{1000ms, 2000ms, 3000ms};
constexpr std::chrono::milliseconds kShutdownLimit = 1200ms;
// Of the row's width, whatever the values are now: the cards stand still while the figures change.
constexpr int kCpuShare = 3;
constexpr int kRamShare = 5;
constexpr int kDiskShare = 4;
constexpr int kUptimeShare = 3;
constexpr quint64 kSecondsPerHour = 3600;
constexpr quint64 kSecondsPerMinute = 60;

QLabel *createValueLabel(QWidget *parent)
{
    auto *value = new QLabel(QStringLiteral("--"), parent);
    value->setObjectName(QStringLiteral("statValue"));
    value->setIndent(0); // in line with the title, although the style sheet gives it a box
    value->setTextFormat(Qt::PlainText);
    return value;
}

} // namespace

ProcessWatcherWidget::ProcessWatcherWidget(QWidget *parent)
    : QWidget(parent)
    , workerThread(new QThread(this))
    , sampler(new ProcessSampler)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    setupCards();
    setupControls();
    setupTable();
    setupSampler();
}

ProcessWatcherWidget::~ProcessWatcherWidget()
{
    if (!workerThread->isRunning()) {
        return;
    }
    QMetaObject::invokeMethod(sampler, &ProcessSampler::stop, Qt::QueuedConnection);
    workerThread->requestInterruption();
    workerThread->quit();
    if (!workerThread->wait(QDeadlineTimer(kShutdownLimit))) {
        // A thread object must outlive its thread. This one deletes itself, if the program lives long enough.
        workerThread->setParent(nullptr);
        connect(workerThread, &QThread::finished, workerThread, &QObject::deleteLater);
        if (workerThread->isFinished()) { // just now: the signal may have come too early
            workerThread->deleteLater();
        }
    }
}

void ProcessWatcherWidget::setupCards()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    qobject_cast<QVBoxLayout *>(layout())->addLayout(row);
    cpuValue = addCard(row, QStringLiteral("CPU %"), kCpuShare);
    ramValue = addCard(row, QStringLiteral("RAM"), kRamShare);
    diskValue = addCard(row, QStringLiteral("Disk I/O"), kDiskShare);
    uptimeValue = addCard(row, QStringLiteral("Uptime"), kUptimeShare);
}

QLabel *ProcessWatcherWidget::addCard(QHBoxLayout *row, const QString &title, int share)
{
    auto *card = new QFrame(this);
    card->setObjectName(QStringLiteral("glassCard"));
    auto *cardLayout = new QVBoxLayout(card);
    auto *titleLabel = new QLabel(title, card);
    titleLabel->setObjectName(QStringLiteral("cardTitle"));
    QLabel *value = createValueLabel(card);
    titleLabel->setBuddy(value); // a name of its own would be read instead of the figure
    cardLayout->addWidget(titleLabel);
    cardLayout->addWidget(value);
    card->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(card, share);
    return value;
}

void ProcessWatcherWidget::setupControls()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    qobject_cast<QVBoxLayout *>(layout())->addLayout(row);

    searchBox = new QLineEdit(this);
    searchBox->setPlaceholderText(QStringLiteral("Search process..."));
    searchBox->setAccessibleName(QStringLiteral("Search process"));
    row->addWidget(searchBox, 1);

    refreshRateBox = new ChoiceBox(this);
    refreshRateBox->addItems(
        {QStringLiteral("1 sec"), QStringLiteral("2 sec"), QStringLiteral("3 sec")});
    refreshRateBox->setAccessibleName(QStringLiteral("Refresh rate"));
    // On Linux a combo box is named by what is chosen, and no label stands beside this one.
    refreshRateBox->setAccessibleDescription(QStringLiteral("Time between two readings"));
    row->addWidget(refreshRateBox, 0);

    endButton = new QPushButton(QStringLiteral("End Task"), this);
    row->addWidget(endButton, 0);

    connect(searchBox, &QLineEdit::textChanged, this, &ProcessWatcherWidget::onSearchChanged);
    connect(refreshRateBox,
            &ChoiceBox::currentIndexChanged,
            this,
            &ProcessWatcherWidget::onRefreshRateChanged);
    connect(endButton, &QPushButton::clicked, this, &ProcessWatcherWidget::onEndTask);
}

void ProcessWatcherWidget::setupSampler()
{
    qRegisterMetaType<ProcessSnapshot>("ProcessSnapshot");
    sampler->moveToThread(workerThread);
    connect(workerThread, &QThread::finished, sampler, &QObject::deleteLater);
    connect(workerThread, &QThread::started, this, [this] {
        onRefreshRateChanged(refreshRateBox->currentIndex());
    });
    connect(sampler,
            &ProcessSampler::snapshotReady,
            this,
            &ProcessWatcherWidget::applySnapshot,
            Qt::QueuedConnection);
    workerThread->start();
}

void ProcessWatcherWidget::applySnapshot(const ProcessSnapshot &snapshot)
{
    cpuValue->setText(QString::number(snapshot.cpuPercent, 'f', 1) + QLatin1Char('%'));
    ramValue->setText(QStringLiteral("%1 / %2").arg(formatBytes(snapshot.memUsedBytes),
                                                    formatBytes(snapshot.memTotalBytes)));
    diskValue->setText(QString::number(snapshot.diskKBps, 'f', 1) + QStringLiteral(" KB/s"));
    uptimeValue->setText(QStringLiteral("%1h %2m")
                             .arg(snapshot.uptimeSeconds / kSecondsPerHour)
                             .arg(snapshot.uptimeSeconds % kSecondsPerHour / kSecondsPerMinute));
    lastRows = snapshot.rows;

    const int scrolledTo = table->verticalScrollBar()->value();
    rebuildTable();
    table->verticalScrollBar()->setValue(scrolledTo);
}

void ProcessWatcherWidget::onSearchChanged(const QString &text)
{
    filter = text.trimmed();
    rebuildTable();
}

void ProcessWatcherWidget::onRefreshRateChanged(int index)
{
    const auto last = static_cast<int>(kRates.size()) - 1;
    const auto rate = kRates.at(static_cast<std::size_t>(index < 0 || index > last ? last : index));
    if (sampler != nullptr) {
        const auto interval = static_cast<int>(rate.count());
        QMetaObject::invokeMethod(sampler, "start", Qt::QueuedConnection, Q_ARG(int, interval));
    }
}

QString ProcessWatcherWidget::formatBytes(unsigned long long bytes) const
{
    return formatBytesULongLong(bytes);
}
