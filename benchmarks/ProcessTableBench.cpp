// Filling and sorting the process table, and typing into its search box, against a plain table widget that is filled cell
// by cell. The page is shown in the window, and its own sampler is stopped.
#include "CpuClock.h"
#include "app/MainWindow.h"
#include "monitor/ProcessWatcherWidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTableWidget>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int kRounds = 15;

ProcessSnapshot snapshotOf(int processes)
{
    static const QStringList kNames{QStringLiteral("kworker/u8:3-events_unbound"),
                                    QStringLiteral("chrome"),
                                    QStringLiteral("systemd-journald"),
                                    QStringLiteral("bash"),
                                    QStringLiteral("Xorg"),
                                    QStringLiteral("gnome-shell"),
                                    QStringLiteral("java"),
                                    QStringLiteral("postgres")};
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp) the same rows every time
    std::uniform_real_distribution<double> load(0, 100);
    ProcessSnapshot snapshot;
    for (int i = 0; i < processes; ++i) {
        ProcessRow row;
        row.name = kNames.at(static_cast<int>(random() % static_cast<unsigned>(kNames.size())));
        row.pid = static_cast<quint32>(i + 1);
        row.cpuPercent = i % 10 == 0 ? load(random) : 0; // most processes sleep
        row.memoryMB = load(random) * 10;
        row.diskKBps = i % 20 == 0 ? load(random) : 0;
        row.status = QStringLiteral("Running");
        snapshot.rows.append(row);
    }
    return snapshot;
}

template<typename Action>
double median(const Action &action)
{
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        const double start = cpuMilliseconds();
        action();
        times.push_back(cpuMilliseconds() - start);
        QCoreApplication::processEvents(); // paints; not counted
    }
    std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
    return times[kRounds / 2];
}

class KeyedItem : public QTableWidgetItem
{
public:
    KeyedItem(double ownKey, const QString &text)
        : QTableWidgetItem(text)
        , key(ownKey)
    { }
    bool operator<(const QTableWidgetItem &other) const override
    {
        return key < static_cast<const KeyedItem &>(other).key;
    }
    double key;
};

void fillStock(QTableWidget &table, const ProcessSnapshot &snapshot)
{
    table.setSortingEnabled(false);
    table.setRowCount(0);
    for (const ProcessRow &row : snapshot.rows) {
        const int line = table.rowCount();
        table.insertRow(line);
        table.setItem(line, 0, new QTableWidgetItem(row.name));
        table.setItem(line, 1, new KeyedItem(row.pid, QString::number(row.pid)));
        table.setItem(
            line, 2, new KeyedItem(row.cpuPercent, QString::number(row.cpuPercent, 'f', 1)));
        table.setItem(line, 3, new KeyedItem(row.memoryMB, QString::number(row.memoryMB, 'f', 1)));
        table.setItem(line, 4, new KeyedItem(row.diskKBps, QString::number(row.diskKBps, 'f', 1)));
        table.setItem(line, 5, new QTableWidgetItem(row.status));
    }
    table.setSortingEnabled(true);
    table.sortItems(2, Qt::DescendingOrder);
}

double measureStock(const ProcessSnapshot &snapshot)
{
    QTableWidget table(0, 6);
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table.resize(800, 400);
    table.show();
    return median([&] { fillStock(table, snapshot); });
}

// Milliseconds a key, over typing and deleting a word letter by letter.
double measureTyping(QLineEdit &search)
{
    constexpr int kWords = 4;
    const QString word = QStringLiteral("chrome");
    int keys = 0;
    double spent = 0;
    const auto press = [&](const QString &text) {
        const double start = cpuMilliseconds();
        search.setText(text);
        spent += cpuMilliseconds() - start;
        ++keys;
        QCoreApplication::processEvents();
    };
    for (int i = 0; i < kWords; ++i) {
        for (qsizetype length = 1; length <= word.size(); ++length) {
            press(word.left(length));
        }
        for (qsizetype length = word.size() - 1; length >= 0; --length) {
            press(word.left(length));
        }
    }
    return spent / keys;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    MainWindow window;
    window.show();
    window.pageStack->setCurrentWidget(window.processWatcher);
    for (QTimer *timer : window.findChildren<QTimer *>()) {
        timer->stop();
    }
    auto *thread = window.processWatcher->findChild<QThread *>();
    thread->quit();
    thread->wait();
    QCoreApplication::processEvents();

    auto *search = window.processWatcher->findChild<QLineEdit *>();
    std::printf("%10s %14s %14s %8s %16s\n",
                "processes",
                "fill+sort ms",
                "stock ms",
                "ratio",
                "typing ms/key");
    for (const int processes : {500, 1000, 5000}) {
        const ProcessSnapshot snapshot = snapshotOf(processes);
        const double own = median([&] { window.processWatcher->applySnapshot(snapshot); });
        const double typing = measureTyping(*search);
        const double stock = measureStock(snapshot);
        std::printf(
            "%10d %14.2f %14.2f %8.2f %16.2f\n", processes, own, stock, own / stock, typing);
    }
    return 0;
}
