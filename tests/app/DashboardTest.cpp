// The dashboard's figures, driven by a scripted machine; and the activity log.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "fakes/ScriptedWebQuery.h"

#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <limits>
#include <memory>

namespace {

constexpr std::uint64_t kGiB = 1ULL << 30;
constexpr auto kHuge = std::numeric_limits<std::uint64_t>::max();

QStringList linesOf(const QTextEdit *view)
{
    return view->toPlainText().split(QLatin1Char('\n'));
}

} // namespace

class DashboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        fakes::scriptedWebQuery() = {};
        window = std::make_unique<MainWindow>(nullptr);
    }

    void cleanup() { window.reset(); }

    void startsUnresolved()
    {
        const auto &page = window->dashboard;
        for (const QLabel *label : {page.ramValue, page.diskValue, page.time, page.date}) {
            QCOMPARE(label->text(), QStringLiteral("--"));
        }
        for (const QLabel *label : {page.ramValue, page.diskValue, page.time}) {
            QCOMPARE(label->objectName(), QStringLiteral("statValue"));
        }
        QCOMPARE(page.date->objectName(), QStringLiteral("cardTitle"));
        QCOMPARE(page.location->text(), QStringLiteral("Location: Resolving..."));
        QCOMPARE(page.weather->text(), QStringLiteral("Weather: Resolving..."));
        for (const QProgressBar *bar : {page.ramBar, page.diskBar}) {
            QCOMPARE(bar->minimum(), 0);
            QCOMPARE(bar->maximum(), 100);
            QCOMPARE(bar->value(), 0);
            QVERIFY(bar->isTextVisible());
        }
        QCOMPARE(fakes::scriptedPlatform().memoryQueries, 0);
    }

    void theCardsAreBuiltAsDesigned()
    {
        const auto &page = window->dashboard;
        const auto *grid = page.page->findChild<QGridLayout *>();
        QCOMPARE(grid->contentsMargins(), QMargins());
        QCOMPARE(grid->horizontalSpacing(), 16);
        QCOMPARE(grid->verticalSpacing(), 16);
        const QList<QPair<QLabel *, QProgressBar *>> cards{{page.ramValue, page.ramBar},
                                                           {page.diskValue, page.diskBar}};
        for (int column = 0; column < 2; ++column) {
            QCOMPARE(grid->columnStretch(column), 1);
            const QWidget *card = grid->itemAtPosition(0, column)->widget();
            QCOMPARE(cards[column].first->parentWidget(), card);
            const int value = card->layout()->indexOf(cards[column].first);
            QVERIFY(value >= 0 && value < card->layout()->indexOf(cards[column].second));
        }
        QStringList texts;
        const auto labels = page.page->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            texts.append(label->text());
        }
        QVERIFY(texts.contains(QStringLiteral("RAM")));
        const auto head = texts.indexOf(QStringLiteral(
            "Premium safe optimizer: live system stats and trusted maintenance actions only."));
        QVERIFY(head >= 0 && labels.at(head)->wordWrap());
    }

    void firstFiguresComeBySelf()
    {
        int queriesAtTheFirstTick = 0;
        connect(window->timers.statistics, &QTimer::timeout, this, [&queriesAtTheFirstTick] {
            if (queriesAtTheFirstTick == 0) {
                queriesAtTheFirstTick = fakes::scriptedPlatform().memoryQueries;
            }
        });
        window->show();
        QTRY_COMPARE(fakes::scriptedPlatform().memoryQueries, 1); // after 80 ms
        QVERIFY(window->dashboard.ramValue->text() != QLatin1String("--"));
        QTRY_VERIFY_WITH_TIMEOUT(fakes::scriptedPlatform().memoryQueries >= 3, 4000);
        QCOMPARE(queriesAtTheFirstTick, 2); // the tick's own, and the one before
        QCOMPARE(fakes::scriptedPlatform().diskQueries, fakes::scriptedPlatform().memoryQueries);
    }

    // Whether the window is shown or not.
    void webIsAskedAfterAWhileAndThenRegularly()
    {
        using platform::WebTopic;
        const auto &asked = fakes::scriptedWebQuery().asked;
        QElapsedTimer time;
        time.start();
        QVERIFY(asked.empty());
        QTRY_VERIFY(!asked.empty());
        QVERIFY2(time.elapsed() >= 1100, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(asked, (std::vector{WebTopic::Location, WebTopic::Weather}));
        QCOMPARE(window->timers.locationWeather->interval(), 15 * 60 * 1000);
        window->timers.locationWeather->start(1);
        QTRY_VERIFY(asked.size() >= 6);
        QCOMPARE(window->dashboard.location->text(), QStringLiteral("Location: Resolving..."));
    }

    void ram_data()
    {
        QTest::addColumn<quint64>("total");
        QTest::addColumn<quint64>("available");
        QTest::addColumn<int>("load");
        QTest::addColumn<QString>("text");
        const auto row =
            [](const char *name, quint64 total, quint64 available, int load, const char *text) {
                QTest::newRow(name) << total << available << load << QString::fromLatin1(text);
            };
        row("usual", 17072495001, 10414574138, 39, "6.2 GB / 15.9 GB (39%%)");
        row("all free", kGiB, kGiB, 0, "0 B / 1.0 GB (0%%)");
        row("none free", kGiB, 0, 100, "1.0 GB / 1.0 GB (100%%)");
        row("more available than there is", kGiB, 2 * kGiB, 0, "0 B / 1.0 GB (0%%)");
        row("huge", kHuge, 0, 100, "16777216.0 TB / 16777216.0 TB (100%%)");
    }

    void ram()
    {
        QFETCH(quint64, total);
        QFETCH(quint64, available);
        QFETCH(int, load);
        fakes::scriptedPlatform().memory =
            platform::MemoryStatus{total, available, static_cast<unsigned>(load)};
        window->updateSystemStats();
        QTEST(window->dashboard.ramValue->text(), "text");
        QCOMPARE(window->dashboard.ramBar->value(), load);
        QCOMPARE(window->dashboard.ramBar->format(), QStringLiteral("%1% used").arg(load));
        QCOMPARE(window->dashboard.ramBar->text(), QStringLiteral("%1% used").arg(load));
    }

    void disk_data()
    {
        QTest::addColumn<quint64>("total");
        QTest::addColumn<quint64>("free");
        QTest::addColumn<int>("percent");
        QTest::addColumn<QString>("text");
        const auto row =
            [](const char *name, quint64 total, quint64 free, int percent, const char *text) {
                QTest::newRow(name) << total << free << percent << QString::fromLatin1(text);
            };
        row("usual", 511423231590, 382144715981, 25, "120.4 GB / 476.3 GB (25%% used)");
        row("total 0", 0, 0, 0, "0 B / 0 B (0%% used)");
        row("truncated", 1000, 1, 99, "999 B / 1000 B (99%% used)");
        row("quota below the free space", kGiB, 5 * kGiB, 0, "0 B / 1.0 GB (0%% used)");
        row("full", kGiB, 0, 100, "1.0 GB / 1.0 GB (100%% used)");
    }

    void disk()
    {
        QFETCH(quint64, total);
        QFETCH(quint64, free);
        QFETCH(int, percent);
        fakes::scriptedPlatform().disk = platform::DiskSpace{total, free};
        window->updateSystemStats();
        QTEST(window->dashboard.diskValue->text(), "text");
        QCOMPARE(window->dashboard.diskBar->value(), percent);
        QCOMPARE(window->dashboard.diskBar->format(), QStringLiteral("%1% used").arg(percent));
    }

    void halvesFailOnTheirOwn_data()
    {
        QTest::addColumn<bool>("memoryFails");
        QTest::addColumn<bool>("diskFails");
        QTest::newRow("memory") << true << false;
        QTest::newRow("disk") << false << true;
        QTest::newRow("both") << true << true;
        QTest::newRow("neither") << false << false;
    }

    void halvesFailOnTheirOwn()
    {
        QFETCH(bool, memoryFails);
        QFETCH(bool, diskFails);
        window->updateSystemStats(); // figures first, so that a failure must clear them
        auto &script = fakes::scriptedPlatform();
        const auto memory = script.memory;
        const auto disk = script.disk;
        if (memoryFails) {
            script.memory.reset();
        }
        if (diskFails) {
            script.disk.reset();
        }
        window->dashboard.time->setText(QStringLiteral("old"));
        window->updateSystemStats();
        const auto &page = window->dashboard;
        QCOMPARE(page.ramValue->text() == QLatin1String("RAM stats unavailable"), memoryFails);
        QCOMPARE(page.ramBar->format() == QLatin1String("Unavailable"), memoryFails);
        QCOMPARE(page.ramBar->value() == 0, memoryFails);
        QCOMPARE(page.diskValue->text() == QLatin1String("Disk stats unavailable"), diskFails);
        QCOMPARE(page.diskBar->format() == QLatin1String("Unavailable"), diskFails);
        QCOMPARE(page.diskBar->value() == 0, diskFails);
        QVERIFY(page.time->text() != QLatin1String("old")); // the clock goes on
        QCOMPARE(linesOf(window->historyLogView).size(), 1); // and nothing is logged

        script.memory = memory;
        script.disk = disk;
        window->updateSystemStats(); // the next tick tries again
        QCOMPARE(page.ramBar->value(), 25);
        QCOMPARE(page.diskBar->value(), 25);
    }

    void labelsWithoutBars()
    {
        window->dashboard.ramBar = nullptr;
        window->dashboard.diskBar = nullptr;
        window->updateSystemStats();
        QCOMPARE(window->dashboard.ramValue->text(), QStringLiteral("4.0 GB / 16.0 GB (25%%)"));
        QCOMPARE(window->dashboard.diskValue->text(),
                 QStringLiteral("128.0 GB / 512.0 GB (25%% used)"));
        fakes::scriptedPlatform().memory.reset();
        fakes::scriptedPlatform().disk.reset();
        window->updateSystemStats();
        QCOMPARE(window->dashboard.ramValue->text(), QStringLiteral("RAM stats unavailable"));
        QCOMPARE(window->dashboard.diskValue->text(), QStringLiteral("Disk stats unavailable"));
    }

    void clock()
    {
        QDateTime before = QDateTime::currentDateTime();
        window->updateLiveDateTime();
        const QDateTime after = QDateTime::currentDateTime();
        const QString format = QStringLiteral("hh:mm:ss AP");
        QVERIFY(window->dashboard.time->text() == before.toString(format)
                || window->dashboard.time->text() == after.toString(format));
        QVERIFY(QRegularExpression(QStringLiteral("^(0[1-9]|1[0-2]):[0-5]\\d:[0-5]\\d (AM|PM)$"))
                    .match(window->dashboard.time->text())
                    .hasMatch());
        const auto date = [](const QDateTime &moment) {
            return QLocale::c().toString(moment, QStringLiteral("dddd, MMMM d, yyyy"));
        };
        QVERIFY(window->dashboard.date->text() == date(before)
                || window->dashboard.date->text() == date(after));
    }

    void clockWithoutLabels()
    {
        window->dashboard.time = nullptr;
        window->dashboard.date = nullptr;
        window->updateLiveDateTime();
    }

    void readyIsTheFirstLine()
    {
        const QRegularExpression ready(
            QStringLiteral("^\\[([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d\\] Ready\\.$"));
        for (const QTextEdit *view : {window->activityLogView, window->historyLogView}) {
            QVERIFY(view->isReadOnly());
            QCOMPARE(linesOf(view).size(), 1);
            QVERIFY(ready.match(linesOf(view).constFirst()).hasMatch());
        }
        QVERIFY(window->cleaner.page->isAncestorOf(window->activityLogView));
        QVERIFY(window->logsPage->isAncestorOf(window->historyLogView));
    }

    void linesAreTheSameInBothViews()
    {
        QList<QTextEdit *> changed;
        for (QTextEdit *view : {window->historyLogView, window->activityLogView}) {
            connect(view, &QTextEdit::textChanged, view, [&changed, view] {
                if (!changed.contains(view)) {
                    changed.append(view);
                }
            });
        }
        window->log(QStringLiteral("first"));
        QCOMPARE(changed, (QList<QTextEdit *>{window->activityLogView, window->historyLogView}));
        window->log(QStringLiteral("second"));
        QCOMPARE(window->activityLogView->toPlainText(), window->historyLogView->toPlainText());
        QCOMPARE(linesOf(window->historyLogView).size(), 3);
        QVERIFY(linesOf(window->historyLogView).at(2).endsWith(QLatin1String("] second")));
    }

    void textIsShownAsTyped_data()
    {
        QTest::addColumn<QString>("message");
        QTest::newRow("tags") << QStringLiteral("<b>bold</b> <img src=\"x\"> &lt; &amp;");
        QTest::newRow("html") << QStringLiteral("<html><body>hello</body></html>");
        QTest::newRow("entity") << QStringLiteral("a &lt; b");
        QTest::newRow("spaces") << QStringLiteral("  two  blanks ");
        QTest::newRow("empty") << QString();
    }

    void textIsShownAsTyped()
    {
        QFETCH(QString, message);
        window->log(message);
        QCOMPARE(linesOf(window->activityLogView).constLast().mid(11), message);
        QCOMPARE(linesOf(window->historyLogView).constLast().mid(11), message);
    }

    void lineBreaksAreKept()
    {
        window->log(QStringLiteral("one\ntwo"));
        window->log(QStringLiteral("three"));
        const QStringList lines = linesOf(window->historyLogView);
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines.at(1).endsWith(QLatin1String("] one")));
        QCOMPARE(lines.at(2), QStringLiteral("two"));
        QVERIFY(lines.at(3).endsWith(QLatin1String("] three")));
    }

    void missingViewsAreSkipped()
    {
        const QString before = window->historyLogView->toPlainText();
        QTextEdit *activity = std::exchange(window->activityLogView, nullptr);
        window->log(QStringLiteral("half"));
        QVERIFY(window->historyLogView->toPlainText() != before);
        window->historyLogView = nullptr;
        window->log(QStringLiteral("lost"));
        window->onShowLogFromToast();
        QCOMPARE(linesOf(activity).size(), 1);
    }

    void showLogGoesToTheNewestLine()
    {
        window->show();
        window->onNavChanged(MainWindow::CleanerPage);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        for (int i = 0; i < 200; ++i) {
            window->log(QStringLiteral("line %1").arg(i));
        }
        QScrollBar *bar = window->activityLogView->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 0);
        QCOMPARE(bar->value(), bar->maximum()); // follows while at the bottom
        bar->setValue(0);
        window->log(QStringLiteral("while reading above"));
        QCOMPARE(bar->value(), 0);
        QVERIFY(QMetaObject::invokeMethod(window.get(), "onShowLogFromToast"));
        QCOMPARE(bar->value(), bar->maximum());
        QVERIFY(window->activityLogView->hasFocus());
    }

private:
    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(DashboardTest)
#include "DashboardTest.moc"
