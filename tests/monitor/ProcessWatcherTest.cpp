// The "Proc Watch" page over a scripted machine.
#include "monitor/ProcessWatcherWidget.h"

#include "fakes/ScriptedPlatform.h"
#include "fakes/ScriptedProcesses.h"
#include "monitor/ProcessSampler.h"
#include "ui/ChoiceBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMutex>
#include <QPushButton>
#include <QScrollBar>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace {

using fakes::processes;
using fakes::ScriptedProcess;
using Fakes = fakes::ScriptedProcesses;

enum Column { Name, Pid, Cpu, Memory, Disk, Status };

ProcessRow
rowOf(const QString &name, quint32 pid, double cpu = 0, double memory = 0, double disk = 0)
{
    ProcessRow row;
    row.name = name;
    row.pid = pid;
    row.cpuPercent = cpu;
    row.memoryMB = memory;
    row.diskKBps = disk;
    row.status = QStringLiteral("Running");
    return row;
}

ScriptedProcess processOf(quint32 id, const std::string &name)
{
    ScriptedProcess process;
    process.id = id;
    process.name = name;
    process.times->created = 5;
    return process;
}

// The page with its sampler at rest, so that only what the test gives it is shown.
class QuietPage : public ProcessWatcherWidget
{
public:
    QuietPage()
        : ProcessWatcherWidget(nullptr)
    {
        auto *thread = findChild<QThread *>();
        thread->quit();
        thread->wait();
        QCoreApplication::sendPostedEvents(this); // readings that were under way
        applySnapshot({});
    }

    QTableWidget *table() const { return findChild<QTableWidget *>(); }
    QLineEdit *search() const { return findChild<QLineEdit *>(); }
    QComboBox *rate() const { return findChild<QComboBox *>(); }
    QPushButton *endButton() const { return findChild<QPushButton *>(); }

    void show(const QList<ProcessRow> &rows)
    {
        ProcessSnapshot snapshot;
        snapshot.rows = rows;
        applySnapshot(snapshot);
    }
    QStringList column(int column) const
    {
        QStringList texts;
        for (int i = 0; i < table()->rowCount(); ++i) {
            texts.append(table()->item(i, column)->text());
        }
        return texts;
    }
    QStringList cardTexts(const char *name) const
    {
        QStringList texts;
        for (const QLabel *label : findChildren<QLabel *>(QLatin1String(name))) {
            texts.append(label->text());
        }
        return texts;
    }
};

// Answers the next question with that button, and keeps what it asked.
class Answer : public QObject
{
public:
    explicit Answer(QMessageBox::StandardButton wanted)
        : button(wanted)
    {
        connect(&timer, &QTimer::timeout, this, &Answer::look);
        timer.start(5);
    }

    int asked = 0;
    QString title;
    QString text;
    Qt::TextFormat format = Qt::AutoText;
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QWidget *owner = nullptr;
    std::function<void()> whileAsking;

private:
    void look()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) {
            return;
        }
        timer.stop();
        ++asked;
        title = box->windowTitle();
        text = box->text();
        format = box->textFormat();
        buttons = box->standardButtons();
        icon = box->icon();
        owner = box->parentWidget();
        if (whileAsking) {
            whileAsking();
        }
        if (button == QMessageBox::Escape) {
            QTest::keyClick(box, Qt::Key_Escape);
        } else {
            box->button(button)->click();
        }
    }

    QMessageBox::StandardButton button;
    QTimer timer;
};

// When which thread began a reading.
class PassLog
{
public:
    PassLog() { clock.start(); }

