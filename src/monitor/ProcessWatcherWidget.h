// The "Proc Watch" page.
#pragma once

#include "monitor/ProcessSnapshot.h"

#include <QPointer>
#include <QWidget>

class ChoiceBox;
class ProcessSampler;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QThread;

// Four summary cards above a table of all processes, kept up to date by a sampler on a thread of its own, which runs as long
// as the page lives. GUI thread.
class ProcessWatcherWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessWatcherWidget(QWidget *parent = nullptr);

    // Waits for the sampler's thread, but at most 1200 ms: a reading that takes longer ends without the page.
    ~ProcessWatcherWidget() override;

    // Refills the table from the last rows and the filter, busiest first; the selection is lost.
    void rebuildTable();

    // See formatBytesULongLong().
    QString formatBytes(unsigned long long bytes) const;

public slots:
    void applySnapshot(const ProcessSnapshot &snapshot);
    void onSearchChanged(const QString &text);
    void onRefreshRateChanged(int index); // 0 to 2: every 1, 2, 3 seconds
    void onEndTask(); // asks first

signals:
    // How ending a process went. `flag`: the toast closes by itself.
    void requestToast(const QString &title,
                      const QString &message,
                      const QString &badge,
                      bool success,
                      bool flag);

private:
    void setupCards();
    QLabel *addCard(QHBoxLayout *row, const QString &title, int share);
    void setupControls();
    void setupTable();
    void setupSampler();
    void fillTable();
    void fillRow(int tableRow, const ProcessRow &row);
    bool isShown(const ProcessRow &row) const;
    bool confirmsEnding(const QString &name, quint32 pid);
    quint64 creationOf(const QString &name, quint32 pid) const;
    void endTask(const QString &name, quint32 pid, quint64 created);

    QLabel *cpuValue = nullptr;
    QLabel *ramValue = nullptr;
    QLabel *diskValue = nullptr;
    QLabel *uptimeValue = nullptr;
    QLineEdit *searchBox = nullptr;
    ChoiceBox *refreshRateBox = nullptr;
    QPushButton *endButton = nullptr;
    QTableWidget *table = nullptr;
    QList<ProcessRow> lastRows;
    QString filter; // trimmed
    QThread *workerThread; // child
    QPointer<ProcessSampler> sampler; // lives on that thread, which deletes it
};