    void add()
    {
        const QMutexLocker lock(&mutex);
        times[QThread::currentThread()].append(clock.elapsed());
    }
    qsizetype count(const QThread *thread)
    {
        const QMutexLocker lock(&mutex);
        return times.value(thread).size();
    }
    // Whether two readings in a row were that far apart. A busy machine may take some tries.
    bool hasInterval(const QThread *thread, int intervalMs)
    {
        const QMutexLocker lock(&mutex);
        const QList<qint64> starts = times.value(thread);
        return std::adjacent_find(starts.begin(),
                                  starts.end(),
                                  [intervalMs](qint64 earlier, qint64 later) {
                                      const qint64 ms = later - earlier;
                                      return ms > intervalMs * 9 / 10 && ms < intervalMs + 350;
                                  })
            != starts.end();
    }

private:
    QMutex mutex;
    QElapsedTimer clock;
    QHash<const QThread *, QList<qint64>> times; // ms
};

} // namespace

class ProcessWatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        processes([](auto &script) { script = {}; });
    }

    void layout()
    {
        const QuietPage page;
        const auto *layout = qobject_cast<QVBoxLayout *>(page.layout());
        QVERIFY(layout != nullptr);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->spacing(), 12);
        QCOMPARE(layout->count(), 3);

        const QLayout *cards = layout->itemAt(0)->layout();
        QCOMPARE(cards->count(), 4);
        for (int i = 0; i < cards->count(); ++i) {
            const QWidget *card = cards->itemAt(i)->widget();
            QCOMPARE(card->objectName(), QStringLiteral("glassCard"));
            QVERIFY(qobject_cast<const QFrame *>(card) != nullptr);
            QVERIFY(qobject_cast<QVBoxLayout *>(card->layout()) != nullptr);
            QCOMPARE(card->layout()->itemAt(0)->widget()->objectName(),
                     QStringLiteral("cardTitle"));
            QCOMPARE(card->layout()->itemAt(1)->widget()->objectName(),
                     QStringLiteral("statValue"));
        }
        auto *controls = qobject_cast<QHBoxLayout *>(layout->itemAt(1)->layout());
        QVERIFY(controls != nullptr);
        QCOMPARE(controls->itemAt(0)->widget(), page.search());
        QCOMPARE(controls->itemAt(1)->widget(), page.rate());
        QCOMPARE(controls->itemAt(2)->widget(), page.endButton());
        QCOMPARE(controls->stretch(0), 1);
        QCOMPARE(controls->stretch(1), 0);
        QCOMPARE(controls->stretch(2), 0);
        QCOMPARE(layout->itemAt(2)->widget(), page.table());
        QCOMPARE(layout->stretch(2), 1);
    }

    void texts()
    {
        const ProcessWatcherWidget page(nullptr); // before any reading
        QStringList titles;
        for (const QLabel *label : page.findChildren<QLabel *>(QStringLiteral("cardTitle"))) {
            titles.append(label->text());
        }
        QCOMPARE(titles, QStringList({"CPU %", "RAM", "Disk I/O", "Uptime"}));
        for (const QLabel *label : page.findChildren<QLabel *>(QStringLiteral("statValue"))) {
            QCOMPARE(label->text(), QStringLiteral("--"));
        }
        QCOMPARE(page.findChild<QLineEdit *>()->placeholderText(),
                 QStringLiteral("Search process..."));
        QCOMPARE(page.findChild<QPushButton *>()->text(), QStringLiteral("End Task"));
        const auto *rate = page.findChild<QComboBox *>();
        QCOMPARE(rate->count(), 3);
        QCOMPARE(rate->itemText(0), QStringLiteral("1 sec"));
        QCOMPARE(rate->itemText(1), QStringLiteral("2 sec"));
        QCOMPARE(rate->itemText(2), QStringLiteral("3 sec"));
        QCOMPARE(rate->currentIndex(), 0);
        QVERIFY(dynamic_cast<const ChoiceBox *>(rate) != nullptr); // has an arrow
    }

    void tableIsSetUp()
    {
        const QuietPage page;
        const QTableWidget *table = page.table();
        QStringList headers;
        for (int i = 0; i < table->columnCount(); ++i) {
            headers.append(table->horizontalHeaderItem(i)->text());
            QCOMPARE(table->horizontalHeader()->sectionResizeMode(i), QHeaderView::Stretch);
        }
        QCOMPARE(
            headers,
            QStringList({"Process Name", "PID", "CPU %", "Memory (MB)", "Disk (KB/s)", "Status"}));
        QVERIFY(table->isSortingEnabled());
        QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    }

    void summary()
    {
        QuietPage page;
        ProcessSnapshot snapshot;
        snapshot.cpuPercent = 37.44;
        snapshot.memUsedBytes = 6657199309;
        snapshot.memTotalBytes = 17072495001;
        snapshot.diskKBps = 120;
        snapshot.uptimeSeconds = 97500;
        page.applySnapshot(snapshot);
        QCOMPARE(page.cardTexts("statValue"),
                 QStringList({"37.4%", "6.2 GB / 15.9 GB", "120.0 KB/s", "27h 5m"}));
    }

    void uptime_data()
    {
        QTest::addColumn<quint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0ULL << QStringLiteral("0h 0m");
        QTest::newRow("59 seconds") << 59ULL << QStringLiteral("0h 0m");
        QTest::newRow("a minute") << 60ULL << QStringLiteral("0h 1m");
        QTest::newRow("just under an hour") << 3599ULL << QStringLiteral("0h 59m");
        QTest::newRow("a day and an hour") << 90061ULL << QStringLiteral("25h 1m");
        QTest::newRow("a year") << 31536000ULL << QStringLiteral("8760h 0m");
    }
    void uptime()
    {
        QFETCH(quint64, seconds);
        QFETCH(QString, text);
        QuietPage page;
        ProcessSnapshot snapshot;
        snapshot.uptimeSeconds = seconds;
        page.applySnapshot(snapshot);
        QCOMPARE(page.cardTexts("statValue").at(3), text);
    }

    void bytesAreFormattedLikeEverywhere()
    {
        const QuietPage page;
        QCOMPARE(page.formatBytes(512), QStringLiteral("512 B"));
        QCOMPARE(page.formatBytes(1572864), QStringLiteral("1.5 MB"));
    }

    void rowsAreShownBusiestFirst()
    {
        QuietPage page;
        page.show(
            {rowOf("idle", 4), rowOf("busy", 999, 12.54, 1.25, 3.06), rowOf("middle", 1000, 2.5)});
        QCOMPARE(page.column(Name), QStringList({"busy", "middle", "idle"}));
        QCOMPARE(page.column(Pid), QStringList({"999", "1000", "4"}));
        QCOMPARE(page.column(Cpu), QStringList({"12.5", "2.5", "0.0"}));
        QCOMPARE(page.column(Memory).at(0), QString::number(1.25, 'f', 1));
        QCOMPARE(page.column(Disk), QStringList({"3.1", "0.0", "0.0"}));
        QCOMPARE(page.column(Status), QStringList({"Running", "Running", "Running"}));
    }

    void numbersSortByValue_data()
    {
        QTest::addColumn<int>("column");
        QTest::newRow("pid") << static_cast<int>(Pid);
        QTest::newRow("cpu") << static_cast<int>(Cpu);
        QTest::newRow("memory") << static_cast<int>(Memory);
        QTest::newRow("disk") << static_cast<int>(Disk);
    }
    void numbersSortByValue()
    {
        QFETCH(int, column);
        QuietPage page;
        page.show({rowOf("a", 1000, 1000, 1000, 1000),
                   rowOf("b", 999, 999, 999, 999),
                   rowOf("c", 20, 20, 20, 20)});
        page.table()->sortItems(column, Qt::AscendingOrder);
        QCOMPARE(page.column(Name), QStringList({"c", "b", "a"}));
        page.table()->sortItems(column, Qt::DescendingOrder);
        QCOMPARE(page.column(Name), QStringList({"a", "b", "c"}));
    }

    void numberAgainstPlainCellSortsByText()
    {
        QuietPage page;
        page.show({rowOf("a", 9), rowOf("b", 10)});
        page.table()->setSortingEnabled(false);
        page.table()->setItem(0, Pid, new QTableWidgetItem(QStringLiteral("5")));
        const QTableWidgetItem *ten = page.table()->item(1, Pid);
        const QTableWidgetItem *five = page.table()->item(0, Pid);
        QVERIFY(*ten < *five); // "10" < "5"
    }

    void nextReadingSortsByCpuAgain()
    {
        QuietPage page;
        const QList<ProcessRow> rows{rowOf("a", 1, 50, 1), rowOf("b", 2, 10, 9)};
        page.show(rows);
        page.table()->horizontalHeader()->setSortIndicator(Memory, Qt::DescendingOrder);
        QCOMPARE(page.column(Name), QStringList({"b", "a"}));
        page.show(rows);
        QCOMPARE(page.column(Name), QStringList({"a", "b"}));
        QCOMPARE(page.table()->horizontalHeader()->sortIndicatorSection(), static_cast<int>(Cpu));
        QCOMPARE(page.table()->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    }

    void search_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("names");
        const QStringList all{"chrome", "CHROME helper", "explorer.exe", "MyChromeThing"};
        QTest::newRow("nothing") << QString() << all;
        QTest::newRow("only blanks") << QStringLiteral("   ") << all;
        QTest::newRow("in any case") << QStringLiteral("  chrome ")
                                     << QStringList({"chrome", "CHROME helper", "MyChromeThing"});
        QTest::newRow("blank inside") << QStringLiteral("E H") << QStringList({"CHROME helper"});
        QTest::newRow("no pattern") << QStringLiteral("explorer.") << QStringList({"explorer.exe"});
        QTest::newRow("not the pid") << QStringLiteral("77") << QStringList();
        QTest::newRow("not the status") << QStringLiteral("Running") << QStringList();
    }
    void search()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, names);
        QuietPage page;
        page.show({rowOf("chrome", 77, 4),
                   rowOf("CHROME helper", 2, 3),
                   rowOf("explorer.exe", 3, 2),
                   rowOf("MyChromeThing", 4, 1)});
        QTest::keyClicks(page.search(), text);
        QCOMPARE(page.column(Name), names);
        page.search()->clear();
        QCOMPARE(page.table()->rowCount(), 4); // at once
    }

    void filterStaysWithTheNextReadings()
    {
        QuietPage page;
        page.search()->setText(QStringLiteral("b"));
        page.show({rowOf("a", 1), rowOf("b", 2)});
        QCOMPARE(page.column(Name), QStringList({"b"}));
    }

    void selectionIsNotKept()
    {
        QuietPage page;
        page.show({rowOf("a", 1)});
        page.table()->selectRow(0);
        QCOMPARE(page.table()->currentRow(), 0);
        page.show({rowOf("a", 1)});
        QCOMPARE(page.table()->currentRow(), -1);
        QVERIFY(page.table()->selectedItems().isEmpty());
    }

    void scrollPositionIsKept()
    {
        QuietPage page;
        QList<ProcessRow> rows;
        for (quint32 i = 0; i < 200; ++i) {
            rows.append(rowOf(QString::number(i), i));
        }
        page.resize(800, 500);
        static_cast<QWidget &>(page).show();
        page.show(rows);
        QCoreApplication::processEvents();
        page.table()->verticalScrollBar()->setValue(100);
        page.show(rows);
        QCOMPARE(page.table()->verticalScrollBar()->value(), 100);
        QCoreApplication::processEvents();
        QCOMPARE(page.table()->verticalScrollBar()->value(), 100);
    }

    void endTaskWithoutARowDoesNothing()
    {
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        page.show({rowOf("a", 1)});
        page.endButton()->click();
        QCOMPARE(toasts.count(), 0);
        QVERIFY(processes([](auto &script) { return script.endRequests.empty(); }));
    }

    void endTask_data()
    {
        QTest::addColumn<int>("outcome");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("badge");
        QTest::addColumn<bool>("success");
        QTest::newRow("ended") << static_cast<int>(platform::EndOutcome::Ended)
                               << QStringLiteral("Process terminated.") << QStringLiteral("Done")
                               << true;
        QTest::newRow("unavailable") << static_cast<int>(platform::EndOutcome::Unavailable)
                                     << QStringLiteral("Permission denied or process unavailable.")
                                     << QStringLiteral("Failed") << false;
        QTest::newRow("failed") << static_cast<int>(platform::EndOutcome::Failed)
                                << QStringLiteral("Could not terminate process.")
                                << QStringLiteral("Failed") << false;
    }
    void endTask()
    {
        QFETCH(int, outcome);
        QFETCH(QString, message);
        QFETCH(QString, badge);
        QFETCH(bool, success);
        processes([&](auto &script) {
            script.list = {processOf(42, "victim")};
            script.endOutcome = static_cast<platform::EndOutcome>(outcome);
        });
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        page.show({rowOf("victim", 42)});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        page.endButton()->click();
        QCOMPARE(answer.asked, 1);
        QCOMPARE(answer.title, QStringLiteral("End Task"));
        QCOMPARE(answer.text, QStringLiteral("End process \"victim\" (PID 42)?"));
        QCOMPARE(answer.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(answer.icon, QMessageBox::Question);
        QCOMPARE(answer.owner, &page);
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0),
                 (QVariantList{QStringLiteral("End Task"), message, badge, success, true}));
        QVERIFY(processes([](auto &script) {
            return script.endRequests == std::vector<Fakes::EndRequest>{{42, true}};
        }));
        QCOMPARE(page.table()->rowCount(), 1); // until the next reading
    }

    void anyOtherAnswerEndsNothing_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("no") << static_cast<int>(QMessageBox::No);
        QTest::newRow("escape") << static_cast<int>(QMessageBox::Escape);
    }
    void anyOtherAnswerEndsNothing()
    {
        QFETCH(int, button);
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        page.show({rowOf("victim", 42)});
        page.table()->selectRow(0);
        Answer answer(static_cast<QMessageBox::StandardButton>(button));
        page.endButton()->click();
        QCOMPARE(answer.asked, 1);
        QCOMPARE(toasts.count(), 0);
        QVERIFY(processes([](auto &script) { return script.endRequests.empty(); }));
    }

    // What stands in the identifier's cell, and what it asks to end.
    void identifiers_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<quint32>("pid");
        QTest::newRow("largest") << QStringLiteral("4294967295") << 4294967295U;
        QTest::newRow("too large") << QStringLiteral("4294967296") << 0U;
        QTest::newRow("no number") << QStringLiteral("abc") << 0U;
        QTest::newRow("empty") << QString() << 0U;
        QTest::newRow("negative") << QStringLiteral("-1") << 0U;
        QTest::newRow("another base") << QStringLiteral("0x10") << 0U;
        QTest::newRow("zero") << QStringLiteral("0") << 0U;
    }
    void identifiers()
    {
        QFETCH(QString, cell);
        QFETCH(quint32, pid);
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        page.show({rowOf("victim", 42)});
        page.table()->item(0, Pid)->setText(cell);
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        page.endButton()->click();
        QCOMPARE(answer.text, QStringLiteral("End process \"victim\" (PID %1)?").arg(pid));
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0).at(1).toString(),
                 QStringLiteral("Permission denied or process unavailable."));
        QVERIFY(processes([](auto &script) { return !script.endRequests.at(0).reachedKill; }));
    }

    // Between the question and the answer the identifier goes to somebody else, or to nobody.
    void whoeverGetsTheIdentifierNextLives_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<quint64>("created");
        QTest::addColumn<bool>("exists");
        QTest::newRow("other name") << QStringLiteral("stranger") << 5ULL << true;
        QTest::newRow("same name, made later") << QStringLiteral("victim") << 6ULL << true;
        QTest::newRow("gone") << QString() << 0ULL << false;
    }
    void whoeverGetsTheIdentifierNextLives()
    {
        QFETCH(QString, name);
        QFETCH(quint64, created);
        QFETCH(bool, exists);
        processes([&](auto &script) { script.list = {processOf(42, "victim")}; });
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        ProcessRow row = rowOf("victim", 42);
        row.created = 5;
        page.show({row});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        answer.whileAsking = [&] {
            processes([&](auto &script) {
                script.list.clear();
                if (exists) {
                    script.list = {processOf(42, name.toStdString())};
                    script.list[0].times->created = created;
                }
            });
            ProcessRow next = rowOf(name, 42);
            next.created = created;
            page.show({next}); // the next reading shows the other one already
        };
        page.endButton()->click();
        QCOMPARE(toasts.count(), 1);
        QCOMPARE(toasts.at(0).at(1).toString(),
                 QStringLiteral("Permission denied or process unavailable."));
        QVERIFY(processes([](auto &script) {
            return script.endRequests == std::vector<Fakes::EndRequest>{{42, false}};
        }));
    }

    // The list and the file may write it differently.
    void caseOfTheNameDoesNotMatter()
    {
        processes([](auto &script) { script.list = {processOf(42, "Victim.EXE")}; });
        QuietPage page;
        page.show({rowOf(QStringLiteral("victim.exe"), 42)});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        page.endButton()->click();
        QVERIFY(processes([](auto &script) {
            return script.endRequests == std::vector<Fakes::EndRequest>{{42, true}};
        }));
    }

    void readingWhileAskingDoesNotChangeWhoIsMeant()
    {
        processes([&](auto &script) {
            script.list = {processOf(42, "victim"), processOf(43, "other")};
        });
        QuietPage page;
        ProcessRow row = rowOf("victim", 42, 1);
        row.created = 5;
        page.show({row, rowOf("other", 43)});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        answer.whileAsking = [&page] {
            page.show({rowOf("other", 43, 9)});
        };
        page.endButton()->click();
        QVERIFY(processes([](auto &script) {
            return script.endRequests == std::vector<Fakes::EndRequest>{{42, true}};
        }));
    }

    void protectedProcess()
    {
        processes([](auto &script) {
            script.list = {processOf(42, "system")};
            script.list[0].opens = false;
        });
        QuietPage page;
        QSignalSpy toasts(&page, &ProcessWatcherWidget::requestToast);
        page.show({rowOf("system", 42)});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::Yes);
        page.endButton()->click();
        QCOMPARE(toasts.at(0).at(1).toString(),
                 QStringLiteral("Permission denied or process unavailable."));
    }

    void markupIsShownLiterally()
    {
        QuietPage page;
        const QString name = QStringLiteral("<img src=x><b>bold</b> & \"quoted\"");
        page.show({rowOf(name, 42)});
        QCOMPARE(page.column(Name), QStringList{name});
        page.table()->selectRow(0);
        Answer answer(QMessageBox::No);
        page.endButton()->click();
        QCOMPARE(answer.text, QStringLiteral("End process \"%1\" (PID 42)?").arg(name));
        QCOMPARE(answer.format, Qt::PlainText);
    }

    void samplerLivesOnAThreadOfItsOwn()
    {
        ProcessWatcherWidget page(nullptr);
        auto *thread = page.findChild<QThread *>();
        QVERIFY(thread->isRunning());
        QVERIFY(page.findChild<ProcessSampler *>() == nullptr); // it has no parent
        processes([](auto &script) { script.list = {processOf(42, "somebody")}; });
        QTRY_COMPARE_WITH_TIMEOUT(page.findChild<QTableWidget *>()->rowCount(), 1, 5000);
        QVERIFY(QMetaType::fromName("ProcessSnapshot").isValid());
    }

    // Each rate forgets the history, so the reading after it has no loads.
    void rateChangesRestartTheSampler()
    {
        processes([](auto &script) {
            script.list = {processOf(42, "somebody")};
            script.list[0].times->kernel = 1;
        });
        ProcessWatcherWidget page(nullptr);
        auto *table = page.findChild<QTableWidget *>();
        const auto cpu = [table] {
            return table->rowCount() == 1 ? table->item(0, Cpu)->text() : QString();
        };
        // The scripted clock goes one second further with each reading.
        processes([](auto &script) {
            script.duringReading = [] {
                processes([](auto &running) {
                    running.tickCount += 1000;
                    running.list[0].times->kernel += 5'000'000;
                });
            };
        });
        QTRY_COMPARE_WITH_TIMEOUT(cpu(), QStringLiteral("50.0"), 5000);
        page.findChild<QComboBox *>()->setCurrentIndex(2);
        QTRY_COMPARE_WITH_TIMEOUT(cpu(), QStringLiteral("0.0"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(cpu(), QStringLiteral("50.0"), 6000);
    }

    // Four pages side by side, each of which reads on a thread of its own.
    void everyRateHasItsInterval()
    {
        const auto log = std::make_shared<PassLog>();
        processes([&log](auto &script) {
            script.duringReading = [log] {
                log->add();
            };
        });
        struct Rate
        {
            int index;
            int intervalMs;
        };
        const std::array<Rate, 4> rates{{{0, 1000}, {1, 2000}, {2, 3000}, {7, 3000}}};
        std::vector<std::unique_ptr<ProcessWatcherWidget>> pages;
        for (const Rate &rate : rates) {
            pages.push_back(std::make_unique<ProcessWatcherWidget>(nullptr));
            const auto *thread = pages.back()->findChild<QThread *>();
            QTRY_VERIFY_WITH_TIMEOUT(log->count(thread) > 0, 5000);
            pages.back()->onRefreshRateChanged(rate.index);
        }
        for (std::size_t i = 0; i < rates.size(); ++i) {
            const auto *thread = pages.at(i)->findChild<QThread *>();
            QTRY_VERIFY_WITH_TIMEOUT(log->hasInterval(thread, rates.at(i).intervalMs), 15'000);
        }
    }

    // Shutting down takes as long as the reading under way, but never longer than the limit.
    void closesInTheMiddleOfAReading_data()
    {
        QTest::addColumn<int>("readingMs");
        QTest::newRow("short") << 100;
        QTest::newRow("long") << 2500;
    }
    void closesInTheMiddleOfAReading()
    {
        QFETCH(int, readingMs);
        const auto begun = std::make_shared<QSemaphore>();
        const auto ended = std::make_shared<QSemaphore>();
        processes([=](auto &script) {
            script.list = {processOf(42, "somebody")};
            script.duringReading = [=] {
                begun->release();
                QThread::msleep(static_cast<unsigned long>(readingMs));
                ended->release();
            };
        });
        auto page = std::make_unique<ProcessWatcherWidget>(nullptr);
        const QPointer<QThread> thread = page->findChild<QThread *>();
        QTRY_VERIFY_WITH_TIMEOUT(begun->available() > 0, 5000);
        QElapsedTimer timer;
        timer.start();
        page.reset();
        QVERIFY2(timer.elapsed() < 1200 + 300, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(ended->tryAcquire(1, 5000)); // nothing broke
        QTRY_VERIFY_WITH_TIMEOUT(thread.isNull(), 5000);
    }

    void closesBetweenTwoProcessesOfAReading()
    {
        const auto begun = std::make_shared<QSemaphore>();
        processes([=](auto &script) {
            for (quint32 i = 1; i <= 1000; ++i) {
                script.list.push_back(processOf(i, "one of many"));
            }
            script.betweenQuestions = [=] {
                begun->release();
                QThread::msleep(20);
            };
        });
        auto page = std::make_unique<ProcessWatcherWidget>(nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(begun->available() > 0, 5000);
        QElapsedTimer timer;
        timer.start();
        page.reset(); // the whole reading would take twenty seconds
        QVERIFY2(timer.elapsed() < 600, qPrintable(QString::number(timer.elapsed())));
    }

    void slowReadingsDoNotBlockTheInterface()
    {
        processes([](auto &script) {
            script.list = {processOf(42, "somebody")};
            script.duringReading = [] {
                QThread::msleep(2000);
            };
        });
        ProcessWatcherWidget page(nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(processes([](auto &script) { return script.passes > 0; }), 5000);

        QTimer frames;
        frames.setTimerType(Qt::PreciseTimer);
        QElapsedTimer sinceFrame;
        qint64 longest = 0;
        int count = 0;
        connect(&frames, &QTimer::timeout, this, [&] {
            longest = std::max(longest, sinceFrame.restart());
            ++count;
        });
        sinceFrame.start();
        frames.start(16);
        QTRY_COMPARE_WITH_TIMEOUT(page.findChild<QTableWidget *>()->rowCount(), 1, 5000);
        // A reading that ran here would have stopped the frames for two seconds.
        QVERIFY2(longest < 500, qPrintable(QString::number(longest)));
        QVERIFY2(count > 40, qPrintable(QString::number(count)));
    }

    void manyRatesInARow()
    {
        processes([](auto &script) { script.list = {processOf(42, "somebody")}; });
        ProcessWatcherWidget page(nullptr);
        for (int i = 0; i < 1000; ++i) {
            page.onRefreshRateChanged(i % 4 - 1);
            if (i % 50 == 0) {
                QCoreApplication::processEvents();
            }
        }
        QTRY_VERIFY_WITH_TIMEOUT(processes([](auto &script) { return script.passes >= 1000; }),
                                 20'000);
    }

    // A sampler on a thread, started, stopped and re-timed from here with readings in flight.
    void thousandChangesWithReadingsInFlight()
    {
        processes([](auto &script) {
            for (quint32 i = 1; i <= 50; ++i) {
                script.list.push_back(processOf(i, "one of some"));
            }
        });
        QThread thread;
        auto *sampler = new ProcessSampler;
        sampler->moveToThread(&thread);
        connect(&thread, &QThread::finished, sampler, &QObject::deleteLater);
        QObject receiver;
        int readings = 0;
        connect(
            sampler,
            &ProcessSampler::snapshotReady,
            &receiver,
            [&readings](const ProcessSnapshot &snapshot) {
                readings += snapshot.rows.size() == 50 ? 1 : 0;
            },
            Qt::QueuedConnection);
        thread.start();
        int starts = 0;
        for (int i = 0; i < 1000; ++i) {
            if (i % 3 == 0) {
                QMetaObject::invokeMethod(sampler, "stop", Qt::QueuedConnection);
            } else {
                QMetaObject::invokeMethod(
                    sampler, "start", Qt::QueuedConnection, Q_ARG(int, i % 2000));
                ++starts;
            }
            if (i % 10 == 0) {
                QCoreApplication::processEvents();
            }
        }
        QTRY_VERIFY_WITH_TIMEOUT(readings >= starts, 20'000);
        thread.quit();
        QVERIFY(thread.wait(5000));
    }

    void tabLeavesTheTable()
    {
        QuietPage page;
        page.show({rowOf(QStringLiteral("one"), 1), rowOf(QStringLiteral("two"), 2)});
        page.setVisible(true);
        QApplication::setActiveWindow(&page);
        QVERIFY(QTest::qWaitForWindowActive(&page));
        page.table()->setFocus();
        page.table()->setCurrentCell(0, 0);
        QTest::keyClick(page.table(), Qt::Key_Tab);
        QVERIFY(page.search()->hasFocus());
        QTest::keyClick(page.search(), Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(page.table()->hasFocus());
        QTest::keyClick(page.table(), Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(page.endButton()->hasFocus());
    }

    void pagesComeAndGo()
    {
        processes([](auto &script) { script.list = {processOf(42, "somebody")}; });
        for (int i = 0; i < 50; ++i) {
            const ProcessWatcherWidget page(nullptr);
            if (i % 3 == 0) {
                QCoreApplication::processEvents();
            }
        }
    }
};

QTEST_MAIN(ProcessWatcherTest)
#include "ProcessWatcherTest.moc"
